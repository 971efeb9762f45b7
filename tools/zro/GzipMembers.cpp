#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "zro/streams/compression/ZRGzipStream.h"

#include "tools/zro/CheckedBytes.h"
#include "tools/zro/Checksum.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRGzipStream;

constexpr std::string_view kMemberStart = "\x1F\x8B\x08";
constexpr std::size_t kTrailer = 8;

std::uint32_t numberAt(std::string_view bytes) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) {
        number = number << 8U | static_cast<unsigned char>(bytes[i]);
    }
    return number;
}

// The check value and the low bits of the size, each from its lowest byte on.
std::string trailerOf(const Checksum& sum) {
    std::string bytes;
    for (const std::uint64_t number : {std::uint64_t{sum.crc32()}, sum.size()}) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            bytes += static_cast<char>(number >> shift & 0xFFU);
        }
    }
    return bytes;
}

/// Gzip data, as a stream that seems to begin anew with each member. The library reads ahead of
/// what it needs and does not say where a member ends, so what was read last is kept, for the
/// trailer to be found in it.
class PackedBuffer : public std::streambuf {
public:
    explicit PackedBuffer(std::unique_ptr<std::istream> packed) : m_packed(std::move(packed)) {}

    /// Whether a member begins here; then the stream begins with it.
    bool beginMember() {
        await(4);
        setg(gptr(), gptr(), egptr());
        constexpr char kHighestFlags = '\x1F';
        return ahead().starts_with(kMemberStart) && ahead().size() > 3 && ahead()[3] >= 0
               && ahead()[3] <= kHighestFlags;
    }

    /// Moves behind a trailer. \return false when it is not there. If the next member is the same
    /// as this one, so is its trailer; so none with only its size right may come before.
    bool skipTrailer(const std::string& trailer) {
        await(kTrailer);
        const std::string_view kept(eback(), static_cast<std::size_t>(egptr() - eback()));
        std::size_t found = kept.find(trailer);
        if (found == kept.npos || kept.find(trailer.substr(4).append(kMemberStart)) < found + 4) {
            return false;
        }
        if (kept.compare(found + 1, kTrailer, trailer) == 0) {
            ++found;  // an empty member has one nought more before its trailer of noughts
        }
        char* const behind = eback() + found + kTrailer;
        setg(behind, behind, egptr());
        return true;
    }

    /// Whether something comes but noughts, which fill up the blocks of tapes.
    bool hasMore() {
        await(1);
        return ahead().find_first_not_of('\0') != std::string_view::npos;
    }

    /// The check value in the trailer, when this is the end of the data and its size is right.
    std::optional<std::uint32_t> lastCheck(std::uint64_t size) {
        await(kTrailer + 1);
        const std::string_view kept(eback(), static_cast<std::size_t>(egptr() - eback()));
        if (ahead().size() > kTrailer || kept.size() < kTrailer
            || numberAt(kept.substr(kept.size() - 4)) != static_cast<std::uint32_t>(size)) {
            return std::nullopt;
        }
        return numberAt(kept.substr(kept.size() - kTrailer));
    }

protected:
    int_type underflow() override {
        return fill() ? traits_type::to_int_type(*gptr()) : traits_type::eof();
    }

    // Only to the start, where it stands.
    pos_type seekpos(pos_type position, std::ios_base::openmode /*which*/) override {
        return position == pos_type(0) && gptr() == eback() ? position : pos_type(off_type(-1));
    }

private:
    static constexpr std::size_t kKept = 65536;

    std::string_view ahead() const { return {gptr(), static_cast<std::size_t>(egptr() - gptr())}; }

    void await(std::size_t count) {
        while (ahead().size() < count && fill()) {
        }
    }

    // Adds to what is ahead, and keeps some of what has been read.
    bool fill() {
        const auto kept = std::min(kKept, static_cast<std::size_t>(gptr() - eback()));
        const std::size_t held = kept + ahead().size();
        if (held > 0) {
            std::memmove(m_memory.data(), gptr() - kept, held);
        }
        char* const start = m_memory.data();
        const std::size_t count = readReady(*m_packed->rdbuf(), std::span(m_memory).subspan(held));
        setg(start, start + kept, start + held + count);
        return count > 0;
    }

    std::unique_ptr<std::istream> m_packed;
    std::array<char, 2 * kKept> m_memory{};
};

/// What is packed in all members.
class UnpackedBuffer : public BlockBuffer {
public:
    explicit UnpackedBuffer(std::unique_ptr<std::istream> packed)
        : m_packed(std::move(packed)), m_hasMember(m_packed.buffer().beginMember()) {
        beginMember();
    }

    bool hasMember() const { return m_hasMember; }
    const std::string& fault() const { return m_fault; }

protected:
    std::size_t readBlock(std::span<char> room) override {
        while (m_member) {
            const std::streamsize count =
                m_member->rdbuf()->sgetn(room.data(), static_cast<std::streamsize>(room.size()));
            if (count > 0) {
                m_sum.add({room.data(), static_cast<std::size_t>(count)});
                return static_cast<std::size_t>(count);
            }
            endMember();
        }
        return 0;
    }

private:
    void beginMember() {
        m_packed.clear();
        m_sum = {};
        m_member.reset();
        if (m_hasMember) {
            m_member.emplace(m_packed);
        }
    }

    void endMember() {
        m_before += m_sum.size();
        if (m_packed.buffer().skipTrailer(trailerOf(m_sum))) {
            m_hasMember = m_packed.buffer().beginMember();
            if (!m_hasMember && m_packed.buffer().hasMore()) {
                m_fault = "goes on with no gzip data behind byte " + withThousands(m_before);
            }
        } else {
            const auto check = m_packed.buffer().lastCheck(m_sum.size());
            m_fault = wrongCrc32(m_sum, check.value_or(m_sum.crc32()), "trailer");
            m_fault = m_fault.empty() ? damagedBehind(m_before, 0) : m_fault;
            m_hasMember = false;
        }
        beginMember();
    }

    OwningStream<PackedBuffer> m_packed;
    bool m_hasMember;
    std::optional<ZRGzipStream> m_member;
    Checksum m_sum;              // of the member
    std::uint64_t m_before = 0;  // bytes of the members before it
    std::string m_fault;
};

}  // namespace

CheckedBytes unpacked(CheckedBytes packed) {
    auto stream = std::make_unique<OwningStream<UnpackedBuffer>>(std::move(packed.stream));
    const UnpackedBuffer& buffer = stream->buffer();
    if (!buffer.hasMember()) {
        return {};
    }
    return {std::move(stream), [&buffer, ofPacked = std::move(packed.fault)] {
                return buffer.fault().empty() ? ofPacked() : buffer.fault();
            }};
}

}  // namespace zro
