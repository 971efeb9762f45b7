// Blocks of more bytes than zlib counts.
#include <cstdint>
#include <limits>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>

#include "tests/support/Deflate.h"
#include "tests/support/Skips.h"
#include "tests/support/Test.h"
#include "zro/streams/ZRStrStream.h"
#include "zro/streams/compression/ZRInflaterStream.h"
#include "zro/streams/compression/internal/GzipReader.h"

namespace ZroCommon::testing {
namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kPiece = std::size_t{1} << 20U;  // whole pages, and whole deflate blocks
constexpr std::size_t kPieces = 4200;
constexpr std::size_t kHeader = 10;

// A stored block of 64 KiB, its header included, that is not the last one.
std::string storedBlock() {
    return std::string("\0\xFB\xFF\x04\0", 5) + noise(0xFFFB);
}

/// More than 4 GiB of gzip data, all pieces of which lie at one place of the memory.
class LargeMember {
public:
    LargeMember() {
        m_start = static_cast<char*>(mmap(nullptr, kSize, PROT_READ | PROT_WRITE,
                                          MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0));
        const int file = memfd_create("piece", 0);
        const std::string block = storedBlock();
        for (std::size_t at = 0; at < kPiece; at += block.size()) {
            m_isWhole = m_isWhole && write(file, block.data(), block.size()) == 0x10000;
        }
        for (std::size_t i = 0; i < kPieces && m_isWhole; ++i) {
            m_isWhole = mmap(m_start + kPage + i * kPiece, kPiece, PROT_READ,
                             MAP_PRIVATE | MAP_FIXED, file, 0)
                        != MAP_FAILED;
        }
        close(file);
    }
    LargeMember(const LargeMember&) = delete;
    LargeMember& operator=(const LargeMember&) = delete;
    ~LargeMember() { munmap(m_start, kSize); }

    bool isWhole() const { return m_isWhole; }

    /// Writes header and trailer. \return the size of the member
    std::size_t finish() {
        std::string("\x1F\x8B\x08\0\0\0\0\0\0\xFF", kHeader).copy(member(), kHeader);
        const std::string data = storedBlock().substr(5);
        const uLong ofBlock = crc32(0, reinterpret_cast<const Bytef*>(data.data()), 0xFFFB);
        uLong check = 0;
        for (std::size_t i = 0; i < kPieces * 16; ++i) {
            check = crc32_combine(check, ofBlock, 0xFFFB);
        }
        const std::string end = std::string("\x01\0\0\xFF\xFF", 5) + numberBytes(check, 4)
                                + numberBytes(std::uint64_t{kContent}, 4);
        end.copy(m_start + kPage + kPieces * kPiece, end.size());
        return kHeader + kPieces * kPiece + end.size();
    }

    char* member() { return m_start + kPage - kHeader; }
    const char* deflated() const { return m_start + kPage; }

    static constexpr std::size_t kContent = kPieces * 16 * 0xFFFB;

private:
    static constexpr std::size_t kSize = kPage + kPieces * kPiece + kPage;

    char* m_start;
    bool m_isWhole = true;
};

template <class Read>
std::size_t sizeOf(Read read) {
    std::size_t size = 0;
    while (const std::size_t got = read()) {
        size += got;
    }
    return size;
}

TEST(LargeBlocks, AreReadToTheirEnd) {
    static_assert(LargeMember::kContent > std::numeric_limits<std::uint32_t>::max());
    LargeMember large;
    if (!large.isWhole()) {
        GTEST_SKIP() << missing("room for 4200 mappings of memory",
                                "see /proc/sys/vm/max_map_count");
    }
    const std::size_t size = large.finish();
    std::string room(kPiece, '\0');
    ZRInflaterStream block(large.deflated(), size - kHeader, false);
    EXPECT_EQ(sizeOf([&] {
                  block.read(room.data(), static_cast<std::streamsize>(room.size()));
                  return static_cast<std::size_t>(block.gcount());
              }),
              LargeMember::kContent);
    const auto file =
        internal::readGzipFile(std::make_unique<ZRStrStream>(large.member(), size, false));
    EXPECT_EQ(sizeOf([&] {
                  return file->read({room.data(), internal::ExpandedBlock::kSize});
              }),
              LargeMember::kContent)
        << "of which the last would be held back if size or check value were wrong";
}

}  // namespace
}  // namespace ZroCommon::testing
