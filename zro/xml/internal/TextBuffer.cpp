#include "zro/xml/internal/TextBuffer.h"

#include <new>

#include "zro/foundation/ZRError.h"

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kFirstCapacity = 256;
constexpr std::size_t kMostUnits = 0x7FFFFFFF;  // what a UnicodeString can hold
constexpr std::size_t kKeptCapacity = 65536;

template <std::size_t kUnits>
void copyEnds(const char16_t* from, std::size_t length, char16_t* to) {
    std::memcpy(to, from, kUnits * sizeof(char16_t));
    std::memcpy(to + length - kUnits, from + length - kUnits, kUnits * sizeof(char16_t));
}

// Short texts without a call: their two ends, which may overlap.
void copyUnits(const char16_t* from, std::size_t length, char16_t* to) {
    if (length > 32) {
        std::memcpy(to, from, length * sizeof(char16_t));
    } else if (length > 16) {
        copyEnds<16>(from, length, to);
    } else if (length >= 8) {
        copyEnds<8>(from, length, to);
    } else if (length >= 4) {
        copyEnds<4>(from, length, to);
    } else {
        std::copy_n(from, length, to);
    }
}

}  // namespace

void TextBuffer::grow(std::size_t count) {
    if (count > kMostUnits - m_size) {
        throwOutOfMemory();
    }
    const std::size_t needed = m_size + count;
    const std::size_t capacity =
        std::min(kMostUnits, std::max({kFirstCapacity, needed, m_capacity * 2}));
    std::unique_ptr<char16_t[]> units(new (std::nothrow) char16_t[capacity]);
    if (units == nullptr) {
        throwOutOfMemory();
    }
    if (m_size != 0) {
        std::memcpy(units.get(), m_units.get(), m_size * sizeof(char16_t));
    }
    m_units = std::move(units);
    m_capacity = capacity;
}

void TextBuffer::shrink() {
    if (m_capacity > kKeptCapacity) {
        *this = TextBuffer();
    }
    m_size = 0;
}

// Opened and closed by hand: faster than the constructor from units, and without its spare room.
UnicodeString makeText(std::u16string_view units) {
    UnicodeString text;
    const auto length = static_cast<int32_t>(units.size());
    char16_t* const target = text.getBuffer(length);
    if (target == nullptr) {
        throwOutOfMemory();
    }
    copyUnits(units.data(), units.size(), target);
    text.releaseBuffer(length);
    return text;
}

void throwOutOfMemory() {
    std::bad_alloc error;
    throw ZRError(error, u"ZroCommon::XmlParserImpl");
}

}  // namespace ZroCommon::internal
