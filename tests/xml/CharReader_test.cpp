#include "zro/xml/internal/CharReader.h"

#include <memory>
#include <sstream>

#include "tests/support/SmallStack.h"
#include "tests/support/Test.h"

namespace ZroCommon::internal {
namespace {

std::unique_ptr<DecodedInput> inputOf(const std::string& bytes) {
    auto input = std::make_unique<DecodedInput>();
    input->open(std::make_unique<std::istringstream>(bytes));
    input->encoding.mode = EncodingMode::Utf8;
    return input;
}

// A reader that logs what it gives: texts in quotes, "line:column", and whether it has failed.
class Reader : public CharReader {
public:
    explicit Reader(const std::string& bytes) : m_stream(bytes) {
        input().open(m_stream);
        input().encoding.mode = EncodingMode::Utf8;
        startCounting();
    }

    Reader& take(int count) {
        std::string text;
        for (char32_t c = 0; count > 0 && (c = get()) != kEnd; --count) {
            const bool isSurrogate = (c & 0xFFFFF800U) == 0xD800U;
            text +=
                isSurrogate ? "<surrogate>" : testing::utf8(UnicodeString(static_cast<UChar32>(c)));
        }
        return add("'" + text + "'");
    }
    Reader& rest() { return take(1'000'000); }
    Reader& at() { return add(std::to_string(line()) + ":" + std::to_string(column())); }
    Reader& state() { return add(hasFailed() ? "failed" : "fine"); }
    Reader& putBack(char32_t c) { return pushBack(c), *this; }
    Reader& put(std::u16string_view text) {
        pushText(UnicodeString(text.data(), static_cast<int32_t>(text.size())));
        return *this;
    }
    Reader& enter(const std::string& bytes) { return push(inputOf(bytes)), *this; }

    const std::string& log() const { return m_log; }

private:
    Reader& add(const std::string& entry) {
        m_log += (m_log.empty() ? "" : " ") + entry;
        return *this;
    }

    std::istringstream m_stream;
    std::string m_log;
};

TEST(CharReader, GivesCharactersAndCountsTheirPlaces) {
    for (const auto& [log, expected] : testing::Rows<std::string, const char*>{
             {Reader("ab\r\nc\U0001F600d\ne").at().take(2).at().take(1).at().rest().at().log(),
              "1:0 'ab' 1:2 '\n' 2:0 'c\U0001F600d\ne' 3:1"},
             {Reader("a]]x").take(4).putBack(u'x').putBack(u']').at().take(1).at().rest().log(),
              "'a]]x' 1:4 ']' 1:4 'x'"},
             // What no window holds.
             {Reader("a\xED\xA0\x80z").take(2).putBack(0xD800).putBack(u'a').take(2).at().log(),
              "'a<surrogate>' 'a<surrogate>' 1:2"},
             // Texts are read before what was put back.
             {Reader("ab").take(1).putBack(u'a').put(u"12").at().take(2).putBack(u'2').rest().log(),
              "'a' 1:1 '12' '2ab'"},
             // The document's own U+FFFF is told from its end by the state alone.
             {Reader("a\xEF\xBF\xBFz").take(1).take(1).state().at().rest().state().log(),
              "'a' '' fine 1:1 'z' failed"},
         }) {
        EXPECT_EQ(log, expected);
    }
}

TEST(CharReader, InnerInputsEndIntoTheOuterOne) {
    Reader reader("ad");
    reader.take(1).enter("b\nc").startCounting();
    reader.take(3).at().rest().at();
    EXPECT_EQ(reader.log(), "'a' 'b\nc' 2:1 'd' 1:3");
}

// On purpose: it is read as one of the outer input, and then once more for each input.
TEST(CharReader, TheFirstCharacterBehindInnerInputsCountsOnceMoreForEach) {
    for (const auto& [outer, putBack, rest] :
         testing::Rows<const char*, std::u16string_view, const char*>{
             {"ab", u"", "'xb' 1:4"},
             {"a\n", u"", "'x\n' 4:0"},
             {"a\xED\xA0\x80", u"", "'x<surrogate>' 1:4"},
             {"a", u"12", "'x12' 1:3"},
             {"a", u"\x85z", "'x\nz' 3:0"},
             {"ab", u"\r", "'x\nb' 3:1"},
             {"a\nb", u"\r2", "'x\n2b' 3:1"},
             {"a\rb", u"\r", "'x\n\nb' 4:1"},
             {"a", u"", "'x' 1:1"},
         }) {
        Reader reader(outer);
        reader.take(1).put(putBack).enter("").enter("x").rest().at();
        EXPECT_EQ(reader.log().substr(4), rest) << outer;
    }
}

// On purpose: what follows is read ahead, so that it comes behind text put back before.
TEST(CharReader, ACarriageReturnAtTheEndOfAnInnerInputDisplacesWhatFollows) {
    EXPECT_EQ(Reader("a\nb").take(1).enter("x\r").rest().log(), "'a' 'x\nb'") << "a line feed";
    EXPECT_EQ(Reader("ab").take(1).put(u"12").enter("x\r").rest().log(), "'a' 'x\n21b'");
}

// On purpose: it lies with the reader, not with the input that it came from.
TEST(CharReader, ACharacterReadAheadIsTheFirstOfAnInputThatBegins) {
    Reader reader("ab");
    reader.take(1).put(u"12").enter("x\r").take(2).enter("y").rest();
    EXPECT_EQ(reader.log(), "'a' 'x\n' '1y2b'");
    Reader other("ab");
    other.take(1).put(u"\r12").enter("").take(1).enter("y").rest();
    EXPECT_EQ(other.log(), "'a' '\n' 'by12'");
}

TEST(CharReader, ALiteralEndsOnItsOwnAndCountsFromItsPlace) {
    Reader reader("ab");
    reader.take(1).pushLiteral(u"x\ny", 7, 3);
    reader.take(1).at().rest().at().take(1).popLiteral();
    reader.at().rest();
    EXPECT_EQ(reader.log(), "'a' 'x' 7:4 '\ny' 8:1 '' 1:1 'b'");
}

TEST(CharReader, SettlingGoesOnWithTheBytesBehindTheLastCharacter) {
    Reader reader("a\r\n\xC3\xA9\xC3\xA9");
    reader.take(3).putBack(0xE9).settle().encoding.mode = EncodingMode::Latin1;
    reader.rest().at();
    EXPECT_EQ(reader.log(), "'a\n\xC3\xA9' '\xC3\xA9\xC3\x83\xC2\xA9' 2:3");
}

TEST(CharReader, ManyInputsThatEndTogetherNeedNoStack) {
    testing::onSmallStack([] {
        Reader reader("z");
        for (int i = 0; i < 20'000; ++i) {
            reader.push(inputOf(i % 2 == 0 ? "" : "\r"));
        }
        EXPECT_EQ(reader.rest().log(), "'\nz'");
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
