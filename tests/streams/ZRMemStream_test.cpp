#include "zro/streams/ZRMemStream.h"

#include <memory>
#include <new>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/Streams.h"

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

TEST(ZRMemStream, AllocatesItsFirstBlockWhenRead) {
    ZRMemStream stream;
    EXPECT_EQ(stream.length(), 0U);
    EXPECT_TRUE(stream.isEmpty());
    stream.setGrowBytes(16);
    EXPECT_EQ(growBytesOf(stream), 16U);
    EXPECT_EQ(stream.get(), EOF);
    stream.setGrowBytes(32);
    EXPECT_EQ(growBytesOf(stream), 16U) << "the size is settled once there is a block";
}

TEST(ZRMemStream, BlockSizeNoughtIsTheDefault) {
    ZRMemStream stream(nullptr, 0);
    EXPECT_EQ(growBytesOf(stream), 8192U);
    stream.setGrowBytes(7);
    stream.setGrowBytes(0);
    EXPECT_EQ(growBytesOf(stream), 8192U);
}

TEST(ZRMemStream, HoldsExactlyOneBlock) {
    ZRMemStream stream(nullptr, 4);
    stream.append("abcd");
    EXPECT_EQ(stream.length(), 4U);
    stream.seekp(0, std::ios::end);
    stream.put('e');
    EXPECT_EQ(restOf(stream), "abcde");
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

TEST(ZRMemStream, SeeksToItsLengthAndNoFarther) {
    ZRMemStream stream(nullptr, 4);
    stream += "abcde";
    EXPECT_EQ(stream.seekg(5).tellg(), 5);
    EXPECT_TRUE(stream.seekg(6).fail());
    stream.clear();
    EXPECT_EQ(stream.tellg(), 5);
    EXPECT_TRUE(stream.seekg(-1).fail()) << "before the start";
    EXPECT_EQ(stream.rdbuf()->pubseekoff(std::numeric_limits<std::streamoff>::max(), std::ios::end),
              -1);
}

TEST(ZRMemStream, HoldsTwoBlocksAtMostWhenMemoryIsNotKept) {
    std::istringstream source("0123456789ABCDEFGHIJ");
    ZRMemStream stream(&source, 2);
    stream.setKeepMemory(false);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(stream.get(), source.str()[static_cast<std::size_t>(i)]);
    }
    EXPECT_EQ(stream.get(), EOF);
    stream.clear();
    EXPECT_LE(stream.length(), 4U);
    EXPECT_LE(stream.tellg(), 4);
    EXPECT_EQ(contentOf(stream), "IJ") << "the last block, behind it an empty one";
}

TEST(ZRMemStream, LetsAllOldBlocksGoOnceMemoryIsNoLongerKept) {
    std::istringstream source("0123456789ABCDEFGHIJ");
    ZRMemStream stream(&source, 2);
    stream.ignore(12);
    stream.setKeepMemory(false);
    stream.ignore(8);
    EXPECT_EQ(stream.peek(), EOF);
    EXPECT_LE(stream.length(), 4U);
}

TEST(ZRMemStream, UngetCrossesBlocksUpToTheStart) {
    ZRMemStream stream(nullptr, 2);
    stream += "abcd";
    stream.seekg(2);
    EXPECT_EQ(stream.unget().peek(), 'b');
    // On purpose: the stream gives back what it holds, whatever is put back.
    EXPECT_EQ(stream.putback('x').peek(), 'a');
    EXPECT_TRUE(stream.unget().fail());
}

TEST(ZRMemStream, SearchCrossesBlocksAndSources) {
    std::istringstream first("..aa");
    std::istringstream second("ab..");
    ZRMemStream stream(&first, 3);
    stream.setSource(&second, false);
    EXPECT_TRUE(stream.searchSeek("aab!", 3));
    EXPECT_EQ(stream.tellg(), 3);
    EXPECT_TRUE(stream.skipSeek("aab", 0));
    EXPECT_FALSE(stream.skipSeek(".x", 0));
    EXPECT_EQ(restOf(stream), "..");
}

TEST(ZRMemStream, FailedSearchStaysAndHasDrawnEverything) {
    bool isGone = false;
    ZRMemStream stream(new WatchedStream("abcdefgh", isGone), 2, true);
    EXPECT_EQ(stream.get(), 'a');
    EXPECT_FALSE(isGone);
    EXPECT_FALSE(stream.searchSeek("ghi", 0));
    EXPECT_TRUE(isGone);
    EXPECT_EQ(stream.tellg(), 1);
    EXPECT_FALSE(stream.searchSeek("", 0));
    EXPECT_FALSE(stream.skipSeek("", 0));
    EXPECT_FALSE(stream.searchSeek(nullptr, 0));
}

TEST(ZRMemStream, StepsBehindARunOfLineEnds) {
    const struct {
        const char* text;
        const char* rest;
    } cases[] = {
        {"ab\r\n\r\ncd", "cd"}, {"\n\n", ""},          {"abc", ""}, {"", ""},
        {"\rx\ry", "x\ry"},     {"abcdefghi\nj", "j"},
    };
    for (const auto& [text, rest] : cases) {
        std::istringstream source(text);
        ZRMemStream stream(&source, 3);
        stream.seekEOL();
        EXPECT_EQ(restOf(stream), rest) << "for: " << text;
    }
}

