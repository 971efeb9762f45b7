#include <charconv>
#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "tests/text/xls/Cells.h"
#include "zro/text/xls/internal/DecimalString.h"
#include "zro/text/xls/internal/Fraction.h"

namespace ZroCommon::testing {
namespace {

TEST(XlsNumber, PlacesDigits) {
    expectTexts({{u"0", 1234.5, "1235"},      {u"0", 0.49, "0"},        {u"0.00", -0.001, "0.00"},
                 {u"0.00", -1.005, "-1.01"},  {u"0.00", 3.105, "3.11"}, {u"0.0", 9.96, "10.0"},
                 {u"000.0", 5.25, "005.3"},   {u"#.##", 0.5, "0.5"},    {u"#.##", 0, "0."},
                 {u"0.0#", 1, "1.0"},         {u"0.#0", 1, "1.0"},      {u"0.###", 1.25, "1.25"},
                 {u"?0.?", 5.5, " 5.5"},      {u"?.?", 0.5, " .5"},     {u"00\\-00", 1234, "12-34"},
                 {u"0.0", 5e-324, "0.0"},     {u"#,##0", 123, "123"},   {u"0,000", 5, "0,005"},
                 {u"?,???", 55, "   55"},     {u"0%", 0.5, "50%"},      {u"0.0,,", 1500000, "1.5"},
                 {u"0,,0", 1234567, "1,235"}, {u"0.0,", 0, "0.0"},      {u"\"x\"0\\y", -1, "-x1y"},
                 {u"%0", -1, "%-100"},        {u"0*-\\h", 5, "5--h", 4}});
    expectTexts({
        {u"#", 0, "0"},
        {u"??", 0, "  "},
        {u"00-00", 1234, "untouched"},
        {u"\\(000\\)\\ 000\\-0000", 5551234567, "(555) 123-4567"},
        {u"0.00000000000000000", 0.1 + 0.2, "0.30000000000000000"},
        {u"0", 1e21, "1000000000000000000000"},
        {u"#,##0.00", -1234.5, "-1,234.50"},
        {u"#,##0", 1234567, "1,234,567"},
        {u"000,000", 555, "000,555"},
        {u"%0.0%", 0.12345, "%1234.5%"},
        {u"0.00", 123.456, "###(-3)", 3},
    });
}

// Short ways through the digits come to what the whole number says.
TEST(XlsNumber, KeepsFifteenDigits) {
    std::mt19937_64 random(5);  // NOLINT(cert-msc51-cpp): the same numbers in each run
    internal::DecimalString digits;
    for (int round = 0; round < 20000; ++round) {
        const auto integer = static_cast<double>(random() >> (15U + random() % 40));
        const double number = integer / std::pow(10.0, static_cast<double>(random() % 20)) + 1e-12;
        digits.assign(number);
        const std::string text(digits.text());
        double shown = 0;
        std::from_chars(text.data(), text.data() + text.size(), shown);
        const double unit = std::pow(10.0, std::floor(std::log10(number)) - 14);
        EXPECT_NEAR(shown, number, 0.5 * unit + 5e-16 * number) << round << ' ' << text;
        const std::string plain = text.substr(text.find_first_not_of("0."));
        EXPECT_LE(plain.find_last_not_of("0."), plain.find('.') < 15 ? 15U : 14U) << text;
    }
    for (const auto& [number, text] : {std::pair{0.99999999999999989, "1.0"},
                                       {99999999999999.97, "100000000000000.0"},
                                       {9.9999999999999995e-2, "0.1"},
                                       {0.012345678901234567, "0.0123456789012346"},
                                       {123456789.000000001, "123456789.0"}}) {
        digits.assign(number);
        EXPECT_EQ(digits.text(), text);
    }
}

TEST(XlsNumber, WritesExponents) {
    expectTexts({
        {u"0.00E+00", {12345, 99999, 0.00012345}, "1.23E+04 | 1.00E+05 | 1.23E-04"},
        {u"00.0E+00", 12345, "12.3E+03"},
        {u"0.00e-00", 12345, "1.23e04"},
        {u"0.00e-0", 0.5, "5.00e-1"},
        {u"0E+0", 0, "0E+0"},
        {u"0.0E+0", {-1e-300, 5e-324}, "-1.0E-300 | 5.0E-324"},
        {u"0.0E+###", 1.7e308, "1.7E+308"},
        {u"#,##0.0E+0", 123456, "1,234.6E+2"},
        {u"0.0E+0.0", 12345, "1.2E+0.0"},
    });
}

TEST(XlsNumber, WritesFractions) {
    expectTexts({
        {u"#\\ ?/?", {0.75, -1.75, 2, 0}, " 3/4 | -1 3/4 | 2     |     "},
        {u"#\\ ?\?/??", {1.25, 3.14159265358979}, "1  1/ 4 | 3 14/99"},
        {u"#\\ ??\?/???", 0.333, " 332/997"},
        {u"0\\ ?/?", 0.5, "0 1/2"},
        {u"?/?", {1.75, -2, 1234567890123456e3}, "7/4 | -2/1 | 1234567890123460000/1"},
        {u"#\\ ?/8", 0.3, " 2/8"},
        {u"#\\ ?\?/16", 1.5, "1  8/16"},
        {u"#\\ ?/10", -0.01, "     "},
        {u"#,##0\\ ?/?", 1234.5, "1,234 1/2"},
        {u"\\a/0", 5, "a/1"},
        {u"#\\ 0/0", 3, "3 0  "},
        {u"?/7", 1e307, "##########(-3)", 10},
    });
}

// On purpose: nothing carries into the integer.
TEST(XlsNumber, AFractionMayBeAWhole) {
    EXPECT_EQ(cellText(u"#\\ ?/8", 1.97), "1 8/8");
}

// On purpose: denominators have sixteen bits.
TEST(XlsNumber, ALargeDenominatorWraps) {
    EXPECT_EQ(cellText(u"????\?/?????", 1 / 40000.0), "    1/-25536");
}

// The rule as it is told, numerator by numerator.
internal::Fraction triedSingly(double limit, double fraction) {
    double best = 1;
    internal::Fraction winner;
    for (double m = 1; m < limit; ++m) {
        const double exact = m / fraction;
        const double d = std::ceil(exact - 0.5);
        if (d >= limit) {
            break;
        }
        const double error = std::fabs(exact - d) / d;
        if (error + 1e-8 < best) {
            best = error;
            const auto wrapped = static_cast<std::uint16_t>(static_cast<std::uint64_t>(d));
            winner = {m, static_cast<std::int16_t>(wrapped)};
        }
    }
    return winner;
}

TEST(XlsNumber, SkipsOnlyFractionsThatCannotWin) {
    std::mt19937_64 random(3);  // NOLINT(cert-msc51-cpp): the same numbers in each run
    std::uniform_real_distribution<double> fractions(1e-6, 1);
    for (int round = 0; round < 1000; ++round) {
        double fraction = fractions(random);
        if (round % 3 == 0) {  // near a simple fraction, where few numerators win
            const auto d = static_cast<double>(2 + random() % 30);
            fraction = 1 / d + (fraction - 0.5) * std::pow(10.0, -static_cast<int>(round % 8));
        }
        if (!(fraction > 1e-6 && fraction < 1)) {
            continue;
        }
        const int digits = 1 + round % 5;
        const auto expected = triedSingly(std::pow(10.0, digits), fraction);
        const auto found = internal::fractionWithin(digits, fraction);
        ASSERT_EQ(found.numerator, expected.numerator) << fraction << ' ' << digits;
        ASSERT_EQ(found.denominator, expected.denominator) << fraction << ' ' << digits;
    }
}

TEST(XlsNumber, ManyPlacesOfAFractionTakeNoLonger) {
    const UnicodeString places(120, u'?', 120);
    XlsFormatString formats;
    for (const double number : {0.50000001, 1e-6 + 1e-13, 0.999999, 3.14159265358979}) {
        EXPECT_FALSE(formats.FormatString(places + u"/" + places, number).isEmpty());
    }
}

TEST(XlsNumber, ManyMarksMoveThePointFar) {
    constexpr std::size_t kMarks = 254;
    const UnicodeString percents(kMarks, u'%', kMarks);
    const UnicodeString commas(kMarks, u',', kMarks);
    EXPECT_EQ(cellText((percents + u"0").getTerminatedBuffer(), 1.7e308, 2000),
              std::string(kMarks, '%') + "17" + std::string(815, '0'));
    EXPECT_EQ(cellText((u"0" + commas).getTerminatedBuffer(), 1.7e308), "0");
}

TEST(XlsNumber, ShowsGeneral) {
    expectTexts({
        {u"General", {0.5, -5, 0, 1234.5678901, 0.1 + 0.2}, "0.5 | -5 | 0 | 1234.5679 | 0.3"},
        {u"General", {123456789.123456, 0.000123456789}, "123456789.1 | 0.000123457"},
        {u"General", 0.000123456789, "1.234E-04", 9},
        {u"General", {1.5e-10, -1.5e-10, 1e-11}, "1.5E-10 | -1.5E-10 | 1E-11"},
        {u"General", {-1.5e-10, 2.5}, "0 | 2", 2},
        {u"General", {-1.5e-10, 0.7}, " | 1", 1},
        {u"General", {1e-11, 1e12}, "1E-11 | 1E+12", 11},
        {u"General", 2.33e-321, "2.33E-321"},
        {u"General", 2.5, "2.5", 3},
        {u"General", 12345, "####", 4},
        {u"General", -0.123456, "-0.12", 5},
        {u"@", 12345678901, "1.2E+10", 7},
        {u"@", 1e300, "1E+300"},
        {u"@", 1e300, "####", 4},
        {u"@", 5, "", 0},
        {u"General;General", -5, "-5"},
        {u"General\\x", 5, "5x"},
        {u"[DBNum3]General", 12.5, "十２.５"},
    });
}

// On purpose: what follows in this block looks like faults and is kept.

TEST(XlsNumber, WithoutDecimalsGeneralHasNoExponent) {
    EXPECT_EQ(cellText(u"@", 1e12, 5), "1");
    EXPECT_EQ(cellText(u"@", 123456, 5), "1");
}

TEST(XlsNumber, GeneralCutsTheLastDigitOfALargeNumber) {
    EXPECT_EQ(cellText(u"General", 1234567890123, 11), "1.23456E+12");
    EXPECT_EQ(cellText(u"General", -1e12), "-1000000000000");
}

TEST(XlsNumber, ACarryMakesASmallExponentSmaller) {
    EXPECT_EQ(cellText(u"General", 9.9999999e-10, 11), "1E-11");
}

TEST(XlsNumber, GeneralAsksForMoreDecimalsThanFit) {
    EXPECT_EQ(cellText(u"General", 3.14159265358979, 7), "#######(-3)");
    EXPECT_EQ(cellText(u"General", 1234567890.1234, 11), "###########(-3)");
}

TEST(XlsNumber, GeneralLeavesAMinusForWhatFollows) {
    EXPECT_EQ(cellText(u"General\" x\"", -5), "-5- x");
    EXPECT_EQ(cellText(u"\"x\"General", -5), "-x-5");
    EXPECT_EQ(cellText(u"General;\\-General", -5), "--5");
    EXPECT_EQ(cellText(u"[DBNum1]General", -5), "\u4E94");
}

TEST(XlsNumber, ThePointOfFifteenDigitsAheadOfAHalfIsRaised) {
    EXPECT_EQ(cellText(u"0", 123456789012349.5), "123456789012349/0");
    EXPECT_EQ(cellText(u"0", 123456789012348.5), "123456789012349");
    EXPECT_EQ(cellText(u"0.0", 99.99999999999999), "100.0");
}

TEST(XlsNumber, RoundsTwice) {
    EXPECT_EQ(cellText(u"0.0,", 123456789012345), "123456789012.4");
    EXPECT_EQ(cellText(u"0", 9999999999999.96), "10000000000000");
    EXPECT_EQ(cellText(u"General", 2.5, 2), "2");
}

TEST(XlsNumber, SmallNumbersUnderAnExponentForgetPercents) {
    EXPECT_EQ(cellText(u"0.00E+00%", 0.5), "5.00E-01%");
    EXPECT_EQ(cellText(u"0.00E+00%", 5), "5.00E+02%");
    EXPECT_EQ(cellText(u"0.0000000E+0", 0.123456789), "1.2345680E-1");
}

TEST(XlsNumber, ExponentsHaveNoStepsOfThree) {
    EXPECT_EQ(cellText(u"##0.0E+0", 12345), "123.5E+2");
    EXPECT_EQ(cellText(u"##0.0E+0", 1), "100.0E-2");
    EXPECT_EQ(cellText(u"00.0E+00", 0), "00.0E-01");
    EXPECT_EQ(cellText(u".0E+0", 0), ".0E+1");
}

TEST(XlsNumber, WithoutIntegerPlacesThereIsNoInteger) {
    EXPECT_EQ(cellText(u".0", 12.5), ".5");
    EXPECT_EQ(cellText(u".00", -0.5), ".-50");
}

TEST(XlsNumber, BlanksOfDecimalsAreUneven) {
    EXPECT_EQ(cellText(u"0.??", 1), "1.0 ");
    EXPECT_EQ(cellText(u"0.??", 1.5), "1.5 ");
    EXPECT_EQ(cellText(u"0.??", 1.4999), "1.50");
}

TEST(XlsNumber, WritesIdeographs) {
    expectTexts({
        {u"[DBNum1]General",
         {123, 1111, 0, 0.25, 20000},
         "百二十三 | 千百十一 | 〇 | 〇.二五 | 二万"},
        {u"[DBNum2]General", {123, 1111}, "壱百弐拾参 | 壱阡壱百壱拾壱"},
        {u"[DBNum1]General",
         {1234567890123, 3e16},
         "一兆二千三百四十五億六千七百八十九万百二十三 | 三〇〇〇〇兆"},
        {u"[DBNum1]General", 1e300, "一E+二八八兆"},
        {u"[DBNum1]0", 105, "一〇五"},
        {u"[DBNum3]#,##0.0%", -1234.5, "-１２３，４５０.０%"},
        {u"[DBNum2]?00", 5, "\u3000〇伍"},
        {u"[DBNum1]0", 123, "#####(-3)", 5},
    });
}

TEST(XlsNumber, EndsWithAResultWhateverComes) {
    const UnicodeString percents(254, u'%', 254);
    const UnicodeString commas(254, u',', 254);
    XlsFormatString formats;
    EXPECT_EQ(cellText(UnicodeString(u"0" + percents).getTerminatedBuffer(), 1.7e308, 9),
              "#########(-3)");
    EXPECT_EQ(utf8(formats.FormatString(u"0" + commas, 1.7e308)), "0");
    for (const double number : {1.7e308, -5e-324, 2147483648.0, 1e15, -0.0}) {
        for (const int width : {-5, 0, 1, 4, 5, 6, 11, 12}) {
            for (const char16_t* format :
                 {u"@", u"General", u"[h]", u"[ss].000", u"[DBNum2]General", u"?/?", u"0E+0,,%"}) {
                EXPECT_LE(cellText(format, number, width).size(), 80U) << utf8(format) << number;
            }
        }
    }
}

}  // namespace
}  // namespace ZroCommon::testing
