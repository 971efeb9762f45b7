// Packages and streams that want to do harm.
#include <algorithm>
#include <ios>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "tests/containers/Listing.h"
#include "tests/support/Streams.h"
#include "tests/support/ZipBuilder.h"
#include "zro/streams/ZRMemStream.h"

namespace ZroCommon::testing {
namespace {

const ZipBuilder& sample() {
    static const ZipBuilder kSample =
        ZipBuilder().stored("a", "one").deflated("b", "two").descriptor(0, 0).stored("c", "3");
    return kSample;
}

// Entries are listed up to the cut, the last one with what came of its data.
TEST(ZRZipHazards, EveryCutGivesWhatCameBefore) {
    const std::string& whole = sample().records();
    std::string last;
    for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
        std::istringstream stream(whole.substr(0, cut));
        const std::string found = listing(ZRZipFile(&stream, false));
        EXPECT_GE(found.size() + 1, last.size()) << "cut at " << cut;
        last = found;
    }
    EXPECT_EQ(last, "a=one b=two c=3");
}

TEST(ZRZipHazards, AHeaderThatIsCutOffHasZerosForWhatIsNotWhole) {
    const std::string header = ZipBuilder().add({.name = "abc", .method = 8}).records();
    for (const std::size_t cut : {4U, 9U, 10U, 27U, 28U, 31U}) {
        std::istringstream stream(header.substr(0, cut));
        const ZRZipFile package(&stream, false);
        ASSERT_EQ(package.getFileEntryCount(), 1U) << cut;
        const ZRZipFileEntry& entry = *package.getFileEntry(0);
        EXPECT_EQ(entry.getCompressionMethod(), cut < 10 ? 0 : 8) << cut;
        EXPECT_EQ(utf8(entry.getFileName()), cut == 31 ? "a" : "") << cut;
    }
}

// A stream in memory refuses to step behind its end, and would stand at the package inside.
TEST(ZRZipHazards, AFailedSeekEndsTheWalk) {
    const std::string inner = ZipBuilder().stored("inside", "").package();
    const std::string outer =
        ZipBuilder().add({.name = "q.zip", .data = inner, .compressedSize = 0x7FFFFFFF}).records();
    std::istringstream standard(outer);
    EXPECT_EQ(listing(ZRZipFile(&standard, false)), "q.zip=" + std::to_string(inner.size()));
    ZRMemStream memory;
    memory.append(outer);
    EXPECT_EQ(listing(ZRZipFile(&memory, false)), "q.zip=" + std::to_string(inner.size()));
}

// Notes the largest number of bytes that is asked for at once.
class AskedForBuf : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;
    std::streamsize largest = 0;

protected:
    std::streamsize xsgetn(char* bytes, std::streamsize count) override {
        largest = std::max(largest, count);
        return std::stringbuf::xsgetn(bytes, count);
    }
};

TEST(ZRZipHazards, ASizeOfFourGiBIsReadInPieces) {
    const std::string bytes =
        ZipBuilder()
            .add({.name = "big", .data = "1234567", .compressedSize = 0xFFFFFFFF})
            .records();
    ASSERT_EQ(bytes.size(), 40U);
    AskedForBuf buffer(bytes);
    std::istream stream(&buffer);
    EXPECT_EQ(listing(ZRZipFile(&stream, false)), "big=1234567");
    EXPECT_LE(buffer.largest, 262144) << "what is asked for, and so allocated, at once";
}

TEST(ZRZipHazards, LargeEntriesArriveWhole) {
    const std::string data = noise(600000);
    std::istringstream stream(ZipBuilder().stored("a", data).deflated("b", data).package());
    const ZRZipFile package(&stream, false);
    for (const unsigned index : {0U, 1U}) {
        EXPECT_EQ(restOf(*package.getFileEntry(index)->getUncompressedStream(false)), data);
    }
}

