#pragma once

#include "zro/foundation/Export.h"
#include "zro/values/ZRLength.h"
#include "zro/values/ZRPointT.h"

namespace ZroCommon {

/// An affine transformation of the plane: x' = a x + c y + e, y' = b x + d y + f.
///
/// A plain value of six floats. An `auto` coordinate, like any NaN, makes `auto` ones.
class ZRO_API TransMatrix {
public:
    /// The identity.
    constexpr TransMatrix() = default;
    /// \param dx, dy  e and f; the others are a to d by what they do
    constexpr TransMatrix(float xToX, float xToY, float yToX, float yToY, float dx, float dy)
        : a(xToX), b(xToY), c(yToX), d(yToY), e(dx), f(dy) {}

    /// Back to the identity.
    void init() { *this = TransMatrix(); }

    /// This transformation, and then the other.
    TransMatrix operator*(const TransMatrix& other) const;
    /// On purpose: the other transformation first, and then this one. `m *= n` is `m = n * m`.
    TransMatrix& operator*=(const TransMatrix& other) { return *this = other * *this; }

    /// Number by number, exactly; a NaN is unequal.
    bool operator==(const TransMatrix& other) const {
        return a == other.a && b == other.b && c == other.c && d == other.d && e == other.e
               && f == other.f;
    }
    bool isUnitMatrix() const { return *this == TransMatrix(); }

    /// Becomes the inverse. \return false for a matrix without one, which becomes the identity
    bool reverse();

    /// The transformed point.
    ZRPointT<float> translate(float x, float y) const {
        return {a * x + c * y + e, b * x + d * y + f};
    }
    ZRPointT<float> translate(const ZRPointT<float>& point) const {
        return translate(point.x, point.y);
    }
    ZRPointT<ZRLength> translate(ZRLength x, ZRLength y) const {
        const auto [left, top] = translate(static_cast<float>(x), static_cast<float>(y));
        return {left, top};
    }
    ZRPointT<ZRLength> translate(const ZRPointT<ZRLength>& point) const {
        return translate(point.x, point.y);
    }

    float a = 1;
    float b = 0;
    float c = 0;
    float d = 1;
    float e = 0;
    float f = 0;
};

}  // namespace ZroCommon
