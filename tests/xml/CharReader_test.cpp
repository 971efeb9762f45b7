#include "zro/xml/internal/CharReader.h"

#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/Rows.h"
#include "tests/support/SmallStack.h"
#include "tests/support/Streams.h"
#include "tests/support/Text.h"

namespace ZroCommon::internal {
namespace {

std::unique_ptr<DecodedInput> inputOf(const std::string& bytes) {
    auto input = std::make_unique<DecodedInput>();
    input->open(std::make_unique<std::istringstream>(bytes));
    input->encoding.mode = EncodingMode::Utf8;
    return input;
}

class Reader : public CharReader {
public:
    explicit Reader(const std::string& bytes) : m_stream(bytes) {
        input().open(m_stream);
        input().encoding.mode = EncodingMode::Utf8;
        startCounting();
    }

    std::string take(int count) {
        UnicodeString text;
        for (char32_t c = 0; count > 0 && (c = get()) != kEnd; --count) {
            text.append(static_cast<UChar32>(c));
        }
        return testing::utf8(text);
    }
    std::string rest() { return take(1'000'000); }
    std::string position() const { return std::to_string(line()) + ":" + std::to_string(column()); }

private:
    std::istringstream m_stream;
};

TEST(CharReader, CountsLinesAndCodePoints) {
    Reader reader("ab\r\nc\xF0\x9F\x98\x80"
                  "d\ne");
    EXPECT_EQ(reader.position(), "1:0");
    reader.take(2);
    EXPECT_EQ(reader.position(), "1:2");
    reader.take(1);
    EXPECT_EQ(reader.position(), "2:0");
    reader.take(3);
    EXPECT_EQ(reader.position(), "2:3");
    EXPECT_EQ(reader.rest(), "\ne");
    EXPECT_EQ(reader.position(), "3:1");
    EXPECT_TRUE(reader.hasFailed());
}

TEST(CharReader, PushedBackCharactersComeAgainAndDoNotCountAgain) {
    Reader reader("a]]x");
    EXPECT_EQ(reader.take(4), "a]]x");
    reader.pushBack(u'x');
    reader.pushBack(u']');
    EXPECT_EQ(reader.position(), "1:4");
    reader.take(1);
    EXPECT_EQ(reader.position(), "1:4");
    EXPECT_EQ(reader.rest(), "x");
}

TEST(CharReader, TextsAreReadBeforeWhatWasPutBack) {
    Reader reader("ab");
    reader.take(1);
    reader.pushBack(u'a');
    reader.pushText(u"12");
    reader.pushText(u"0");
    EXPECT_EQ(reader.position(), "1:1");
    EXPECT_EQ(reader.take(3), "012");
    reader.pushBack(u'2');
    EXPECT_EQ(reader.rest(), "2ab");
}

TEST(CharReader, CharactersThatNoWindowHoldsAreReadAndPutBackToo) {
    Reader reader("a\xED\xA0\x80z");
    reader.take(1);
    EXPECT_EQ(reader.get(), 0xD800U);
    EXPECT_EQ(reader.position(), "1:2");
    reader.pushBack(0xD800);
    reader.pushBack(u'a');
    EXPECT_EQ(reader.get(), U'a');
    EXPECT_EQ(reader.get(), 0xD800U);
    EXPECT_EQ(reader.position(), "1:2");
    EXPECT_EQ(reader.rest(), "z");
}

// The document's own U+FFFF is told from its end by the state alone.
TEST(CharReader, AnFfffOfTheDocumentIsNotItsEnd) {
    Reader reader("a\xEF\xBF\xBFz");
    reader.take(1);
    EXPECT_EQ(reader.get(), CharReader::kEnd);
    EXPECT_FALSE(reader.hasFailed());
    EXPECT_EQ(reader.position(), "1:1");
    EXPECT_EQ(reader.rest(), "z");
    EXPECT_TRUE(reader.hasFailed());
}

TEST(CharReader, InnerInputsEndIntoTheOuterOne) {
    Reader reader("ad");
    reader.take(1);
    reader.push(inputOf("b\nc"));
    reader.startCounting();
    EXPECT_EQ(reader.take(3), "b\nc");
    EXPECT_EQ(reader.position(), "2:1");
    EXPECT_EQ(reader.rest(), "d");
    EXPECT_EQ(reader.position(), "1:3");
}

// On purpose: it is read as one of the outer input, and then once more for each input.
TEST(CharReader, TheFirstCharacterBehindInnerInputsCountsOnceMoreForEach) {
    for (const auto& [outer, putBack, rest, position] :
         testing::Rows<const char*, std::u16string_view, const char*, const char*>{
             {"ab", u"", "b", "1:4"},
             {"a\n", u"", "\n", "4:0"},
             {"a\xED\xA0\x80", u"", "\xEF\xBF\xBD", "1:4"},
             {"a", u"12", "12", "1:3"},
             {"a", u"\x85z", "\nz", "3:0"},
             {"ab", u"\r", "\nb", "3:1"},
             {"a\nb", u"\r2", "\n2b", "3:1"},
             {"a\rb", u"\r", "\n\nb", "4:1"},
             {"a", u"", "", "1:1"},
         }) {
        Reader reader(outer);
        reader.take(1);
        reader.pushText(UnicodeString(putBack.data(), static_cast<int32_t>(putBack.size())));
        reader.push(inputOf(""));
        reader.push(inputOf("x"));
        EXPECT_EQ(reader.rest(), "x" + std::string(rest)) << outer;
        EXPECT_EQ(reader.position(), position) << outer;
    }
}

TEST(CharReader, ACarriageReturnAtTheEndOfAnInnerInputTakesALineFeedBehindIt) {
    Reader reader("a\nb");
    reader.take(1);
    reader.push(inputOf("x\r"));
    EXPECT_EQ(reader.rest(), "x\nb");
}

// On purpose: what follows is read ahead, so that it comes behind text put back before.
TEST(CharReader, ACarriageReturnAtTheEndOfAnInnerInputDisplacesWhatFollows) {
    Reader reader("ab");
    reader.take(1);
    reader.pushText(u"12");
    reader.push(inputOf("x\r"));
    EXPECT_EQ(reader.rest(), "x\n21b");
}

// On purpose: it lies with the reader, not with the input that it came from.
TEST(CharReader, ACharacterReadAheadIsTheFirstOfAnInputThatBegins) {
    Reader reader("ab");
    reader.take(1);
    reader.pushText(u"12");
    reader.push(inputOf("x\r"));
    EXPECT_EQ(reader.take(2), "x\n");
    reader.push(inputOf("y"));
    EXPECT_EQ(reader.rest(), "1y2b");
    Reader other("ab");
    other.take(1);
    other.pushText(u"\r12");
    other.push(inputOf(""));
    EXPECT_EQ(other.take(1), "\n");
    other.push(inputOf("y"));
    EXPECT_EQ(other.rest(), "by12");
}

TEST(CharReader, ALiteralEndsOnItsOwnAndCountsFromItsPlace) {
    Reader reader("ab");
    reader.take(1);
    reader.pushLiteral(u"x\ny", 7, 3);
    EXPECT_EQ(reader.take(1), "x");
    EXPECT_EQ(reader.position(), "7:4");
    EXPECT_EQ(reader.rest(), "\ny");
    EXPECT_EQ(reader.position(), "8:1");
    EXPECT_EQ(reader.get(), CharReader::kEnd);
    reader.popLiteral();
    EXPECT_EQ(reader.position(), "1:1");
    EXPECT_EQ(reader.rest(), "b");
}

TEST(CharReader, SettlingGoesOnWithTheBytesBehindTheLastCharacter) {
    Reader reader("a\r\n\xC3\xA9\xC3\xA9");
    EXPECT_EQ(reader.take(3), "a\n\xC3\xA9");
    reader.pushBack(0xE9);
    reader.settle().encoding.mode = EncodingMode::Latin1;
    EXPECT_EQ(reader.rest(), "\xC3\xA9\xC3\x83\xC2\xA9");
    EXPECT_EQ(reader.position(), "2:3");
}

TEST(CharReader, TakesOneRefillAtATime) {
    testing::SlowSourceBuf buffer(std::string(64, 'x'), 8);
    std::istream stream(&buffer);
    CharReader reader;
    reader.input().open(stream);
    for (std::size_t i = 0; i < 64; ++i) {
        ASSERT_EQ(reader.get(), U'x');
        EXPECT_EQ(buffer.refills(), i / 8 + 1);
    }
}

TEST(CharReader, AThrowingBufferIsAFailedStream) {
    testing::ThrowAtBuf buffer("abc", 2);
    std::istream stream(&buffer);
    stream.exceptions(std::ios_base::badbit);
    CharReader reader;
    reader.input().open(stream);
    EXPECT_EQ(reader.get(), U'a');
    EXPECT_EQ(reader.get(), U'b');
    EXPECT_EQ(reader.get(), CharReader::kEnd);
    EXPECT_TRUE(stream.bad());
}

TEST(CharReader, ManyInputsThatEndTogetherNeedNoStack) {
    testing::onSmallStack([] {
        Reader reader("z");
        for (int i = 0; i < 20'000; ++i) {
            reader.push(inputOf(i % 2 == 0 ? "" : "\r"));
        }
        EXPECT_EQ(reader.rest(), "\nz");
    });
}

TEST(CharReader, LiteralsAreNormalizedLikeInputs) {
    for (const auto& [raw, normal] : testing::Rows<std::u16string_view, std::u16string_view>{
             {u"a\r\nb\rc\x85"
              u"d\u2028e\r\x85",
              u"a\nb\nc\nd\ne\n"},
             {u"\xD83D\xDE00", u"\xD83D\xDE00"},
             {u"\xD83Dxy", u"\uFFFDy"},
             {u"a\xD83D", u"a\uFFFD"},
             {u"\xDE00\xD83D\xD83Dz", u"\xDE00\uFFFDz"},
             {u"\r\xD83D", u"\n"},
         }) {
        std::u16string text(raw);
        text.resize(normalizeLiteral(text));
        EXPECT_EQ(text, normal);
    }
}

}  // namespace
}  // namespace ZroCommon::internal
