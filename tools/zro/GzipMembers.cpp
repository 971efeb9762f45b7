// Gzip data for people: the library's stream passes over faults, here each of them is told.
#include <algorithm>
#include <array>
#include <new>
#include <string>
#include <utility>

#include <zlib.h>

#include "zro/foundation/ZRResourceLimits.h"

#include "tools/zro/CheckedBytes.h"
#include "tools/zro/Checksum.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

/// What is packed in all members, up to the first fault.
class UnpackedBuffer : public BlockBuffer {
public:
    explicit UnpackedBuffer(std::unique_ptr<std::istream> packed) : m_packed(std::move(packed)) {
        constexpr int kGzipFraming = 16 + MAX_WBITS;
        if (inflateInit2(&m_stream, kGzipFraming) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    UnpackedBuffer(const UnpackedBuffer&) = delete;
    UnpackedBuffer& operator=(const UnpackedBuffer&) = delete;
    ~UnpackedBuffer() override { inflateEnd(&m_stream); }

    /// Whether a member begins here.
    bool hasMember() {
        while (m_stream.avail_in < 2 && fill()) {
        }
        return m_stream.avail_in >= 2 && m_stream.next_in[0] == 0x1F && m_stream.next_in[1] == 0x8B;
    }

    const std::string& fault() const { return m_fault; }

protected:
    std::size_t readBlock(std::span<char> room) override {
        std::size_t made = 0;
        while (made == 0 && !m_isAtEnd) {
            if (isBeyondLimits()) {
                endWith(damagedBehind(size(), 0));
            } else if (m_stream.avail_in == 0 && !fill()) {
                endWith(damagedBehind(size(), 0) + ": there is no more");
            } else {
                made = expand(room);
            }
        }
        return made;
    }

private:
    std::uint64_t size() const { return m_before + m_stream.total_out; }

    // Adds to the input, which is at most some bytes.
    bool fill() {
        std::copy_n(m_stream.next_in, m_stream.avail_in, m_input.begin());
        const auto rest = std::span(m_input).subspan(m_stream.avail_in);
        const std::size_t count =
            readReady(*m_packed->rdbuf(), {reinterpret_cast<char*>(rest.data()), rest.size()});
        m_stream.next_in = m_input.data();
        m_stream.avail_in += static_cast<uInt>(count);
        return count > 0;
    }

    std::size_t expand(std::span<char> room) {
        m_stream.next_out = reinterpret_cast<Bytef*>(room.data());
        m_stream.avail_out = static_cast<uInt>(room.size());
        const int code = inflate(&m_stream, Z_NO_FLUSH);
        const std::size_t made = room.size() - m_stream.avail_out;
        if (code == Z_STREAM_END) {
            endMember();
        } else if (code == Z_MEM_ERROR) {
            throw std::bad_alloc();
        } else if (code != Z_OK && code != Z_BUF_ERROR) {
            const std::string what =
                m_stream.msg == nullptr ? "" : ": " + std::string(m_stream.msg);
            endWith(damagedBehind(size(), 0) + what);
        }
        return made;
    }

    void endMember() {
        m_before = size();
        m_stream.total_out = 0;
        if (hasMember()) {
            inflateReset(&m_stream);
        } else {
            endWith(isFilledUp()
                        ? ""
                        : "goes on with no gzip data behind byte " + withThousands(m_before));
        }
    }

    // Whether nothing follows but noughts, as tapes have them.
    bool isFilledUp() {
        do {
            const Bytef* const end = m_stream.next_in + m_stream.avail_in;
            if (std::any_of<const Bytef*>(m_stream.next_in, end, [](Bytef b) { return b != 0; })) {
                return false;
            }
            m_stream.avail_in = 0;
        } while (fill());
        return true;
    }

    // As the library does: for each member by itself.
    bool isBeyondLimits() const {
        const auto limits = ZroCommon::ZRResourceLimits::getCurrent();
        const std::uint64_t made = m_stream.total_out;
        return (limits.expandedBytes != 0 && made >= limits.expandedBytes)
               || (limits.expansionFactor != 0 && made > limits.expansionGrace
                   && made / limits.expansionFactor > m_stream.total_in);
    }

    void endWith(std::string fault) {
        m_fault = std::move(fault);
        m_isAtEnd = true;
    }

    std::unique_ptr<std::istream> m_packed;
    std::array<Bytef, 65536> m_input{};
    z_stream m_stream{};
    std::uint64_t m_before = 0;  // bytes of the members before this one
    std::string m_fault;
    bool m_isAtEnd = false;
};

}  // namespace

CheckedBytes unpacked(CheckedBytes packed) {
    auto stream = std::make_unique<OwningStream<UnpackedBuffer>>(std::move(packed.stream));
    UnpackedBuffer& buffer = stream->buffer();
    if (!buffer.hasMember()) {
        return {};
    }
    return {std::move(stream), [&buffer, ofPacked = std::move(packed.fault)] {
                return buffer.fault().empty() ? ofPacked() : buffer.fault();
            }};
}

}  // namespace zro
