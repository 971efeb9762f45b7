#include "zro/values/ZRLength.h"

#include <cmath>
#include <limits>

#include "tests/support/Test.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(ZRLength, ConvertsBetweenAbsoluteUnits) {
    for (const auto& [unit, points] : testing::Rows<ZRValueUnitType, float>{
             {ZRValueUnitCm, 28.346457F},
             {ZRValueUnitMm, 2.8346457F},
             {ZRValueUnitIn, 72.0F},
             {ZRValueUnitPt, 1.0F},
             {ZRValueUnitPc, 12.0F},
             {ZRValueUnitTwip, 0.05F},
         }) {
        EXPECT_EQ(static_cast<float>(ZRLength(1.0F, unit)), points) << "unit " << unit;
        EXPECT_EQ(ZRLength(points).getRealValue(unit), 1.0F) << "unit " << unit;
    }
}

TEST(ZRLength, IsAutoInUnitsThatAreNoAbsoluteLength) {
    for (const int unit : {0, 1, 2, 3, 4, 5, 11, 12, 13, 24, 30, 31, 32, -1}) {
        EXPECT_TRUE(ZRLength(1.0F, static_cast<ZRValueUnitType>(unit)).isAuto()) << unit;
        EXPECT_TRUE(std::isnan(ZRLength(1.0F).getRealValue(static_cast<ZRValueUnitType>(unit))));
    }
}

// Two float roundings, to points and back: many whole millimetres do not come home.
TEST(ZRLength, RoundsTwiceOnTheWayToAnotherUnit) {
    int changed = 0;
    for (int millimetres = 1; millimetres <= 999; ++millimetres) {
        const auto number = static_cast<float>(millimetres);
        changed += ZRLength(number, ZRValueUnitMm).getRealValue(ZRValueUnitMm) != number ? 1 : 0;
    }
    EXPECT_EQ(changed, 167);
}

TEST(ZRLength, CountsPixelsHalfAwayFromZero) {
    for (const auto& [points, dpi, pixels] : testing::Rows<float, float, int>{
             {72.0F, 96.0F, 96},
             {-0.75F, 96.0F, -1},
             {0.375F, 96.0F, 1},
             {-0.375F, 96.0F, -1},
             {0.37F, 96.0F, 0},
             {0.0F, 96.0F, 0},
             {1e30F, 96.0F, std::numeric_limits<int>::max()},
             {-kInfinity, 96.0F, std::numeric_limits<int>::min()},
             {kNaN, 96.0F, 0},
         }) {
        EXPECT_EQ(ZRLength(points).getPixelCount(dpi), pixels) << points << "pt at " << dpi;
    }
}

TEST(ZRLength, BoundsAreStrict) {
    EXPECT_FALSE(ZRLength(283464.5F).isInvalid());  // a hundred metres
    EXPECT_TRUE(ZRLength(-283465.0F).isInvalid());
    EXPECT_TRUE(ZRLength(kInfinity).isInvalid());
    EXPECT_FALSE(ZRLength(kNaN).isInvalid());
    EXPECT_FALSE(ZRLength(0.5F).isAlmostZero(0.5F));
    EXPECT_TRUE(ZRLength(-0.25F).isAlmostZero(0.5F));
    EXPECT_FALSE(ZRLength(kNaN).isAlmostZero(0.5F));
    EXPECT_FALSE(ZRLength(0.5F).isAlmostZeroOrNegative(0.5F));
    EXPECT_TRUE(ZRLength(-7.0F).isAlmostZeroOrNegative(0.5F));
    EXPECT_FALSE(ZRLength(1.0F).isAlmostEqual(1.5F, 0.5F));
    EXPECT_TRUE(ZRLength(1.0F).isAlmostEqual(1.25F, 0.5F));
    EXPECT_TRUE(ZRLength(-0.0F).isZero() && !ZRLength(-0.0F).isNegative());
}

TEST(ZRLength, ComputesInFloatAndPassesAutoThrough) {
    EXPECT_EQ(ZRLength(1.5F) + 2L, ZRLength(3.5F));
    EXPECT_EQ(ZRLength(1.5F) - 0.5, ZRLength(1.0F));
    EXPECT_EQ(ZRLength(1.5F) * 2, ZRLength(3.0F));
    EXPECT_EQ(ZRLength(3.0F) / 2L, ZRLength(1.5F));
    EXPECT_EQ(ZRLength(16777216.0F) + 1.0, ZRLength(16777216.0F));
    EXPECT_FALSE(std::signbit(static_cast<float>(-ZRLength(-0.0F))));
    for (const float start : {kNaN, 6.0F}) {
        ZRLength length(start);
        length += ZRLength(4.0F);
        length -= ZRLength(2.0F);
        length *= 2.0F;
        length /= 4.0F;
        EXPECT_TRUE(start == 6.0F ? length == ZRLength(4.0F) : length.isAuto());
    }
}

template <class Number>
constexpr bool kCanBeAdded = requires(ZRLength length, Number number) {
    length + number;
};

// On purpose: the forms for double, float and long are equally far from an int.
TEST(ZRLength, HasNoSumWithAnInt) {
    EXPECT_FALSE(kCanBeAdded<int>);
    EXPECT_TRUE(kCanBeAdded<long>);
    EXPECT_TRUE(kCanBeAdded<double>);
}

}  // namespace
}  // namespace ZroCommon
