#include "zro/values/TransMatrix.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace ZroCommon {
namespace {

using Point = ZRPointT<float>;

const TransMatrix kTurn(0, 1, -1, 0, 0, 0);
const TransMatrix kShift(1, 0, 0, 1, 10, 20);

TEST(TransMatrix, MovesPoints) {
    const TransMatrix matrix(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(matrix.translate(10, 100), (Point{315, 426}));
    EXPECT_EQ(matrix.translate(Point{10, 100}), (Point{315, 426}));
    EXPECT_EQ(TransMatrix().translate(-1, 2), (Point{-1, 2}));
    const ZRPointT<ZRLength> lengths = matrix.translate(ZRLength(10.0F), ZRLength(100.0F));
    EXPECT_EQ(lengths, matrix.translate(ZRPointT<ZRLength>{10.0F, 100.0F}));
    EXPECT_EQ(static_cast<float>(lengths.y), 426.0F);
    const ZRLength isAuto(std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(matrix.translate(isAuto, ZRLength(1.0F)).y.isAuto());
}

TEST(TransMatrix, ProductDoesTheLeftOneFirst) {
    const Point point{1, 2};
    EXPECT_EQ((kTurn * kShift).translate(point), kShift.translate(kTurn.translate(point)));
    EXPECT_EQ((kTurn * kShift).translate(point), (Point{8, 21}));
    EXPECT_NE(kTurn * kShift, kShift * kTurn);
}

// On purpose: the two multiplications differ in their order.
TEST(TransMatrix, MultiplyingInPlaceDoesTheArgumentFirst) {
    TransMatrix matrix = kTurn;
    matrix *= kShift;
    EXPECT_EQ(matrix, kShift * kTurn);
    EXPECT_NE(matrix, kTurn * kShift);
    matrix *= matrix;
    EXPECT_EQ(matrix, kShift * kTurn * kShift * kTurn);
}

TEST(TransMatrix, KnowsTheIdentity) {
    EXPECT_TRUE(TransMatrix().isUnitMatrix());
    EXPECT_TRUE((kTurn * kTurn * kTurn * kTurn).isUnitMatrix());
    EXPECT_FALSE(TransMatrix(1, 0, 0, 1, 0, 1e-30F).isUnitMatrix());
    TransMatrix matrix = kShift;
    matrix.init();
    EXPECT_TRUE(matrix.isUnitMatrix());
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_NE(TransMatrix(nan, 0, 0, 1, 0, 0), TransMatrix(nan, 0, 0, 1, 0, 0));
}

// One without an inverse becomes the identity.
TEST(TransMatrix, InvertsMatrices) {
    for (TransMatrix singular : {TransMatrix(0, 0, 0, 0, 0, 0), TransMatrix(1, 2, 2, 4, 5, 6),
                                 TransMatrix(0, 0, 1, 1, 0, 0), TransMatrix(0, 1, 0, 1, 0, 0),
                                 TransMatrix(1, 0, 0, 0, 0, 0)}) {
        EXPECT_FALSE(singular.reverse());
        EXPECT_TRUE(singular.isUnitMatrix());
    }
    const TransMatrix cases[] = {
        TransMatrix(),
        kShift,
        kTurn,                           // without a first pivot
        TransMatrix(0, 2, 4, 0, 8, 16),  // the same, scaled and moved
        TransMatrix(0, 2, 4, 8, 16, 32),
        TransMatrix(2, 0, 0, 4, -8, 16),
        TransMatrix(2, 4, 2, 8, 1, -1),
        TransMatrix(1, 2, 4, 0, 0, 0),
        TransMatrix(1e-30F, 0, 0, 1e30F, 0, 0),
    };
    for (const TransMatrix& matrix : cases) {
        TransMatrix inverse = matrix;
        EXPECT_TRUE(inverse.reverse()) << matrix.a << " " << matrix.b << " " << matrix.c;
        const TransMatrix product = matrix * inverse;
        for (const float zero :
             {product.a - 1, product.b, product.c, product.d - 1, product.e, product.f}) {
            EXPECT_NEAR(zero, 0, 1e-6) << matrix.a << " " << matrix.b << " " << matrix.c;
        }
    }
}

}  // namespace
}  // namespace ZroCommon