TEST(ZRMemStream, ChecksumPadsTheLastWordWithNoughts) {
    ZRMemStream stream;
    stream.append(std::string("\x00\x00\x00\x01\x02\xEE\xEE\xEE", 8));
    const char* bytes = nullptr;
    EXPECT_EQ(stream.getBuffer(bytes), 8U);
    stream.trim(5);
    EXPECT_EQ(stream.calcOTFTableChecksum(), 0x02000001U);
    EXPECT_EQ(std::string(bytes + 5, 3), std::string(3, '\0'));
    EXPECT_EQ(ZRMemStream().calcOTFTableChecksum(), 0U);
}

TEST(ZRMemStream, ChecksumMayWriteBehindABlockOfAnySize) {
    for (std::size_t size = 1; size < 10; ++size) {
        std::istringstream source(std::string(size, 'x'));
        ZRMemStream stream(&source, size);
        stream.calcOTFTableChecksum();
        EXPECT_EQ(contentOf(stream), source.str()) << "for block size " << size;
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
    SlowSourceBuf slow("abcdefgh", 2);
    std::istream source(&slow);
    ZRMemStream stream(&source, 4);
    EXPECT_EQ(slow.refills(), 0U) << "nothing is read before it is needed";
    EXPECT_EQ(stream.get(), 'a');
    EXPECT_EQ(slow.refills(), 2U);
}

TEST(ZRMemStream, AFailingSourceIsAtItsEnd) {
    ThrowAtBuf throwing("abcdef", 5);
    FailAtBuf failing("ghijkl", 3);
    std::istream first(&throwing);
    std::istream second(&failing);
    second.exceptions(std::ios::failbit | std::ios::eofbit);
    ZRMemStream stream(&first, 4);
    stream.setSource(&second, false);
    // What the throwing read had already found is lost, as with `istream::read`.
    EXPECT_EQ(contentOf(stream), "abcdghi");
    EXPECT_TRUE(first.bad());
}

TEST(ZRMemStream, OutOfMemoryInASourceIsNotAnEnd) {
    class OutOfMemoryBuf : public std::streambuf {
        int_type underflow() override { throw std::bad_alloc(); }
    };
    OutOfMemoryBuf buffer;
    std::istream source(&buffer);
    ZRMemStream stream(&source);
    EXPECT_THROW(stream.length(), std::bad_alloc);
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
    EndlessBuf endless("ab");
    std::istream source(&endless);
    ZRMemStream stream(&source, 5);
    EXPECT_EQ(stream.seekg(1000).get(), 'a');
    EXPECT_TRUE(stream.searchSeek("ba", 2));
    EXPECT_EQ(stream.tellg(), 1001);
}

TEST(ZRMemStream, CopiesFromAStreamUpToACount) {
    std::istringstream source("abcdefghij");
    ZRMemStream stream(nullptr, 4);
    EXPECT_EQ(stream.copyStream(source, 4), 4U);
    EXPECT_EQ(stream.copyStream(source, 100), 6U);
    EXPECT_EQ(stream.copyStream(source, 100), 0U) << "the source is no longer good";
    stream.put('!');
    EXPECT_EQ(contentOf(stream), "abcdefghij!");
}

TEST(ZRMemStream, AHeldLimitEndsEndlessSources) {
    EndlessBuf endless("ab");
    std::istream source(&endless);
    ZRMemStream measured(&source, 4);
    measured.setHeldLimit(10);
    EXPECT_EQ(measured.length(), 12U) << "whole blocks";
    ZRMemStream read(&source, 4);
    read.setHeldLimit(10);
    EXPECT_EQ(contentOf(read), "abababababab");
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

TEST(ZRMemStream, WritesAtTheStartAgainWhenItsBlockWasAbandoned) {
    ZRMemStream stream(nullptr, 4);
    stream += "abcdefghij";
    stream.seekp(2);
    stream.seekg(9);
    stream.abandonBuffer();
    EXPECT_EQ(stream.tellg(), 1);
    stream.put('X');
    EXPECT_EQ(contentOf(stream), "Xj");
}

TEST(ZRMemStream, TrimsWithBothPositionsInWhatGoes) {
    ZRMemStream stream(nullptr, 4);
    stream += "abcdefghij";
    stream.seekg(9);
    stream.trim(4);
    EXPECT_EQ(stream.tellg(), 4);
    EXPECT_EQ(stream.tellp(), 4);
    stream.trim(0);
    stream.put('x');
    EXPECT_EQ(restOf(stream), "x");
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
    EXPECT_EQ(restOf(original), "fgh");
    EXPECT_EQ(contentOf(original), "abcdefgh");
}

// Claims to have filled whatever it is given, so that huge contents cost nothing.
class ClaimingBuf : public std::streambuf {
    std::streamsize xsgetn(char* /*bytes*/, std::streamsize count) override { return count; }
};

TEST(ZRMemStream, BlocksMayBeLargerThanTwoGigabytes) {
    constexpr std::size_t kLarge = (std::size_t{1} << 31) + 100;
    ClaimingBuf claiming;
    std::istream source(&claiming);
    ZRMemStream stream(nullptr, kLarge);
    ASSERT_EQ(stream.copyStream(source, kLarge - 10), kLarge - 10);
    stream.append("end");
    EXPECT_EQ(stream.length(), kLarge - 7);
    stream.seekg(static_cast<std::streamoff>(kLarge - 10));
    EXPECT_EQ(restOf(stream), "end");
}

TEST(ZRMemStream, ABlockBeyondAllMemoryIsRefused) {
    ZRMemStreamBuf buffer(nullptr, ~std::size_t{0});
    EXPECT_THROW(buffer.sputc('x'), std::bad_alloc);
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
