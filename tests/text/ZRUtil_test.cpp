#include "zro/text/ZRUtil.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>

#include "tests/support/Test.h"
#include "zro/text/ZRUUID.h"

namespace ZroCommon::testing {
namespace {

std::string encoded(const std::string& bytes, int sizeHint = 0) {
    std::istringstream in(bytes);
    return utf8(ZRUtil::encodeBase64(in, sizeHint));
}

std::string decoded(const UnicodeString& base64) {
    std::ostringstream out;
    ZRUtil::decodeBase64(base64.getBuffer(), base64.length(), out);
    return out.str();
}

TEST(ZRUtil, EncodesBase64) {
    expectTexts(
        [](const std::string& bytes) { return encoded(bytes); },
        {" -> ", "f -> Zg==", "fo -> Zm8=", "foobar -> Zm9vYmFy", "\xFB\xEF\xBF\xFF -> +++//w=="});
    std::string bytes;
    for (int i = 0; i < 3 * 3072 + 2; ++i) {
        bytes += static_cast<char>(i * 7 + i / 256);
    }
    for (const std::size_t length : {1U, 3071U, 3072U, 3073U, 6144U, 9218U}) {
        const std::string piece = bytes.substr(0, length);
        EXPECT_EQ(decoded(text(encoded(piece, -1))), piece) << length;
    }
    for (const int hint : {std::numeric_limits<int>::min(), 1, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(encoded("foo", hint), "Zm9v") << "no promise: " << hint;
    }
    std::istringstream failed("foo");
    failed.setstate(std::ios::failbit);
    EXPECT_TRUE(ZRUtil::encodeBase64(failed, 3).isEmpty());
}

TEST(ZRUtil, MakesDataUris) {
    std::istringstream in("foobar");
    EXPECT_EQ(utf8(ZRUtil::encodeBase64(in, 3, text("text/plain"), text("charset=utf-8"))),
              "data:text/plain;charset=utf-8;base64,Zm9vYmFy");
    in.clear();
    in.str("foo");
    EXPECT_EQ(utf8(ZRUtil::encodeBase64(in, 3, text("image/png"), UnicodeString())),
              "data:image/png;base64,Zm9v");
}

TEST(ZRUtil, DecodesBase64) {
    expectTexts([](const std::string& base64) { return decoded(text(base64)); },
                {"Zm9vYmFy -> foobar", "Zm9v\r\nYmFy -> foobar",
                 " Z m-9_v\u00E9.Y\u3042mFy{ -> foobar",  // what is not of the alphabet
                 "Zg== -> f", "Zm9v=YmFy -> foo", "Zm9vY=mFy -> foo",
                 "Zg -> f",  // bytes count as soon as they are whole
                 "Zm8 -> fo", "Zm9vY -> foo", "= -> ", " -> "});
    std::ostringstream out;
    ZRUtil::decodeBase64(u"Zm9vYmFy", 4, out);
    ZRUtil::decodeBase64(nullptr, 0, out);
    ZRUtil::decodeBase64(nullptr, -1, out);
    EXPECT_EQ(out.str(), "foo") << "as many characters as are given";
}

TEST(ZRUtil, NamesEncodingsAsIanaDoes) {
    const auto standard = [](const std::string& name) {
        return utf8(ZRUtil::getStandardEncoding(text(name)));
    };
    expectTexts(standard, {" -> UTF-8", " utf-8  -> UTF-8",
                           "iso-8859-1 -> ISO_8859-1:1987",  // a Turkish i would be another
                           "utf-16 -> UTF-16LE", "UTF-16BE -> UTF-16BE", "utf-32 -> UTF-32LE",
                           "shift_jis -> Shift_JIS", "ChineseBig5 -> Big5", "ChineseGBK -> GBK",
                           "KoreanKSC -> EUC-KR", "ANSI_X3.4 -> ANSI_X3.4-1968",
                           "ISO_646.irv -> ANSI_X3.4-1968", "klingon -> ", "utf-8\u00E9 -> ",
                           "uTf-8 but much longer than any name of an encoding could ever be -> "});
    EXPECT_EQ(standard(std::string("UTF-8\0x", 7)), "");
}

TEST(ZRUUID, IsRandomOfVersion4) {
    const ZRUUID first;
    const ZRUUID second;
    const std::string digits = utf8(first.toString());
    EXPECT_EQ(digits.size(), 32U);
    EXPECT_EQ(digits.find_first_not_of("0123456789ABCDEF"), std::string::npos);
    EXPECT_EQ(digits[12], '4');
    EXPECT_NE(std::string("89AB").find(digits[16]), std::string::npos);
    EXPECT_NE(first.toString(), second.toString());
    ZRUUID copy(first);
    EXPECT_TRUE(copy == first && !(copy == second));
    copy = second;
    EXPECT_TRUE(copy == second);
}

// "number|rest", with all digits that a double has and its sign.
std::string parsed(const UnicodeString& number) {
    UnicodeString text(number);
    const char16_t* end = nullptr;
    const double value = ZRUtil::parseNumber(text.getTerminatedBuffer(), &end);
    char digits[40];
    std::snprintf(digits, sizeof digits, "%.17g", value);
    std::string result = digits;
    // The printer follows the locale, which the parser must not.
    const std::size_t comma = result.find(',');
    if (comma != std::string::npos) {
        result[comma] = '.';
    }
    return result + "|" + utf8(end);
}

UnicodeString digits(int count, char16_t digit = u'1') {
    return {count, static_cast<UChar32>(digit), count};
}

TEST(ZRUtil, ParsesNumbers) {
    expectTexts([](const std::string& number) { return parsed(text(number)); },
                {"12 -> 12|", "  -.5x -> -0.5|x", " \t\r\n+7  -> 7| ", "-0 -> -0|", "5. -> 5|",
                 "5..5 -> 5|.5", "1e3 -> 1|e3", "1,5 -> 1|,5", "0x10 -> 0|x10",
                 "00012.500pt -> 12.5|pt", "9007199254740993 -> 9007199254740992|",
                 "1.7976931348623157 -> 1.7976931348623157|",
                 "0.1000000000000000055511151231257827 -> 0.10000000000000001|",
                 "18446744073709551617.5 -> 1.8446744073709552e+19|",
                 // Without a number nothing is taken, not even white space.
                 " -> 0|", "  -> 0| ", "-x -> 0|-x", "-.x -> 0|-.x", " . -> 0| .", "+-1 -> 0|+-1",
                 "- 1 -> 0|- 1", "\f1 -> 0|\f1", "\u0661 -> 0|\u0661", "\uFF11 -> 0|\uFF11",
                 "inf -> 0|inf"});
    EXPECT_EQ(ZRUtil::parseNumber(u"2.5", nullptr), 2.5);
}

// On purpose: a longer number is none, though it would fit a double.
TEST(ZRUtil, NumbersHave98Digits) {
    EXPECT_EQ(parsed(digits(98)), "1.111111111111111e+97|");
    EXPECT_EQ(parsed(u"-" + digits(98) + u".25x"), "-1.111111111111111e+97|x");
    EXPECT_EQ(parsed(digits(99)), "0|" + utf8(digits(99)));
    EXPECT_EQ(parsed(u" -" + digits(100, u'0')), "0| -" + utf8(digits(100, u'0')));
    EXPECT_EQ(parsed(u"1." + digits(200) + u"x"), "1.1111111111111112|x");
    EXPECT_EQ(parsed(u"0." + digits(97, u'0') + u"9"), "0|");
    EXPECT_EQ(parsed(u"." + digits(97, u'0') + u"9"), "8.9999999999999999e-98|");
}

// Against the C library, over numbers of all lengths: every last bit.
TEST(ZRUtil, NumbersAreRoundedCorrectly) {
    const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    std::mt19937 random(5);  // NOLINT(cert-msc51-cpp): the same numbers in each run
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        const auto point = random() % 24;
        for (auto length = 1 + random() % 24; text.size() < length;) {
            text += text.size() == point ? '.' : static_cast<char>('0' + random() % 10);
        }
        ASSERT_EQ(ZRUtil::parseNumber(testing::text(text).getTerminatedBuffer(), nullptr),
                  strtod_l(text.c_str(), nullptr, plain))
            << text;
    }
    freelocale(plain);
}

// "value|rest"
std::string parsedHex(const UnicodeString& number, int maxDigits) {
    UnicodeString text(number);
    const char16_t* end = nullptr;
    char value[20];
    std::snprintf(value, sizeof value, "%X|",
                  ZRUtil::parseHexNum(text.getTerminatedBuffer(), &end, maxDigits));
    return value + utf8(end);
}

TEST(ZRUtil, ParsesHexadecimalNumbers) {
    const Rows<UnicodeString, int, const char*> cases = {
        {u"1aFg", 0, "1AF|g"},
        {u" \r\n\t7F", 0, "7F|"},
        {u"123456", 4, "1234|56"},
        {u"12 34", 4, "12| 34"},
        {u"FFFFFFFF", 0, "FFFFFFFF|"},
        {u"123456789", 0, "FFFFFFFF|"},
        {u"00000000123", 0, "123|"},
        {u"0x1F", 0, "0|x1F"},
        {u"", 0, "0|"},
        {u"-1", 0, "0|-1"},
        {u"  g", 0, "0|g"}};  // unlike a number's, the white space is taken
    expectRows(parsedHex, cases);
    EXPECT_EQ(parsedHex(digits(98, u'0') + u"FF", 0).substr(0, 2), "0|");
}

TEST(ZRUtil, RoundsHalvesAwayFromZero) {
    constexpr double kMax = std::numeric_limits<int>::max();
    constexpr double kMin = std::numeric_limits<int>::min();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double number : {0.0, 0.5, 1.4999, 1.5, 2.5, 3e9, 1e308, kMin, kInfinity}) {
        for (const double either : {number, -number}) {
            const double rounded = std::clamp(std::round(either), kMin, kMax);
            EXPECT_EQ(ZRUtil::roundToInteger(either), rounded) << either;
            EXPECT_EQ(ZRUtil::roundToInteger(static_cast<float>(either)), rounded) << either;
        }
    }
    EXPECT_EQ(ZRUtil::roundToInteger(kMax), kMax);
    EXPECT_EQ(ZRUtil::roundToInteger(ZRUtil::getNaN()), 0);
    EXPECT_EQ(ZRUtil::roundToInteger(ZRUtil::getNaNf()), 0);
}

// On purpose: the sum with a half is rounded to a float before its fraction is cut off.
TEST(ZRUtil, FloatsRoundInSinglePrecision) {
    EXPECT_EQ(ZRUtil::roundToInteger(0.49999997F), 1);
    EXPECT_EQ(ZRUtil::roundToInteger(double{0.49999997F}), 0);
    EXPECT_EQ(ZRUtil::roundToInteger(8388609.0F), 8388610);
}

TEST(ZRUtil, PrintsNumbersInAnyLocale) {
    EXPECT_EQ(utf8(ZRUtil::toString(std::numeric_limits<int>::min())), "-2147483648");
    EXPECT_EQ(utf8(ZRUtil::toString(1234567.5)), "1.23457e+06");
    EXPECT_EQ(utf8(ZRUtil::toString(-0.25)), "-0.25");
    EXPECT_TRUE(ZRUtil::isNaN(ZRUtil::getNaNf()) && ZRUtil::isNaN(ZRUtil::getNaN()));
    EXPECT_FALSE(ZRUtil::isNaN(std::numeric_limits<float>::infinity()));
}

using Mode = ZRUtil::QuoteMode;

constexpr Mode kPlain{};
constexpr Mode kDouble = ZRUtil::QUOTE_DOUBLE;
constexpr Mode kSingle = ZRUtil::QUOTE_SINGLE;
constexpr Mode kBoth = ZRUtil::QUOTE_DOUBLE | ZRUtil::QUOTE_SINGLE;
constexpr Mode kDoubling = ZRUtil::QUOTE_DOUBLING;
constexpr Mode kEscapes = ZRUtil::QUOTE_BACKSLASH;

std::string shown(const UnicodeString& result) {
    return result.isBogus() ? "bogus" : utf8(result);
}

TEST(ZRUtil, QuotesStrings) {
    const auto quoted = [](const char* plain, Mode mode) {
        return utf8(ZRUtil::quoteString(text(plain), mode));
    };
    const Rows<const char*, Mode, const char*> cases = {
        {"a", kPlain, "a"},
        {"", kBoth, "\"\""},
        {"a", kBoth, "\"a\""},
        {"a\"b", kBoth, "'a\"b'"},
        {"a'b", kBoth, "\"a'b\""},
        {"a\"b'c", kBoth, "\"a\"b'c\""},
        {"\"'\n", kEscapes, "\"'\\A"},
        {"a\"b", kDouble | kDoubling, "\"a\"\"b\""},
        {"'a''b'", kSingle | kDoubling, "'''a''''b'''"},
        {"a\"b'c", kBoth | kDoubling, "\"a\"\"b'c\""},
        {"a\nb", kDouble | kEscapes, "\"a\\A b\""},
        {"a\nx", kDouble | kEscapes, "\"a\\Ax\""},
        {"\n\r\f\\", kSingle | kEscapes, "'\\A \\D \\C\\5C'"},
        {"a\\ b\\", kSingle | kEscapes, "'a\\5C  b\\5C'"},
        {"\"F'", kBoth | kEscapes, "\"\\22 F'\""},
        {"a'b", kSingle | kEscapes | kDoubling, "'a\\27 b'"},
        {"\u00E9\U0001F600", kDouble | kEscapes, "\"\u00E9\U0001F600\""}};
    expectRows(quoted, cases);
}

// "text|rest"; all is left behind "bogus".
std::string parsedString(const char16_t* quoted, Mode mode) {
    const char16_t* end = nullptr;
    const std::string result = shown(ZRUtil::parseString(quoted, &end, mode));
    EXPECT_EQ(shown(ZRUtil::parseString(quoted, nullptr, mode)), result) << utf8(quoted);
    EXPECT_TRUE(result != "bogus" || end == quoted) << utf8(quoted);
    return result == "bogus" ? result : result + "|" + utf8(end);
}

TEST(ZRUtil, ParsesQuotedStrings) {
    const Rows<const char16_t*, Mode, const char*> cases = {
        {u"\"a\"b", kDouble, "a|b"}, {u" \t\r\n\f'a' ", kBoth, "a| "},
        {u"'a''b'", kBoth, "a|'b'"}, {u"'a\\41'", kBoth, "a\\41|"},
        {u"'a'", kDouble, "bogus"},  {u" a", kBoth, "bogus"},
        {u"", kBoth, "bogus"},       {u"\"a'", kBoth, "bogus"},
        {u"\"", kBoth, "bogus"},     {u" 'a'", kPlain, " 'a'|"},
        {u"", kPlain, "|"},          {u" a\\42 \\", kEscapes, " aB|"}};
    expectRows(parsedString, cases);
    const Rows<const char16_t*, Mode, const char*> special = {
        {u"'a''b'", kBoth | kDoubling, "a'b|"},
        {u"''''", kBoth | kDoubling, "'|"},
        {u"'a\"\"'", kBoth | kDoubling, "a\"\"|"},
        {u"'''", kBoth | kDoubling, "bogus"},
        {u"\"a\\41 b\"", kDouble | kEscapes, "aAb|"},
        {u"\"\\000041b\"", kDouble | kEscapes, "Ab|"},
        {u"'\\41\r\nb'", kBoth | kEscapes, "A\nb|"},
        {u"'\\22\\'\\\\\\z'", kBoth | kEscapes, "\"'\\z|"},
        {u"'\\1F600'", kBoth | kEscapes, "\U0001F600|"},
        {u"'\\110000\\FFFFFF'", kBoth | kEscapes, "\uFFFD\uFFFD|"},
        {u"'a\\'", kBoth | kEscapes, "bogus"},
        {u"'a\\", kBoth | kEscapes, "bogus"}};
    expectRows(parsedString, special);
    EXPECT_EQ(ZRUtil::parseString(u"\\0", nullptr, kEscapes), UnicodeString(1, UChar32{0}, 1));
    EXPECT_EQ(ZRUtil::parseString(u"\\D800", nullptr, kEscapes).charAt(0), 0xD800);
}

// On purpose: CR LF behind a backslash is dropped, a line end of one character is not.
TEST(ZRUtil, ABackslashKeepsALineEndOfOneCharacter) {
    EXPECT_EQ(parsedString(u"'a\\\r\nb'", kBoth | kEscapes), "ab|");
    EXPECT_EQ(parsedString(u"'a\\\nb'", kBoth | kEscapes), "a\nb|");
    EXPECT_EQ(parsedString(u"'a\\\rb'", kBoth | kEscapes), "a\rb|");
    EXPECT_EQ(parsedString(u"'a\\\fb'", kBoth | kEscapes), "a\fb|");
}

TEST(ZRUtil, UnquotesStrings) {
    const auto unquoted = [](const char* quoted, Mode mode) {
        return shown(ZRUtil::unquoteString(text(quoted), mode));
    };
    const Rows<const char*, Mode, const char*> cases = {{" 'a b' ", kBoth, "a b"},
                                                        {"\u3000'a'\u2028", kBoth, "a"},
                                                        {"'a'b'", kBoth, "a'b"},
                                                        {" a\\42 ", kEscapes, "aB"},
                                                        {" a ", kPlain, "a"},
                                                        {"'a'b\"", kBoth, "bogus"},
                                                        {"'a' x", kBoth, "bogus"},
                                                        {"a", kBoth, "bogus"},
                                                        {"", kBoth, "bogus"},
                                                        {"'a'b'", kBoth | kDoubling, "bogus"},
                                                        {"'a'b'", kBoth | kEscapes, "bogus"}};
    expectRows(unquoted, cases);
    UnicodeString bogus;
    bogus.setToBogus();
    EXPECT_EQ(shown(ZRUtil::unquoteString(bogus, kBoth)), "bogus");
    EXPECT_EQ(shown(ZRUtil::unquoteString(bogus, kPlain)), "");
}

TEST(ZRUtil, QuotesUris) {
    EXPECT_EQ(utf8(ZRUtil::quoteUri(text("a \"b\""))), "url(\"a %22b%22\")");
    EXPECT_EQ(utf8(ZRUtil::unquoteUri(text("url(\"http://h/a%22b\")"))), "http://h/a%22b");
    EXPECT_EQ(utf8(ZRUtil::unquoteUri(text("'a/b.png'"))), "a/b.png");
}

}  // namespace
}  // namespace ZroCommon::testing