TEST(ZRZipHazards, BombsExpandPieceByPiece) {
    std::istringstream stream(
        ZipBuilder().deflated("zeros", std::string(1U << 22U, '\0'), 9).package());
    const ZRZipFile package(&stream, false);
    std::istream& bomb = *package.getFileEntry(0)->getUncompressedStream(false);
    bomb.ignore((1 << 22) - 1);
    EXPECT_LE(bomb.rdbuf()->in_avail(), 65536);
    EXPECT_EQ(restOf(bomb).size(), 1U);
}

// Behaves as a file does, and throws in the middle.
class ThrowingFileBuf : public std::stringbuf {
public:
    ThrowingFileBuf(const std::string& bytes, std::size_t at) : std::stringbuf(bytes), m_at(at) {}

protected:
    std::streamsize xsgetn(char* bytes, std::streamsize count) override {
        const auto here = static_cast<std::size_t>(gptr() - eback());
        if (here + static_cast<std::size_t>(count) > m_at) {
            throw std::runtime_error("ThrowingFileBuf");
        }
        return std::stringbuf::xsgetn(bytes, count);
    }
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override {
        if (static_cast<std::size_t>(std::streamoff(position)) > m_at) {
            throw std::runtime_error("ThrowingFileBuf");
        }
        return std::stringbuf::seekpos(position, which);
    }

private:
    std::size_t m_at;
};

TEST(ZRZipHazards, AStreamMayThrowAnywhere) {
    const std::string bytes = sample().package();
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        ThrowingFileBuf buffer(bytes, at);
        std::istream stream(&buffer);
        stream.exceptions(std::ios_base::failbit | std::ios_base::badbit | std::ios_base::eofbit);
        EXPECT_NO_THROW(listing(ZRZipFile(&stream, false))) << at;
        EXPECT_NO_THROW(ZRZipFile::isZipFile(&stream)) << at;
    }
}

TEST(ZRZipHazards, AStreamThatCannotSeekIsNoPackage) {
    NoSeekBuf buffer(sample().package());
    std::istream stream(&buffer);
    EXPECT_FALSE(ZRZipFile::isZipFile(&stream));
    EXPECT_EQ(stream.rdbuf()->sgetc(), 'P') << "and is left as it was";
    EXPECT_EQ(listing(ZRZipFile(&stream, false)), "");
    std::istream none(nullptr);
    EXPECT_EQ(listing(ZRZipFile(&none, false)), "");
}

TEST(ZRZipHazards, NamesAreKeysWhateverTheyAre) {
    ZipBuilder builder;
    const std::string names[] = {
        "../../etc/passwd",      "/etc/passwd", std::string("a\0b", 3), "%20", "\xFF\xFE",
        std::string(65535, 'x'), "C:\\a"};
    for (const std::string& name : names) {
        builder.stored(name, "");
    }
    std::istringstream stream(builder.package());
    const ZRZipFile package(&stream, false);
    ASSERT_EQ(package.getFileEntryCount(), std::size(names));
    for (unsigned i = 0; i < std::size(names); ++i) {
        EXPECT_EQ(package.getFileEntry(text(names[i])), package.getFileEntry(i)) << names[i];
    }
}

TEST(ZRZipHazards, ManyHeadersTakeLittleRoomAndTime) {
    ZipBuilder builder;
    builder.stored("", "");
    std::string headers;
    for (int i = 0; i < 20000; ++i) {
        headers += builder.records();
    }
    std::istringstream stream(headers);
    const ZRZipFile package(&stream, false);
    EXPECT_EQ(package.getFileEntryCount(), 20000U);
    EXPECT_EQ(package.getFileEntry(u""), package.getFileEntry(0));
    EXPECT_EQ(package.getFileEntry(u"missing"), nullptr);
    EXPECT_LE(sizeof(ZRZipFileEntry), 144U);
}

}  // namespace
}  // namespace ZroCommon::testing
