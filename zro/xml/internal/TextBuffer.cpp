#include "zro/xml/internal/TextBuffer.h"

#include <new>

#include "zro/foundation/ZRError.h"

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kFirstCapacity = 256;
constexpr std::size_t kMostUnits = 0x7FFFFFFF;  // what a UnicodeString can hold
constexpr std::size_t kKeptCapacity = 65536;

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

UnicodeString makeText(std::u16string_view units) {
    try {
        return textOf(units);
    } catch (const std::bad_alloc&) {
        throwOutOfMemory();
    }
}

void throwOutOfMemory() {
    std::bad_alloc error;
    throw ZRError(error, u"ZroCommon::XmlParserImpl");
}

}  // namespace ZroCommon::internal
