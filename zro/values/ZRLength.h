#pragma once

#include <cmath>

#include "zro/foundation/Export.h"
#include "zro/values/ZRValueUnitType.h"

namespace ZroCommon {

class ZRValue;

/// A length in points (1/72 inch), as one float. NaN means `auto`.
class ZRO_API ZRLength {
public:
    ZRLength() = default;
    ZRLength(float points) : m_points(points) {}

    /// Units are cm, mm, in, pt, pc and twip; any other gives `auto`.
    ZRLength(float number, ZRValueUnitType unit);

    /// `value.getLengthValue()`: `auto` for what is no absolute length.
    ZRLength(const ZRValue& value);

    operator float() const { return m_points; }

    /// The length in another absolute unit; NaN for a unit that is none.
    float getRealValue(ZRValueUnitType unit) const;

    /// Pixels at a resolution in dots per inch, rounded half away from zero. What no `int` can hold
    /// becomes the nearest one, and `auto` is 0.
    int getPixelCount(float dpi) const;

    bool isZero() const { return m_points == 0.0F; }
    bool isNegative() const { return m_points < 0.0F; }
    /// Strictly between -eps and eps.
    bool isAlmostZero(float eps) const { return -eps < m_points && m_points < eps; }
    bool isAlmostZeroOrNegative(float eps) const { return m_points < eps; }
    /// The difference lies strictly between -eps and eps.
    bool isAlmostEqual(ZRLength other, float eps) const {
        return ZRLength(m_points - other.m_points).isAlmostZero(eps);
    }
    bool isAuto() const { return std::isnan(m_points); }
    /// Beyond 100 metres in either direction; `auto` is not invalid.
    bool isInvalid() const { return std::fabs(m_points) > kLimit; }

    // An `auto` length stays what it is.
    ZRLength& operator+=(ZRLength other) { return isAuto() ? *this : *this = *this + other; }
    ZRLength& operator-=(ZRLength other) { return isAuto() ? *this : *this = *this - other; }
    ZRLength& operator*=(float factor) { return isAuto() ? *this : *this = *this * factor; }
    ZRLength& operator/=(float divisor) { return isAuto() ? *this : *this = *this / divisor; }

    ZRLength operator+() const { return *this; }
    ZRLength operator-() const { return -0.0F - m_points; }

    // The right operand becomes a float first. On purpose: + and - have no form for `int`.
    ZRLength operator+(float other) const { return m_points + other; }
    ZRLength operator+(double other) const { return *this + static_cast<float>(other); }
    ZRLength operator+(long other) const { return *this + static_cast<float>(other); }
    ZRLength operator-(float other) const { return m_points - other; }
    ZRLength operator-(double other) const { return *this - static_cast<float>(other); }
    ZRLength operator-(long other) const { return *this - static_cast<float>(other); }
    ZRLength operator*(float factor) const { return m_points * factor; }
    ZRLength operator*(double factor) const { return *this * static_cast<float>(factor); }
    ZRLength operator*(int factor) const { return *this * static_cast<float>(factor); }
    ZRLength operator*(long factor) const { return *this * static_cast<float>(factor); }
    ZRLength operator/(float divisor) const { return m_points / divisor; }
    ZRLength operator/(double divisor) const { return *this / static_cast<float>(divisor); }
    ZRLength operator/(int divisor) const { return *this / static_cast<float>(divisor); }
    ZRLength operator/(long divisor) const { return *this / static_cast<float>(divisor); }

private:
    static constexpr float kLimit = 2.8346457F * 100000;

    float m_points = 0.0F;
};

}  // namespace ZroCommon
