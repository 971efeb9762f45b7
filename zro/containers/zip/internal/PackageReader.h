#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <streambuf>

namespace ZroCommon::internal {

/// Reads a package through the buffer of its stream, whose state is neither asked nor changed.
/// Whatever the buffer throws is a failed operation; only a lack of memory passes.
class PackageReader {
public:
    explicit PackageReader(std::istream& stream) : m_buffer(stream.rdbuf()) {}

    /// In bytes; -1 when the stream cannot tell, and so cannot seek.
    std::int64_t position();

    /// \return false when that fails; where the stream stands then is not known
    bool seek(std::int64_t position);

    /// Steps forward without reading.
    bool seekForward(std::uint64_t count);

    /// Steps forward, through the bytes when the stream cannot seek.
    /// \return false when the stream ends before that
    bool skip(std::uint64_t count);

    /// \return how many bytes came
    std::size_t read(char* bytes, std::size_t count);

    /// The next four bytes as a little-endian number, which stay unread. 0 when fewer are left or
    /// the stream cannot seek.
    std::uint32_t peek32();

private:
    void unread(std::size_t count, std::int64_t position);

    std::streambuf* m_buffer;  // may be null
};

/// Bytes of an entry, as they are stored.
struct StoredBytes {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
};

/// Reads up to `claimedSize` bytes. What is allocated goes by what comes, not by the claim.
StoredBytes readStored(PackageReader& reader, std::uint32_t claimedSize);

}  // namespace ZroCommon::internal
