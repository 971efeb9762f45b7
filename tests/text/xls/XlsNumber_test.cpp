#include <charconv>
#include <cmath>
#include <random>

#include "tests/text/xls/Cells.h"
#include "zro/text/xls/internal/DecimalString.h"
#include "zro/text/xls/internal/Fraction.h"

namespace ZroCommon::testing {
namespace {

TEST(XlsNumber, PlacesDigits) {
    expectCells(
        {"1234.5 0.49 as 0 -> 1235 | 0", "-0.001 -1.005 3.105 as 0.00 -> 0.00 | -1.01 | 3.11",
         "9.96 1 5e-324 as 0.0 -> 10.0 | 1.0 | 0.0", "5.25 as 000.0 -> 005.3",
         "0.5 0 as #.## -> 0.5 | 0.", "1 as 0.0# -> 1.0", "1 as 0.#0 -> 1.0",
         "1.25 as 0.### -> 1.25", "5.5 as ?0.? ->  5.5", "0.5 as ?.? ->  .5",
         "1234 as 00\\-00 -> 12-34", "0 as # -> 0", "0 as ?? ->   ", "1234 as 00-00 -> untouched",
         "5551234567 as \\(000\\)\\ 000\\-0000 -> (555) 123-4567",
         "0.30000000000000004 as 0.00000000000000000 -> 0.30000000000000000",
         "1e21 as 0 -> 1000000000000000000000", "123.456 as 0.00 in 3 -> ###(-3)"});
}

TEST(XlsNumber, GroupsDividesAndMultiplies) {
    expectCells({"123 1234567 as #,##0 -> 123 | 1,234,567", "5 as 0,000 -> 0,005",
                 "55 as ?,??? ->    55", "0.5 as 0% -> 50%", "1500000 as 0.0,, -> 1.5",
                 "1234567 as 0,,0 -> 1,235", "0 as 0.0, -> 0.0", "-1 as \"x\"0\\y -> -x1y",
                 "-1 as %0 -> %-100", "5 as 0*-\\h in 4 -> 5--h",
                 "-1234.5 as #,##0.00 -> -1,234.50", "555 as 000,000 -> 000,555",
                 "0.12345 as %0.0% -> %1234.5%"});
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
    expectCells({"12345 99999 0.00012345 as 0.00E+00 -> 1.23E+04 | 1.00E+05 | 1.23E-04",
                 "12345 as 00.0E+00 -> 12.3E+03", "12345 as 0.00e-00 -> 1.23e04",
                 "0.5 as 0.00e-0 -> 5.00e-1", "0 as 0E+0 -> 0E+0",
                 "-1e-300 5e-324 as 0.0E+0 -> -1.0E-300 | 5.0E-324",
                 "1.7e308 as 0.0E+### -> 1.7E+308", "123456 as #,##0.0E+0 -> 1,234.6E+2",
                 "12345 as 0.0E+0.0 -> 1.2E+0.0"});
}

TEST(XlsNumber, WritesFractions) {
    expectCells({"0.75 -1.75 2 0 as #\\ ?/? ->  3/4 | -1 3/4 | 2     |     ",
                 "1.25 3.14159265358979 as #\\ ?\?/?? -> 1  1/ 4 | 3 14/99",
                 "0.333 as #\\ ??\?/??? ->  332/997", "0.5 as 0\\ ?/? -> 0 1/2",
                 "1.75 -2 1234567890123456e3 as ?/? -> 7/4 | -2/1 | 1234567890123460000/1",
                 "0.3 as #\\ ?/8 ->  2/8", "1.5 as #\\ ?\?/16 -> 1  8/16",
                 "-0.01 as #\\ ?/10 ->      ", "1234.5 as #,##0\\ ?/? -> 1,234 1/2",
                 "5 as \\a/0 -> a/1", "3 as #\\ 0/0 -> 3 0  ",
                 "1e307 as ?/7 in 10 -> ##########(-3)"});
}

// On purpose: nothing carries into the integer.
TEST(XlsNumber, AFractionMayBeAWhole) {
    expectCells({"1.97 as #\\ ?/8 -> 1 8/8"});
}

// On purpose: denominators have sixteen bits.
TEST(XlsNumber, ALargeDenominatorWraps) {
    expectCells({"0.000025 as ????\?/????? ->     1/-25536"});
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
    for (const double number : {0.50000001, 1e-6 + 1e-13, 0.999999, 3.14159265358979}) {
        EXPECT_NE(cellText({}, places + u"/" + places, number), "");
    }
}

TEST(XlsNumber, ManyMarksMoveThePointFar) {
    const UnicodeString percents(254, u'%', 254);
    const UnicodeString commas(254, u',', 254);
    EXPECT_EQ(cellText({}, percents + u"0", 1.7e308, 2000),
              std::string(254, '%') + "17" + std::string(815, '0'));
    EXPECT_EQ(cellText({}, u"0" + percents, 1.7e308, 9), "#########(-3)");
    EXPECT_EQ(cellText({}, u"0" + commas, 1.7e308), "0");
}

TEST(XlsNumber, ShowsGeneral) {
    expectCells({"0.5 -5 0 1234.5678901 as General -> 0.5 | -5 | 0 | 1234.5679",
                 "0.30000000000000004 123456789.123456 as General -> 0.3 | 123456789.1",
                 "0.000123456789 2.33e-321 as General -> 0.000123457 | 2.33E-321",
                 "0.000123456789 as General in 9 -> 1.234E-04",
                 "1.5e-10 -1.5e-10 1e-11 as General -> 1.5E-10 | -1.5E-10 | 1E-11",
                 "-1.5e-10 2.5 as General in 2 -> 0 | 2", "-1.5e-10 0.7 as General in 1 ->  | 1",
                 "1e-11 1e12 as General in 11 -> 1E-11 | 1E+12", "2.5 as General in 3 -> 2.5",
                 "12345 as General in 4 -> ####", "-0.123456 as General in 5 -> -0.12",
                 "12345678901 as @ in 7 -> 1.2E+10", "1e300 as @ -> 1E+300",
                 "1e300 as @ in 4 -> ####", "5 as @ in 0 -> ", "-5 as General;General -> -5",
                 "5 as General\\x -> 5x", "12.5 as [DBNum3]General -> 十２.５"});
}

// On purpose: what follows in this block looks like faults and is kept.

TEST(XlsNumber, WithoutDecimalsGeneralHasNoExponent) {
    expectCells({"1e12 123456 as @ in 5 -> 1 | 1"});
}

TEST(XlsNumber, GeneralCutsTheLastDigitOfALargeNumber) {
    expectCells(
        {"1234567890123 as General in 11 -> 1.23456E+12", "-1e12 as General -> -1000000000000"});
}

TEST(XlsNumber, ACarryMakesASmallExponentSmaller) {
    expectCells({"9.9999999e-10 as General in 11 -> 1E-11"});
}

TEST(XlsNumber, GeneralAsksForMoreDecimalsThanFit) {
    expectCells({"3.14159265358979 as General in 7 -> #######(-3)",
                 "1234567890.1234 as General in 11 -> ###########(-3)"});
}

TEST(XlsNumber, GeneralLeavesAMinusForWhatFollows) {
    expectCells({"-5 as General\" x\" -> -5- x", "-5 as \"x\"General -> -x-5",
                 "-5 as General;\\-General -> --5", "-5 as [DBNum1]General -> \u4E94"});
}

TEST(XlsNumber, ThePointOfFifteenDigitsAheadOfAHalfIsRaised) {
    expectCells({"123456789012349.5 123456789012348.5 as 0 -> 123456789012349/0 | 123456789012349",
                 "99.99999999999999 as 0.0 -> 100.0"});
}

TEST(XlsNumber, RoundsTwice) {
    expectCells({"123456789012345 as 0.0, -> 123456789012.4",
                 "9999999999999.96 as 0 -> 10000000000000", "2.5 as General in 2 -> 2"});
}

TEST(XlsNumber, SmallNumbersUnderAnExponentForgetPercents) {
    expectCells({"0.5 5 as 0.00E+00% -> 5.00E-01% | 5.00E+02%",
                 "0.123456789 as 0.0000000E+0 -> 1.2345680E-1"});
}

TEST(XlsNumber, ExponentsHaveNoStepsOfThree) {
    expectCells({"12345 1 as ##0.0E+0 -> 123.5E+2 | 100.0E-2", "0 as 00.0E+00 -> 00.0E-01",
                 "0 as .0E+0 -> .0E+1"});
}

TEST(XlsNumber, WithoutIntegerPlacesThereIsNoInteger) {
    expectCells({"12.5 as .0 -> .5", "-0.5 as .00 -> .-50"});
}

TEST(XlsNumber, BlanksOfDecimalsAreUneven) {
    expectCells({"1 1.5 1.4999 as 0.?? -> 1.0  | 1.5  | 1.50"});
}

TEST(XlsNumber, WritesIdeographs) {
    expectCells({"123 1111 0 0.25 as [DBNum1]General -> 百二十三 | 千百十一 | 〇 | 〇.二五",
                 "20000 as [DBNum1]General -> 二万",
                 "123 1111 as [DBNum2]General -> 壱百弐拾参 | 壱阡壱百壱拾壱",
                 "1234567890123 as [DBNum1]General -> 一兆二千三百四十五億六千七百八十九万百二十三",
                 "3e16 1e300 as [DBNum1]General -> 三〇〇〇〇兆 | 一E+二八八兆",
                 "105 as [DBNum1]0 -> 一〇五", "-1234.5 as [DBNum3]#,##0.0% -> -１２３，４５０.０%",
                 "5 as [DBNum2]?00 -> \u3000〇伍", "123 as [DBNum1]0 in 5 -> #####(-3)"});
}

TEST(XlsNumber, EndsWithAResultWhateverComes) {
    for (const double number : {1.7e308, -5e-324, 2147483648.0, 1e15, -0.0}) {
        for (const int width : {-5, 0, 1, 4, 5, 6, 11, 12}) {
            for (const char16_t* format :
                 {u"@", u"General", u"[h]", u"[ss].000", u"[DBNum2]General", u"?/?", u"0E+0,,%"}) {
                EXPECT_LE(cellText({}, format, number, width).size(), 80U)
                    << utf8(format) << number;
            }
        }
    }
}

}  // namespace
}  // namespace ZroCommon::testing
