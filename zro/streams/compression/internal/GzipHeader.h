#pragma once

#include <array>
#include <cstdint>

#include <zlib.h>

namespace ZroCommon::internal {

constexpr char kGzipSignature[] = {'\x1F', '\x8B'};

/// Reads what stands before the data of a gzip member (RFC 1952), its check value unseen.
/// \tparam Source  has `int next()`: a byte, or -1 at the end
template <class Source>
class GzipHeader {
public:
    explicit GzipHeader(Source& source) : m_source(source) {}

    /// Reads signature, method and flags. \return false when this is no member that we could read
    bool readStart() {
        std::array<int, 4> start{};
        for (int& byte : start) {
            byte = m_source.next();
        }
        m_flags = start[3];
        return start[0] == 0x1F && start[1] == 0x8B && start[2] == Z_DEFLATED && m_flags >= 0
               && (m_flags & kReservedFlags) == 0;
    }

    /// Steps over the rest. It may be cut off; then nothing comes behind it either.
    void skipRest() {
        skip(6);  // time, extra flags, system
        if ((m_flags & kExtraField) != 0) {
            const int low = m_source.next();
            const int high = m_source.next();
            skip(high < 0 ? 0 : low + 256 * high);
        }
        for (const Flag text : {kName, kComment}) {
            if ((m_flags & text) != 0) {
                skipText();
            }
        }
        skip((m_flags & kHeaderCrc) != 0 ? 2 : 0);
    }

private:
    enum Flag : std::uint8_t {
        kHeaderCrc = 2,
        kExtraField = 4,
        kName = 8,
        kComment = 16,
        kReservedFlags = 0xE0
    };

    void skip(int count) {
        while (count > 0 && m_source.next() >= 0) {
            --count;
        }
    }

    void skipText() {
        while (m_source.next() > 0) {
        }
    }

    Source& m_source;
    int m_flags = 0;
};

}  // namespace ZroCommon::internal
