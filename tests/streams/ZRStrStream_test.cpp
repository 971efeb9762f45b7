#include "zro/streams/ZRStrStream.h"

#include "tests/support/Streams.h"
#include "tests/support/Test.h"
#include "zro/streams/internal/RewindStream.h"

namespace ZroCommon::testing {
namespace {

TEST(ZRStrStream, ReadsItsOwnCopyOrTheCallersBlock) {
    std::string block("a\0b", 3);
    ZRStrStream copied(block.data(), block.size(), true);
    ZRStrStream looking(block.data(), block.size(), false);
    block[0] = 'x';
    EXPECT_EQ(restOf(copied), std::string("a\0b", 3));
    EXPECT_EQ(restOf(looking), std::string("x\0b", 3));
    EXPECT_EQ(ZRStrStream(nullptr, 0, true).get(), EOF);
    EXPECT_EQ(ZRStrStream(nullptr, 0, false).get(), EOF);
}

TEST(ZRStrStream, CannotSeekButPutsBackUpToTheStart) {
    ZRStrStream stream("abc", 3);
    EXPECT_EQ(stream.tellg(), std::streampos(-1));
    stream.clear();
    EXPECT_EQ(stream.get(), 'a');
    EXPECT_EQ(stream.get(), 'b');
    EXPECT_TRUE(stream.unget() && stream.unget());
    EXPECT_FALSE(stream.unget());
    stream.clear();
    EXPECT_FALSE(stream.seekg(0));
    internal::rewindStream(stream);
    EXPECT_EQ(restOf(stream), "abc") << "its owners can";
}

}  // namespace
}  // namespace ZroCommon::testing
