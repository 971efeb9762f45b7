#include <sstream>

#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

// "3 - 2 * 5", from left to right, or what becomes of one value: "abs -5".
std::string calculated(const std::string& formula) {
    std::istringstream words(formula);
    std::string first;
    std::string word;
    words >> first;
    ZRValue result = valueOf(first);
    while (words >> word) {
        std::string last = word;
        words >> last;
        const ZRValue operand = valueOf(last);
        result = first == "negate"    ? -operand
                 : first == "abs"     ? operand.abs()
                 : first == "round"   ? operand.round()
                 : first == "floor"   ? operand.floor()
                 : first == "ceiling" ? operand.ceiling()
                 : word == "+"        ? result + operand
                 : word == "-"        ? result - operand
                 : word == "*"        ? result * operand
                 : word == "/"        ? result / operand
                                      : result % operand;
    }
    return dump(result);
}

TEST(ZRValueArithmetic, AddsWhatHasOneUnitAndTypeAsItStands) {
    expectTexts(calculated,
                {"2 + 3 -> integer 5", "1cm + 1cm -> integer 2cm", "1.cm + 1.cm -> real 2cm",
                 "1.em - 3.em -> real -2em", "2147483647 + 1 -> integer -2147483648",
                 "-2147483648 - 1 -> integer 2147483647"});
}

TEST(ZRValueArithmetic, BringsOtherNumbersToOneUnitAndType) {
    expectTexts(calculated,
                {"2 + 0.5 -> real 2.5", "1in + 1pt -> real 73pt", "1pt - 1in -> real -71pt",
                 "1cm + 1.cm -> real 56.6929pt", "1s + 1ms -> real 1001ms", "1pt + 1em -> null",
                 "1 + 1pt -> null", "50% + 1 -> null", "1foo + 1 -> null", "1 - auto -> null",
                 "null + null -> null"});
}

TEST(ZRValueArithmetic, MultipliesIntoReals) {
    expectTexts(calculated, {"2 * 3 -> real 6", "50% * 10pt -> real 5pt", "50% * 50% -> real 0.25",
                             "1in * 2 -> real 144pt", "2em * 2 -> real 4em", "1pt * 2em -> null",
                             "1pt * auto -> null", "1pt * 1pt * 1pt * 1pt -> null"});
    const ZRValue point = valueOf("1pt");
    EXPECT_EQ((point * point).getUnitType(), ZRValueUnitPt2);
    EXPECT_EQ((point * (point * point)).getUnitType(), ZRValueUnitPt3);
    EXPECT_EQ((point * point * point).getUnitType(), ZRValueUnitPt3);
}

TEST(ZRValueArithmetic, DividesDownTheDimensions) {
    expectTexts(calculated,
                {"10pt / 2 -> real 5pt", "10 / 2pt -> null", "10pt / 2pt -> real 5",
                 "10pt / 50% -> real 20pt", "1in / 1pt -> real 72", "10em / 5em -> real 2",
                 "1pt * 1pt / 1pt -> real 1pt", "1 / 0 -> real inf", "0 / 0 -> real nan"});
    const ZRValue point = valueOf("1pt");
    const ZRValue area = point * point;
    EXPECT_EQ(dump(area * point / area), "real 1pt");
    EXPECT_EQ(dump(point / area), "null");
    EXPECT_EQ((area * point / point).getUnitType(), ZRValueUnitPt2);
}

TEST(ZRValueArithmetic, RemainderHasTheSignOfTheDividend) {
    expectTexts(calculated, {"7 % 3 -> integer 1", "-7 % 3 -> integer -1", "7 % -3 -> integer 1",
                             "-7.5 % 2 -> real -1.5", "1in % 10pt -> real 2pt",
                             "1. % 0 -> real nan", "1 % 1pt -> null"});
}

TEST(ZRValueArithmetic, NegatesAndTakesMagnitudes) {
    expectTexts(calculated,
                {"negate 5 -> integer -5", "negate 1.5cm -> real -1.5cm", "negate '5' -> null",
                 "negate -2147483648 -> integer -2147483648", "negate 0.pt -> real -0pt",
                 "abs -5cm -> integer 5cm", "abs 5cm -> integer 5cm", "abs -1.5cm -> real 1.5cm",
                 "abs -2147483648 -> integer -2147483648", "abs auto -> null"});
}

TEST(ZRValueArithmetic, RoundsPlainNumbersOnly) {
    expectTexts(calculated,
                {"round 2.5 -> real 3", "round -2.5 -> real -2", "floor -2.5 -> real -3",
                 "ceiling -2.5 -> real -2", "round 7 -> integer 7", "floor 2.5pt -> null",
                 "ceiling 2.5% -> null", "round auto -> null"});
    // The sum is a float's.
    EXPECT_EQ(real(8388609, ZRValueUnitNumber).round(), real(8388610, ZRValueUnitNumber));
}

TEST(ZRValueArithmetic, AValueMayBeItsOwnOperandAndBecomeNull) {
    ZRValue value = valueOf("3cm");
    value += value;
    EXPECT_EQ(dump(value), "integer 6cm");
    value /= *&value;
    EXPECT_EQ(dump(value), "real 1");
    ZRValue text(u"a text that does not lie inside the string object itself");
    text *= 2;
    EXPECT_EQ(dump(text), "null");
}

}  // namespace
}  // namespace ZroCommon::testing
