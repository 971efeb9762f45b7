#include "zro/containers/ole/internal/PropertyReader.h"

#include <algorithm>
#include <array>

#include "zro/containers/ole/internal/FileNumbers.h"

namespace ZroCommon::internal {
namespace {

// Texts take memory by the first, numbers are turned by the second.
constexpr std::size_t kPiece = 4096;
constexpr std::size_t kNumbersPiece = 512;

}  // namespace

bool PropertyReader::readOrder() {
    std::array<unsigned char, 2> mark{};
    const bool isWhole = readBytes(mark.data(), mark.size()) == mark.size();
    // On purpose: any mark but the reversed one passes for the usual one.
    m_isLittleEndian = loadNumber<std::uint16_t>(mark.data(), true) != 0xFEFF;
    return isWhole;
}

// The position is signed, and so is the sum that gave it.
bool PropertyReader::seek(std::uint32_t position) {
    m_ahead.clear();
    m_aheadAt = 0;
    m_expected = 0;
    return m_stream->OLEseek(static_cast<std::int32_t>(position), 0) >= 0;
}

std::uint32_t PropertyReader::position() const {
    const std::size_t ahead = m_ahead.size() - m_aheadAt;
    return static_cast<std::uint32_t>(m_stream->OLEtell()) - static_cast<std::uint32_t>(ahead);
}

std::size_t PropertyReader::fetch(void* to, std::size_t count) {
    const auto got = m_stream->OLEread(to, static_cast<int>(count));
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

std::size_t PropertyReader::readBytes(void* to, std::size_t count) {
    if (m_aheadAt == m_ahead.size() && m_expected > count && count < kPiece) {
        m_aheadAt = 0;
        m_ahead.resize(static_cast<std::size_t>(std::min<std::uint64_t>(kPiece, m_expected)));
        m_ahead.resize(fetch(m_ahead.data(), m_ahead.size()));
    }
    const std::size_t held = std::min(count, m_ahead.size() - m_aheadAt);
    std::copy_n(m_ahead.data() + m_aheadAt, held, static_cast<unsigned char*>(to));
    m_aheadAt += held;
    const std::size_t got =
        held == count ? held : held + fetch(static_cast<unsigned char*>(to) + held, count - held);
    m_expected -= std::min<std::uint64_t>(m_expected, got);
    m_reach = std::max(m_reach, position());
    return got;
}

std::size_t PropertyReader::readNumbers(std::span<std::uint32_t> numbers) {
    std::array<unsigned char, kNumbersPiece> bytes{};
    std::size_t done = 0;
    while (done < numbers.size()) {
        const std::size_t wanted = std::min(bytes.size(), (numbers.size() - done) * 4);
        const std::size_t got = readBytes(bytes.data(), wanted);
        for (std::size_t i = 0; i + 4 <= got; i += 4) {
            numbers[done++] = loadNumber<std::uint32_t>(bytes.data() + i, m_isLittleEndian);
        }
        if (got < wanted) {
            break;
        }
    }
    return done;
}

bool PropertyReader::readString(std::uint32_t length, std::string& bytes) {
    bytes.clear();
    while (bytes.size() < length) {
        const std::size_t before = bytes.size();
        const std::size_t wanted = std::min(kPiece, length - before);
        bytes.resize(before + wanted);
        const std::size_t got = readBytes(bytes.data() + before, wanted);
        if (got < wanted) {
            return false;
        }
    }
    return true;
}

bool PropertyReader::readUnits(std::uint64_t length, UnicodeString& units) {
    std::array<unsigned char, kNumbersPiece> bytes{};
    units.remove();
    while (length > 0) {
        const auto wanted =
            static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), length * 2));
        if (readBytes(bytes.data(), wanted) < wanted) {
            return false;
        }
        for (std::size_t i = 0; i < wanted; i += 2) {
            units.append(static_cast<char16_t>(
                loadNumber<std::uint16_t>(bytes.data() + i, m_isLittleEndian)));
        }
        length -= wanted / 2;
    }
    return true;
}

bool PropertyReader::skip(std::uint32_t length) {
    const std::uint32_t target = position() + length;
    return target >= length && seek(target) && position() == target;
}

}  // namespace ZroCommon::internal
