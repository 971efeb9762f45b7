#include "zro/streams/ZRMemStream.h"

#include <limits>
#include <new>
#include <sstream>

#include "tests/support/Streams.h"
#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

std::string contentOf(ZRMemStream& stream) {
    std::string content;
    stream.appendToString(content);
    return content;
}

std::size_t growBytesOf(ZRMemStream& stream) {
    return static_cast<ZRMemStreamBuf*>(stream.rdbuf())->getGrowBytes();
}

TEST(ZRMemStream, SettlesTheSizeOfItsBlocksWithTheFirst) {
    ZRMemStream stream(nullptr, 0);
    EXPECT_EQ(growBytesOf(stream), 8192U);
    stream.setGrowBytes(7);
    stream.setGrowBytes(0);
    EXPECT_EQ(growBytesOf(stream), 8192U);
    EXPECT_TRUE(stream.isEmpty());
    stream.setGrowBytes(16);
    EXPECT_EQ(stream.get(), EOF);
    stream.setGrowBytes(32);
    EXPECT_EQ(growBytesOf(stream), 16U);
}

// On purpose: reading does not move the write position, which begins at 0.
TEST(ZRMemStream, FirstWriteAfterAReadOverwrites) {
    std::istringstream source("abcdef");
    ZRMemStream stream(&source, 4);
    EXPECT_EQ(stream.get(), 'a');
    stream.writeStr("XY");
    EXPECT_EQ(contentOf(stream), "XYcdef");
    EXPECT_EQ(stream.get(), 'Y');
}

TEST(ZRMemStream, HoldsTwoBlocksAtMostWhenMemoryIsNotKept) {
    for (const int before : {0, 12}) {
        std::istringstream source("0123456789ABCDEFGHIJ");
        ZRMemStream stream(&source, 2);
        stream.ignore(before);
        stream.setKeepMemory(false);
        stream.ignore(20 - before);
        EXPECT_EQ(stream.peek(), EOF);
        stream.clear();
        EXPECT_LE(stream.length(), 4U);
        EXPECT_LE(stream.tellg(), 4);
        EXPECT_EQ(contentOf(stream), "IJ") << "the last block, behind it an empty one";
    }
}

TEST(ZRMemStream, UngetCrossesBlocksUpToTheStart) {
    ZRMemStream stream(nullptr, 2);
    stream += "abcd";
    stream.seekg(2);
    EXPECT_EQ(stream.unget().peek(), 'b');
    // On purpose: the stream gives back what it holds, whatever is put back.
    EXPECT_EQ(stream.putback('x').peek(), 'a');
    EXPECT_TRUE(stream.unget().fail());
    EXPECT_EQ(stream.rdbuf()->pubseekoff(std::numeric_limits<std::streamoff>::max(), std::ios::end),
              -1);
}

TEST(ZRMemStream, SearchesAndSkips) {
    bool isGone = false;
    ZRMemStream stream(new WatchedStream("abcd\refgh\n", isGone), 2, true);
    EXPECT_TRUE(stream.searchSeek("bc!", 2));
    EXPECT_TRUE(stream.skipSeek("bc", 0));
    EXPECT_FALSE(isGone || stream.skipSeek("dx", 0));
    EXPECT_FALSE(stream.searchSeek("ghi", 0));
    EXPECT_TRUE(isGone) << "all was looked through";
    EXPECT_EQ(stream.tellg(), 3);
    EXPECT_FALSE(stream.searchSeek("", 0) || stream.skipSeek("", 0));
    EXPECT_FALSE(stream.searchSeek(nullptr, 0));
    stream.seekEOL();
    EXPECT_EQ(restOf(stream), "efgh\n");
}

TEST(ZRMemStream, ChecksumPadsTheLastWordWithNoughts) {
    ZRMemStream stream;
    stream.append(std::string("\x00\x00\x00\x01\x02\xEE\xEE\xEE", 8));
    const char* bytes = nullptr;
    EXPECT_EQ(stream.getBuffer(bytes), 8U);
    stream.trim(5);
    EXPECT_EQ(stream.calcOTFTableChecksum(), 0x02000001U);
    EXPECT_EQ(std::string(bytes + 5, 3), std::string(3, '\0'));
    for (std::size_t size = 1; size < 10; ++size) {
        std::istringstream source(std::string(size, 'x'));
        ZRMemStream full(&source, size);
        full.calcOTFTableChecksum();
        EXPECT_EQ(contentOf(full), source.str()) << "for block size " << size;
    }
}

TEST(ZRMemStream, DeletesAnOwnedSourceAsSoonAsItIsRead) {
    bool isFirstGone = false;
    bool isSecondGone = false;
    std::istringstream kept("ghi");
    {
        ZRMemStream stream(new WatchedStream("abc", isFirstGone), 8, true);
        stream.setSource(&kept, false);
        EXPECT_TRUE(isFirstGone);
        EXPECT_EQ(contentOf(stream), "abcghi");
        stream.setSource(new WatchedStream("0123456789", isSecondGone), true);
        EXPECT_FALSE(isSecondGone) << "it did not fit into the block";
    }
    EXPECT_TRUE(isSecondGone);
    EXPECT_TRUE(kept.eof());
}

