#include "zro/containers/zip/internal/EntrySearch.h"

#include <sstream>

#include "tests/containers/Listing.h"
#include "tests/support/Streams.h"
#include "tests/support/Test.h"
#include "tests/support/ZipBuilder.h"

namespace ZroCommon::testing {
namespace {

std::string dataOf(std::streambuf& buffer, const char* name) {
    std::istream stream(&buffer);
    const auto found = internal::openFirstEntry(stream, text(name));
    return found ? restOf(*found) : "nothing";
}

// What the search finds is what the entry of a package gives, whatever the stream can do.
TEST(EntrySearch, FindsWhatAPackageFinds) {
    const std::string bytes =
        ZipBuilder()
            .stored("a", noise(20000))
            .add({.name = "x", .data = deflated("ex"), .method = 8, .extra = "1234"})
            .descriptor(1, 2)
            .stored("x", "second")
            .add({.name = "cut", .data = "PK\3\4abc", .compressedSize = 900000})
            .records();
    for (const char* name : {"a", "x", "cut", "missing", ""}) {
        std::istringstream seekable(bytes);
        const ZRZipFile package(&seekable, false);
        ZRZipFileEntry* const entry = package.getFileEntry(text(name));
        const std::string expected =
            entry ? restOf(*entry->getUncompressedStream(false)) : "nothing";
        std::stringbuf memory(bytes);
        ShortReadBuf single(bytes);
        NoSeekBuf forward(bytes);
        for (std::streambuf* buffer :
             {static_cast<std::streambuf*>(&memory), static_cast<std::streambuf*>(&single),
              static_cast<std::streambuf*>(&forward)}) {
            EXPECT_EQ(dataOf(*buffer, name), expected) << name;
        }
    }
}

TEST(EntrySearch, GoesNoFartherThanItMust) {
    const std::string bytes = ZipBuilder().stored("a", "1").stored("b", noise(100000)).package();
    ShortReadBuf buffer(bytes, 16);
    EXPECT_EQ(dataOf(buffer, "a"), "1");
    EXPECT_LT(buffer.refills(), 4U);
}

TEST(EntrySearch, FailuresAndExceptionsEndTheSearch) {
    const std::string bytes = ZipBuilder().deflated("a", "1").stored("b", "2").records();
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        FailAtBuf failing(bytes, at);
        ThrowAtBuf throwing(bytes, at);
        const std::string found = dataOf(failing, "b");
        EXPECT_EQ(found, at < bytes.size() - 1 ? "nothing" : "") << at;
        EXPECT_EQ(dataOf(throwing, "b"), found) << at;
    }
    for (const std::string& foreign :
         {std::string(), std::string("PK"), ZipBuilder().package(), "x" + bytes}) {
        NoSeekBuf buffer(foreign);
        EXPECT_EQ(dataOf(buffer, "a"), "nothing");
    }
}

}  // namespace
}  // namespace ZroCommon::testing
