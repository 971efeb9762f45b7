#include <limits>

#include <gtest/gtest.h>

#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

const ZRValueUnitType kCm = ZRValueUnitCm;
const ZRValueUnitType kPt = ZRValueUnitPt;
const ZRValueUnitType kNumber = ZRValueUnitNumber;
const ZRValueUnitType kPercent = ZRValueUnitPercent;

void expectAll(Rows<ZRValue, const char*> rows) {
    for (const auto& [result, expected] : rows) {
        EXPECT_EQ(dump(result), expected);
    }
}

TEST(ZRValueArithmetic, AddsWhatHasOneUnitAndTypeAsItStands) {
    expectAll({
        {ZRValue(2) + 3, "integer 5"},
        {integer(1, kCm) + integer(1, kCm), "integer 2cm"},
        {real(1, kCm) + real(1, kCm), "real 2cm"},
        {real(1, ZRValueUnitEm) - real(3, ZRValueUnitEm), "real -2em"},
        {ZRValue(std::numeric_limits<int>::max()) + 1, "integer -2147483648"},
        {ZRValue(std::numeric_limits<int>::min()) - 1, "integer 2147483647"},
    });
}

TEST(ZRValueArithmetic, BringsOtherNumbersToOneUnitAndType) {
    expectAll({
        {ZRValue(2) + real(0.5F, kNumber), "real 2.5"},
        {integer(1, ZRValueUnitIn) + integer(1, kPt), "real 73pt"},
        {integer(1, kPt) - integer(1, ZRValueUnitIn), "real -71pt"},
        {integer(1, kCm) + real(1, kCm), "real 56.6929pt"},
        {integer(1, ZRValueUnitS) + integer(1, ZRValueUnitMs), "real 1001ms"},
        {integer(1, kPt) + integer(1, ZRValueUnitEm), "null"},
        {ZRValue(1) + integer(1, kPt), "null"},
        {integer(50, kPercent) + 1, "null"},
        {ZRValue(u"a") + 1, "null"},
        {ZRValue(1) - ZRValue(ZRN_auto), "null"},
        {ZRValue() + ZRValue(), "null"},
    });
}

TEST(ZRValueArithmetic, MultipliesIntoReals) {
    const ZRValue point = integer(1, kPt);
    expectAll({
        {ZRValue(2) * 3, "real 6"},
        {integer(50, kPercent) * integer(10, kPt), "real 5pt"},
        {integer(50, kPercent) * integer(50, kPercent), "real 0.25"},
        {integer(1, ZRValueUnitIn) * 2, "real 144pt"},
        {integer(2, ZRValueUnitEm) * 2, "real 4em"},
        {point * integer(2, ZRValueUnitEm), "null"},
        {point * ZRValue(ZRN_auto), "null"},
    });
    EXPECT_EQ((point * point).getUnitType(), ZRValueUnitPt2);
    EXPECT_EQ((point * (point * point)).getUnitType(), ZRValueUnitPt3);
    EXPECT_EQ((point * point * point).getUnitType(), ZRValueUnitPt3);
    EXPECT_TRUE((point * point * point * point).isNull());
}

TEST(ZRValueArithmetic, DividesDownTheDimensions) {
    const ZRValue point = integer(1, kPt);
    const ZRValue area = point * point;
    expectAll({
        {integer(10, kPt) / 2, "real 5pt"},
        {ZRValue(10) / integer(2, kPt), "null"},
        {integer(10, kPt) / integer(2, kPt), "real 5"},
        {integer(10, kPt) / integer(50, kPercent), "real 20pt"},
        {integer(1, ZRValueUnitIn) / integer(1, kPt), "real 72"},
        {integer(10, ZRValueUnitEm) / integer(5, ZRValueUnitEm), "real 2"},
        {area / point, "real 1pt"},
        {area * point / area, "real 1pt"},
        {point / area, "null"},
        {ZRValue(1) / 0, "real inf"},
        {ZRValue(0) / 0, "real nan"},
    });
    EXPECT_EQ((area * point / point).getUnitType(), ZRValueUnitPt2);
}

TEST(ZRValueArithmetic, RemainderHasTheSignOfTheDividend) {
    expectAll({
        {ZRValue(7) % 3, "integer 1"},
        {ZRValue(-7) % 3, "integer -1"},
        {ZRValue(7) % -3, "integer 1"},
        {real(-7.5F, kNumber) % 2, "real -1.5"},
        {integer(1, ZRValueUnitIn) % integer(10, kPt), "real 2pt"},
        {real(1, kNumber) % 0, "real nan"},
        {ZRValue(1) % integer(1, kPt), "null"},
    });
}

TEST(ZRValueArithmetic, NegatesAndTakesMagnitudes) {
    expectAll({
        {-ZRValue(5), "integer -5"},
        {-real(1.5F, kCm), "real -1.5cm"},
        {-real(0, kPt), "real -0pt"},
        {-ZRValue(std::numeric_limits<int>::min()), "integer -2147483648"},
        {-ZRValue(u"5"), "null"},
        {integer(-5, kCm).abs(), "integer 5cm"},
        {integer(5, kCm).abs(), "integer 5cm"},
        {real(-1.5F, kCm).abs(), "real 1.5cm"},
        {ZRValue(std::numeric_limits<int>::min()).abs(), "integer -2147483648"},
        {ZRValue(ZRN_auto).abs(), "null"},
    });
}

TEST(ZRValueArithmetic, RoundsPlainNumbersOnly) {
    expectAll({
        {real(2.5F, kNumber).round(), "real 3"},
        {real(-2.5F, kNumber).round(), "real -2"},
        {real(-2.5F, kNumber).floor(), "real -3"},
        {real(-2.5F, kNumber).ceiling(), "real -2"},
        {ZRValue(7).round(), "integer 7"},
        {real(2.5F, kPt).floor(), "null"},
        {real(2.5F, kPercent).ceiling(), "null"},
        {ZRValue(ZRN_auto).round(), "null"},
    });
    // The sum is a float's.
    EXPECT_EQ(real(8388609, kNumber).round(), real(8388610, kNumber));
}

TEST(ZRValueArithmetic, AValueMayBeItsOwnOperandAndBecomeNull) {
    ZRValue value = integer(3, kCm);
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
