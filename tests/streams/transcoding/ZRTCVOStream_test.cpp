#include "zro/streams/transcoding/ZRTCVOStream.h"

#include <algorithm>
#include <memory>

#include "tests/support/Streams.h"
#include "tests/support/Test.h"
#include "zro/platform/internal/CodeConverter.h"

namespace ZroCommon::testing {
namespace {

using namespace std::string_literals;

constexpr auto kNoConvert = ZRTCVOStream::LF_CONVERT(0);

// A stream on a string.
struct Written {
    explicit Written(const char* encoding, std::size_t limit = 0)
        : stream(std::make_unique<ZRTCVOStream>(&target, encoding, false, kNoConvert, false)) {
        stream->setLimit(limit);
    }

    std::string bytes() {
        stream.reset();
        return target.str();
    }

    std::ostringstream target;
    std::unique_ptr<ZRTCVOStream> stream;
};

std::string encoded(const char* encoding, const UnicodeString& text) {
    Written written(encoding);
    written.stream->writeString(text);
    return written.stream->is_open() ? written.bytes() : "not open";
}

TEST(ZRTCVOStream, WritesManyEncodings) {
    const Rows<const char*, UnicodeString, std::string> cases = {
        {"Shift_JIS", u"aあ①", "a\x82\xA0\x87\x40"},
        {"EUC-JP", u"あ", "\xA4\xA2"},
        {"ChineseGBK", u"丂", "\x81\x40"},
        {"KOI8-R", u"При", "\xF0\xD2\xC9"},
        {"UTF-8", u"😀", "\xF0\x9F\x98\x80"},
        {"UTF-16", u"あ", "\x42\x30"},
        {"UTF-32", u"a", "\0\0\0a"s},
        {"ISO-2022-JP", u"aあ", "a\x1B$B$\"\x1B(B"},
        {"Shift_JIS", u"a\u0E01\u200Bz", "a\x81\xAC\x81\xACz"},
        {"Big5", u"a\u0E01z", "a?z"},
        {"ISO-8859-1", u"あ😀", "??"},
        {"ISO-8859-1", u"a\xD83Dz\xDE00", "a?z?"},
        {"klingon", u"a", "not open"},
        {"compound_text", u"a", "not open"},
        {"", u"a", "not open"},
        {nullptr, u"a", "not open"}};
    expectRows(encoded, cases);
    EXPECT_FALSE(ZRTCVOStream(nullptr, "UTF-8", false, kNoConvert, false).is_open());
}

// On purpose: reading takes the larger set for this name.
TEST(ZRTCVOStream, ANameMeansWhatItSaysOnWriting) {
    EXPECT_EQ(encoded("GB2312", u"中丂"), "\xD6\xD0\xA1\xFE");
}

// The put area ends behind 2048 units, and pieces of any size are put in.
TEST(ZRTCVOStream, PairsSurviveEveryBoundary) {
    UnicodeString units;
    for (int index = 0; index < 3000; ++index) {
        units += index % 7 == 0 ? UnicodeString(u"x") : UnicodeString(u"😀");
    }
    const std::string bytes(reinterpret_cast<const char*>(units.getBuffer()),
                            static_cast<std::size_t>(units.length()) * 2);
    for (const std::size_t step : {1U, 2U, 3U, 4095U, 4096U, 100'000U}) {
        Written written("UTF-8");
        for (std::size_t at = 0; at < bytes.size(); at += step) {
            *written.stream << bytes.substr(at, step);
            EXPECT_TRUE(step % 2 != 0 || written.stream->flush());
        }
        EXPECT_TRUE(written.bytes() == utf8(units)) << "in pieces of " << step;
    }
}

// On purpose: such a unit waits for the one behind it, and there is none.
TEST(ZRTCVOStream, ALastNulOrFirstHalfOfAPairIsNeverWritten) {
    EXPECT_EQ(encoded("EUC-JP", UnicodeString(u"a\0", 2)), "a");
    EXPECT_EQ(encoded("EUC-JP", UnicodeString(u"a\0b", 3)), "a\0b"s);
    EXPECT_EQ(encoded("UTF-8", UnicodeString(u"a\xD83D", 2)), "a");
    Written odd("UTF-8");
    odd.stream->write("a\0b", 3);
    EXPECT_EQ(odd.bytes(), "a");
}

// On purpose: zero bytes as many as a space takes, even those of a shift.
TEST(ZRTCVOStream, ANulAheadOfALineFeedIsAsWideAsASpace) {
    const UnicodeString text(u"a\0\nあ\0\0\n", 7);
    EXPECT_EQ(encoded("Shift_JIS", text), "a\0\n\x82\xA0\0\0\n"s);
    EXPECT_EQ(encoded("UTF-16", text), "a\0\0\0\n\0\x42\x30\0\0\0\0\n\0"s);
    EXPECT_EQ(encoded("UTF-32", UnicodeString(u"\0\n", 2)), "\0\0\0\0\0\0\0\n"s);
    EXPECT_EQ(encoded("ISO-2022-JP", UnicodeString(u"あ\0\n", 3)), "\x1B$B$\"\0\0\0\0\n"s);
    EXPECT_EQ(encoded("Shift_JIS", UnicodeString(u"a\xD83D\0\n", 4)), "a\x81\xAC\0\n"s);
    Written divided("EUC-JP");
    divided.stream->write("a\0\0\0", 4).flush().write("\n\0", 2);
    EXPECT_EQ(divided.bytes(), "a\0\n"s);
}

// Limits.

// "bytes, over or within, counted"
std::string outcomeOf(Written& written) {
    const std::string state = written.stream->isLimitOver() ? ", over, " : ", within, ";
    const std::size_t counted = written.stream->getOutputLength();
    return written.bytes() + state + std::to_string(counted);
}

std::string limited(std::size_t limit, const char* encoding, const std::string& given) {
    Written written(encoding, limit);
    written.stream->writeString(text(given));
    return outcomeOf(written);
}

TEST(ZRTCVOStream, ALimitDividesNoCharacter) {
    const std::string many(10'000, 'x');
    expectRows<std::size_t, const char*, std::string, std::string>(
        limited, {{0, "UTF-8", "aあ", "aあ, within, 4"},
                  {4, "UTF-8", "aあ", "aあ, within, 4"},
                  {3, "UTF-8", "aあ", "a, over, 4"},
                  {4, "UTF-8", "aあb", "aあ, over, 5"},
                  {3, "UTF-8", "😀", ", over, 4"},
                  {4, "UTF-8", "😀", "😀, within, 4"},
                  {5, "ISO-2022-JP", "あい", "\x1B$B$\", over, 6"},
                  // The return to the first shift state does not fit.
                  {5, "ISO-2022-JP", "あ", "\x1B$B$\", within, 5"},
                  {8, "ISO-2022-JP", "あ", "\x1B$B$\"\x1B(B, within, 5"},
                  {100, "EUC-JP", many.substr(0, 1000), many.substr(0, 100) + ", over, 101"},
                  {9999, "GB18030", many, many.substr(0, 9999) + ", over, 10000"},
                  {10'000, "GB18030", many, many + ", within, 10000"}});
    Written halves("UTF-8", 100);
    for (const char16_t unit : {u'\xD83D', u'\xD83D', u'\xDE00', u'\xDE00', u'a'}) {
        const char bytes[] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        halves.stream->write(bytes, 2).flush();
    }
    EXPECT_EQ(outcomeOf(halves), "〓😀〓a, within, 11");
}

TEST(ZRTCVOStream, RawBytesAreCutAtTheLimitAndAllCounted) {
    Written written("Shift_JIS", 6);
    written.stream->writeString(u"あ");
    written.stream->writeRawBuffer("\0\1"s.data(), 2);
    EXPECT_FALSE(written.stream->isLimitOver());
    written.stream->writeRawBuffer("xyz", 3);
    EXPECT_TRUE(written.stream->isLimitOver());
    written.stream->writeString(u"a");
    written.stream->writeRawBuffer("q", 1);
    EXPECT_EQ(outcomeOf(written), "\x82\xA0\0\1xy, over, 8"s);
}

TEST(ZRTCVOStream, ARawStreamIsCutAtTheLimit) {
    for (const auto& [limit, length, written, counted] :
         Rows<std::size_t, std::size_t, std::size_t, std::size_t>{
             {20'000, 19'998, 20'000, 20'000},
             {20'000, 19'999, 20'000, 20'001},
             {20'000, 50'000, 20'000, 24'578},  // by blocks of 8192
             {2, 1, 2, 3},
             {1, 5, 0, 2}}) {
        Written output("UTF-16", limit);
        output.stream->writeString(u"a");
        std::istringstream source(std::string(length, 'r'));
        output.stream->writeRawStream(source);
        EXPECT_EQ(output.stream->getOutputLength(), counted) << limit << " for " << length;
        EXPECT_EQ(output.bytes().size(), written) << limit << " for " << length;
    }
    StreamOver<EndlessBuf> endless("abc");
    Written written("UTF-8", 5);
    written.stream->writeRawStream(endless);
    EXPECT_EQ(written.bytes(), "abcab");
}

// On purpose: the other ways of writing count.
TEST(ZRTCVOStream, WithoutALimitARawStreamIsNotCounted) {
    Written written("UTF-8");
    std::istringstream source(std::string(10'000, 'r'));
    written.stream->writeRawStream(source);
    written.stream->writeRawBuffer("xy", 2);
    EXPECT_EQ(outcomeOf(written), std::string(10'000, 'r') + "xy, within, 2");
}

// Failures.

TEST(ZRTCVOStream, ATargetThatFailsFailsTheStream) {
    std::ostream target(nullptr);
    ZRTCVOStream stream(&target, "EUC-JP", false, kNoConvert, false);
    stream.writeString(u"a");
    EXPECT_FALSE(stream.flush());
}

// Makes ten bytes of each piece, whatever the room, or of none.
class Careless : public internal::CodeConverter {
public:
    explicit Careless(bool isStuck) : m_isStuck(isStuck) {}

    bool convert(internal::ConversionBlock& block, bool atEnd) override {
        if (!m_isStuck && !atEnd) {
            block.inPos = block.inLength;
            block.outLength = 10;
            std::fill_n(block.out, block.outLength, 'x');
        }
        return true;
    }

private:
    bool m_isStuck;
};

class CarelessBuf : public ZRTCVOStreamBuf {
public:
    CarelessBuf(std::ostream& target, bool isStuck)
        : ZRTCVOStreamBuf(&target, std::make_unique<Careless>(isStuck)) {}
};

// On purpose: it is not written and counted all the same.
TEST(ZRTCVOStream, APieceThatWouldCrossTheLimitIsHeldBack) {
    std::ostringstream target;
    CarelessBuf buffer(target, false);
    buffer.setLimit(15);
    std::ostream(&buffer).write("a\0", 2).flush().write("b\0", 2);
    EXPECT_TRUE(buffer.isLimitOver());
    EXPECT_EQ(buffer.getOutputLength(), 20U);
    EXPECT_EQ(target.str(), std::string(10, 'x'));
}

TEST(ZRTCVOStream, AConversionThatStandsStillEnds) {
    std::ostringstream target;
    CarelessBuf buffer(target, true);
    std::ostream stream(&buffer);
    EXPECT_FALSE(stream.write("a\0b\0", 4).flush());
    stream.clear();
    EXPECT_TRUE(stream.flush());  // nothing is left of it
    EXPECT_EQ(target.str(), "");
}

}  // namespace
}  // namespace ZroCommon::testing
