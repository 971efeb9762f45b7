#include "zro/text/ZRUtil.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

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

}  // namespace
}  // namespace ZroCommon::testing
