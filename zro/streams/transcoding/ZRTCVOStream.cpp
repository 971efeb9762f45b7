#include "zro/streams/transcoding/ZRTCVOStream.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <ios>
#include <new>
#include <utility>

#include "zro/streams/ZRMemStream.h"
#include "zro/streams/internal/ReadSource.h"
#include "zro/streams/transcoding/internal/OpenConversion.h"

namespace ZroCommon {
namespace {

constexpr std::size_t kBlock = 4096;
constexpr std::size_t kOutput =
    4 * kBlock;  // mostly room for a whole block, so that it goes at once
constexpr std::size_t kUnit = 2;

char16_t unitAt(const char* bytes) {
    const auto low = static_cast<unsigned char>(bytes[0]);
    const auto high = static_cast<unsigned char>(bytes[1]);
    return static_cast<char16_t>(high << 8 | low);
}

// On purpose: such a unit waits for the one behind it, at the end for ever.
bool isHeldBack(char16_t unit) {
    return unit == 0 || (unit >= 0xD800 && unit <= 0xDBFF);
}

// The place of the next U+0000 U+000A, or `end`. Line feeds are rarer than units.
std::size_t findNulAndLineFeed(const char* bytes, std::size_t from, std::size_t end) {
    for (std::size_t at = from; at < end; ++at) {
        const void* const found = std::memchr(bytes + at, '\n', end - at);
        if (found == nullptr) {
            return end;
        }
        at = static_cast<std::size_t>(static_cast<const char*>(found) - bytes);
        if (at % kUnit == 0 && at >= from + kUnit && unitAt(bytes + at) == u'\n'
            && unitAt(bytes + at - kUnit) == 0) {
            return at - kUnit;
        }
    }
    return end;
}

}  // namespace

ZRTCVOStreamBuf::ZRTCVOStreamBuf(std::ostream* target, const char* encoding, bool a, LF_CONVERT lf,
                                 bool b)
    : ZRTCVOStreamBuf(target, internal::openWritingConversion(
                                  encoding, {.first = a, .lineFeeds = lf, .second = b})) {}

ZRTCVOStreamBuf::ZRTCVOStreamBuf(std::ostream* target,
                                 std::unique_ptr<internal::CodeConverter> converter)
    : m_target(target), m_converter(std::move(converter)) {
    if (m_target != nullptr && m_converter != nullptr) {
        m_input.reset(new char[kBlock]);
        m_output.reset(new char[kOutput]);
        setp(m_input.get(), m_input.get() + kBlock - 1);
    }
}

ZRTCVOStreamBuf::~ZRTCVOStreamBuf() {
    try {
        ZRTCVOStreamBuf::sync();
        if (is_open()) {
            internal::ConversionBlock block{
                .in = m_input.get(), .out = m_output.get(), .outCapacity = kOutput};
            m_converter->convert(block, true);
            emit(block.outLength);
        }
    } catch (const std::bad_alloc&) {
        return;  // nobody is left to be told
    }
}

ZRTCVOStreamBuf::int_type ZRTCVOStreamBuf::overflow(int_type character) {
    if (!is_open() || traits_type::eq_int_type(character, traits_type::eof())) {
        return traits_type::eof();
    }
    *pptr() = traits_type::to_char_type(character);  // the put area has one more place
    pbump(1);
    return sync() == 0 ? character : traits_type::eof();
}

// What cannot go to the target shows there.
void ZRTCVOStreamBuf::writeTarget(const char* data, std::size_t count) {
    try {
        if (m_target != nullptr && count != 0) {
            m_target->write(data, static_cast<std::streamsize>(count));
        }
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        return;  // the target's mask asks for it
    }
}

std::uint64_t ZRTCVOStreamBuf::room() const {
    return m_limit > m_outputLength ? m_limit - m_outputLength : 0;
}

// On purpose: a piece that would cross the limit is held back, and counted all the same.
void ZRTCVOStreamBuf::emit(std::size_t count) {
    if (m_limit == 0 || count <= room()) {
        writeTarget(m_output.get(), count);
    }
    m_outputLength += count;
}

// Converts the input up to `end`, or less when the output is full. \return false when the
// conversion fails or stands still
bool ZRTCVOStreamBuf::convertPiece(internal::ConversionBlock& block, std::size_t end) {
    const std::size_t before = block.inPos;
    block.inLength = end;
    block.outLength = 0;
    block.outCapacity = m_limit == 0 ? kOutput : std::min<std::uint64_t>(room(), kOutput);
    if (!m_converter->convert(block, false)) {
        return false;
    }
    if (block.outLength == 0 && m_limit != 0) {
        m_outputLength = m_limit + 1;  // not even one character fits
        return true;
    }
    return block.outLength != 0 || block.inPos != before;
}

// On purpose: a NUL ahead of a line feed becomes as many zero bytes as a space would take, shifts
// included.
bool ZRTCVOStreamBuf::convertNul(internal::ConversionBlock& block) {
    std::memcpy(m_input.get() + block.inPos, " ", kUnit);
    const bool isConverted = convertPiece(block, block.inPos + kUnit);
    std::memset(m_output.get(), 0, block.outLength);
    return isConverted;
}

bool ZRTCVOStreamBuf::convertAll(std::size_t length) {
    internal::ConversionBlock block{.in = m_input.get(), .out = m_output.get()};
    std::size_t nul = 0;
    while (block.inPos < length && !isOver()) {
        if (nul <= block.inPos) {
            nul = findNulAndLineFeed(m_input.get(), block.inPos, length);
        }
        const bool isConverted = nul == block.inPos ? convertNul(block) : convertPiece(block, nul);
        if (!isConverted) {
            return false;
        }
        emit(block.outLength);
    }
    return true;
}

int ZRTCVOStreamBuf::sync() {
    if (!is_open()) {
        return -1;
    }
    auto length = static_cast<std::size_t>(pptr() - pbase()) / kUnit * kUnit;
    if (length == 0) {
        return 0;
    }
    char* const last = m_input.get() + length - kUnit;
    const bool holdsBack = isHeldBack(unitAt(last));
    length -= holdsBack ? kUnit : 0;
    const std::array<char, kUnit> held = {last[0], last[1]};
    setp(m_input.get(), m_input.get() + kBlock - 1);
    const bool isConverted = convertAll(length);
    if (holdsBack) {
        std::copy(held.begin(), held.end(), m_input.get());
        pbump(static_cast<int>(kUnit));
    }
    return isConverted && m_target->good() ? 0 : -1;
}

bool ZRTCVOStreamBuf::isLimitOver() {
    sync();
    return isOver();
}

std::ostream* ZRTCVOStreamBuf::getOutputStream() {
    sync();
    return m_target;
}

void ZRTCVOStreamBuf::writeRawBuffer(const char* data, std::size_t count) {
    sync();
    const std::uint64_t fitting = m_limit == 0 ? count : std::min<std::uint64_t>(room(), count);
    writeTarget(data, static_cast<std::size_t>(fitting));
    m_outputLength += count;
}

void ZRTCVOStreamBuf::writeRawStream(std::istream& source) {
    sync();
    if (m_limit == 0) {
        copyStream(source);
    } else if (!isOver()) {
        copyWithinLimit(source);
    }
}

// On purpose: without a limit nothing is counted.
void ZRTCVOStreamBuf::copyStream(std::istream& source) {
    std::array<char, 2 * kBlock> bytes{};
    while (source.good() && m_target != nullptr && m_target->good()) {
        writeTarget(bytes.data(), internal::readReady(source, bytes.data(), bytes.size()));
    }
}

// Block by block until the limit is passed, which takes one block more than fit.
void ZRTCVOStreamBuf::copyWithinLimit(std::istream& source) {
    ZRMemStream blocks(&source);
    blocks.setHeldLimit(static_cast<std::size_t>(room()) + 1);  // there may be no end to it
    const char* bytes = nullptr;
    while (!isOver()) {
        const std::size_t count = blocks.getBuffer(bytes);
        if (count == 0) {
            return;
        }
        writeTarget(bytes, static_cast<std::size_t>(std::min<std::uint64_t>(room(), count)));
        m_outputLength += count;
    }
}

ZRTCVOStream::ZRTCVOStream(std::ostream* target, const char* encoding, bool a, LF_CONVERT lf,
                           bool b)
    : std::basic_ostream<char>(nullptr), m_buffer(target, encoding, a, lf, b) {
    init(&m_buffer);
}

ZRTCVOStream::~ZRTCVOStream() = default;

void ZRTCVOStream::writeString(const UnicodeString& text) {
    if constexpr (std::endian::native == std::endian::little) {
        write(reinterpret_cast<const char*>(text.getBuffer()),
              static_cast<std::streamsize>(text.length()) * static_cast<std::streamsize>(kUnit));
    } else {
        for (int32_t index = 0; index < text.length(); ++index) {
            const char16_t unit = text.charAt(index);
            put(static_cast<char>(unit & 0xFF)).put(static_cast<char>(unit >> 8));
        }
    }
}

}  // namespace ZroCommon