TEST(ZRMemStream, RemoveForgetsSourcesAndErrors) {
    bool isGone = false;
    ZRMemStream stream(new WatchedStream("abcdef", isGone), 2, true);
    EXPECT_EQ(stream.get(), 'a');
    stream.setstate(std::ios::failbit);
    stream.erase().append("xyz");
    EXPECT_TRUE(isGone);
    EXPECT_EQ(restOf(stream), "xyz");
    EXPECT_EQ(stream.begin().get(), 'x') << "and begin clears the end of file";
}

TEST(ZRMemStream, ReadsOneBlockAtATime) {
    StreamOver<PiecewiseBuf> slow("abcdefgh", 2);
    ZRMemStream stream(&slow, 4);
    EXPECT_EQ(slow.buffer.refills(), 0U) << "nothing is read before it is needed";
    EXPECT_EQ(stream.get(), 'a');
    EXPECT_EQ(slow.buffer.refills(), 2U);
}

TEST(ZRMemStream, AFailingSourceIsAtItsEnd) {
    StreamOver<ThrowAtBuf> first("abcdef", 5);
    StreamOver<FailAtBuf> second("ghijkl", 3);
    second.exceptions(std::ios::failbit | std::ios::eofbit);
    ZRMemStream stream(&first, 4);
    stream.setSource(&second, false);
    // What the throwing read had already found is lost, as with `istream::read`.
    EXPECT_EQ(contentOf(stream), "abcdghi");
    EXPECT_TRUE(first.bad());
}

TEST(ZRMemStream, OutOfMemoryIsNotAnEnd) {
    class OutOfMemoryBuf : public std::streambuf {
        int_type underflow() override { throw std::bad_alloc(); }
    };
    StreamOver<OutOfMemoryBuf> source;
    EXPECT_THROW(ZRMemStream(&source).length(), std::bad_alloc);
    ZRMemStreamBuf beyondAllMemory(nullptr, ~std::size_t{0});
    EXPECT_THROW(beyondAllMemory.sputc('x'), std::bad_alloc);
}

// On purpose: `setSource` keeps a source that comes up short without reaching its end; the block
// that it left half empty then counts as full.
TEST(ZRMemStream, GapOfABrokenSourceReadsAsNoughts) {
    ZRMemStream stream(nullptr, 4);
    stream += "ab";
    std::istream broken(nullptr);
    stream.setSource(&broken, false);
    EXPECT_EQ(contentOf(stream), std::string("ab\0\0", 4));
}

TEST(ZRMemStream, TakesWhatItNeedsFromAnEndlessSource) {
    StreamOver<EndlessBuf> source("ab");
    ZRMemStream stream(&source, 5);
    EXPECT_EQ(stream.seekg(1000).get(), 'a');
    EXPECT_TRUE(stream.searchSeek("ba", 2));
    EXPECT_EQ(stream.tellg(), 1001);
}

TEST(ZRMemStream, AHeldLimitEndsEndlessSources) {
    StreamOver<EndlessBuf> source("ab");
    ZRMemStream held(&source, 4);
    held.setHeldLimit(10);
    EXPECT_EQ(held.length(), 12U) << "whole blocks";
    EXPECT_EQ(contentOf(held), "abababababab");
    ZRMemStream passing(&source, 4);
    passing.setHeldLimit(10);
    passing.setKeepMemory(false);
    passing.ignore(1000);
    EXPECT_EQ(passing.gcount(), 1000) << "what is let go is not held";
    ZRMemStream sought(&source, 4);
    sought.setHeldLimit(10);
    EXPECT_FALSE(sought.searchSeek("aa", 2));
    EXPECT_TRUE(sought.seekg(1000).fail());
    EXPECT_EQ(sought.length(), 12U);
}

TEST(ZRMemStream, ACopyStandsWhereTheOriginalDoes) {
    std::istringstream source("abcdefgh");
    ZRMemStream original(&source, 3);
    original.seekg(5);
    original.seekp(1);
    ZRMemStream copy(original);
    copy.put('X');
    EXPECT_EQ(growBytesOf(copy), 3U);
    EXPECT_EQ(restOf(copy), "fgh");
    EXPECT_EQ(contentOf(copy), "aXcdefgh");
    original.abandonBuffer();
    EXPECT_EQ(restOf(original), "fgh");
    EXPECT_EQ(contentOf(original), "defgh");
}

TEST(ZRMemStream, BlocksMayBeLargerThanTwoGigabytes) {
    // Claims to have filled whatever it is given, so that huge contents cost nothing.
    class ClaimingBuf : public std::streambuf {
        std::streamsize xsgetn(char* /*bytes*/, std::streamsize count) override { return count; }
    };
    constexpr std::size_t kLarge = (std::size_t{1} << 31) + 100;
    StreamOver<ClaimingBuf> source;
    ZRMemStream stream(nullptr, kLarge);
    ASSERT_EQ(stream.copyStream(source, kLarge - 10), kLarge - 10);
    stream.append("end");
    EXPECT_EQ(stream.length(), kLarge - 7);
    stream.seekg(static_cast<std::streamoff>(kLarge - 10));
    EXPECT_EQ(restOf(stream), "end");
}

// A quadratic search would take minutes here.
TEST(ZRMemStream, SearchesARepeatingPatternInLinearTime) {
    constexpr std::size_t kHalf = 200000;
    std::istringstream source(std::string(kHalf * 2, 'a'));
    ZRMemStream stream(&source);
    const std::string pattern = std::string(kHalf, 'a') + 'b';
    EXPECT_FALSE(stream.searchSeek(pattern.data(), pattern.size()));
}

}  // namespace
}  // namespace ZroCommon::testing
