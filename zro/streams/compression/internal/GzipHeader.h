#pragma once

#include <array>
#include <cstdint>

#include <zlib.h>

#include "zro/streams/compression/internal/Crc32.h"

namespace ZroCommon::internal {

constexpr char kGzipSignature[] = {'\x1F', '\x8B'};

/// Reads what stands before the data of a gzip member (RFC 1952).
/// \tparam Source  has `int next()`: a byte, or -1 at the end
template <class Source>
class GzipHeader {
public:
    explicit GzipHeader(Source& source) : m_source(source) {}

    /// Reads signature, method and flags. \return false when this is no member that we could read
    bool readStart() {
        std::array<int, 4> start{};
        for (int& byte : start) {
            byte = next();
        }
        m_flags = start[3];
        return start[0] == 0x1F && start[1] == 0x8B && start[2] == Z_DEFLATED && m_flags >= 0
               && (m_flags & kReservedFlags) == 0;
    }

    /// Steps over the rest. It may be cut off; then nothing comes behind it either.
    /// \return false when it has a check value, and a wrong one
    bool skipRest() {
        skip(6);  // time, extra flags, system
        if ((m_flags & kExtraField) != 0) {
            const int low = next();
            const int high = next();
            skip(high < 0 ? 0 : low + 256 * high);
        }
        for (const Flag text : {kName, kComment}) {
            if ((m_flags & text) != 0) {
                skipText();
            }
        }
        return (m_flags & kHeaderCrc) == 0 || checkHolds();
    }

private:
    enum Flag : std::uint8_t {
        kHeaderCrc = 2,
        kExtraField = 4,
        kName = 8,
        kComment = 16,
        kReservedFlags = 0xE0
    };

    int next() {
        const int byte = m_source.next();
        const char unit = static_cast<char>(byte);
        m_check = byte < 0 ? m_check : extendCrc32(m_check, {&unit, 1});
        return byte;
    }

    void skip(int count) {
        while (count > 0 && next() >= 0) {
            --count;
        }
    }

    void skipText() {
        while (next() > 0) {
        }
    }

    bool checkHolds() {
        const auto expected = static_cast<int>(m_check & 0xFFFFU);
        const int low = m_source.next();
        const int high = m_source.next();
        return high < 0 || low + 256 * high == expected;
    }

    Source& m_source;
    int m_flags = 0;
    std::uint32_t m_check = 0;  // of what was read so far
};

}  // namespace ZroCommon::internal
