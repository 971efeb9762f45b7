// Packages and streams that want to do harm.
#include <sstream>

#include "tests/containers/Listing.h"
#include "tests/support/Cheap.h"
#include "tests/support/Streams.h"
#include "tests/support/Test.h"
#include "tests/support/ZipBuilder.h"
#include "zro/streams/ZRMemStream.h"

namespace ZroCommon::testing {
namespace {

const ZipBuilder& sample() {
    static const ZipBuilder s_sample =
        ZipBuilder().stored("a", "one").deflated("b", "two").descriptor(0, 0).stored("c", "3");
    return s_sample;
}

// Entries are listed up to the cut, the last one with what came of its data.
TEST(ZRZipHazards, EveryCutGivesWhatCameBefore) {
    const std::string& whole = sample().records();
    std::string last;
    for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
        const std::string found = listing(opened(whole.substr(0, cut)));
        EXPECT_GE(found.size() + 1, last.size()) << "cut at " << cut;
        last = found;
    }
    EXPECT_EQ(last, "a=one b=two c=3");
}

TEST(ZRZipHazards, AHeaderThatIsCutOffHasZerosForWhatIsNotWhole) {
    const std::string header = ZipBuilder().add({.name = "abc", .method = 8}).records();
    for (const std::size_t cut : {4U, 9U, 10U, 27U, 28U, 31U}) {
        const ZRZipFile package = opened(header.substr(0, cut));
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
    EXPECT_EQ(listing(opened(outer)), "q.zip=" + std::to_string(inner.size()));
    ZRMemStream memory;
    memory.append(outer);
    EXPECT_EQ(listing(ZRZipFile(&memory, false)), "q.zip=" + std::to_string(inner.size()));
}

TEST(ZRZipHazards, LargeEntriesArriveWhole) {
    const std::string data = noise(600000);
    const ZRZipFile package = opened(ZipBuilder().stored("a", data).deflated("b", data).package());
    for (const unsigned index : {0U, 1U}) {
        EXPECT_EQ(restOf(*package.getFileEntry(index)->getUncompressedStream(false)), data);
    }
}

TEST(ZRZipHazards, AStreamMayThrowAnywhere) {
    const std::string bytes = sample().package();
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        StreamOver<ThrowingFileBuf> stream(bytes, at);
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
    const ZRZipFile package = opened(builder.package());
    ASSERT_EQ(package.getFileEntryCount(), std::size(names));
    for (unsigned i = 0; i < std::size(names); ++i) {
        EXPECT_EQ(package.getFileEntry(text(names[i])), package.getFileEntry(i)) << names[i];
    }
}

// Headers of 30 bytes, one behind the other: the smallest that an entry can be.
TEST(ZRZipHazards, ManyHeadersTakeLittleRoomAndTime) {
    constexpr unsigned kEntries = 20'000;
    const std::string header = ZipBuilder().stored("", "").records();
    ASSERT_EQ(header.size(), 30U);
    std::string headers;
    for (unsigned i = 0; i < kEntries; ++i) {
        headers += header;
    }
    std::istringstream stream(headers);
    const Cheap cheap("headers");
    const ZRZipFile package(&stream, false);
    EXPECT_EQ(package.getFileEntryCount(), kEntries);
    EXPECT_EQ(package.getFileEntry(u""), package.getFileEntry(0));
    EXPECT_EQ(package.getFileEntry(u"missing"), nullptr);
    EXPECT_LE(sizeof(ZRZipFileEntry), 144U);
}

}  // namespace
}  // namespace ZroCommon::testing
