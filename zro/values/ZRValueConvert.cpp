// What a value is worth in another unit.

#include "zro/values/ZRValue.h"

#include <cmath>
#include <limits>

#include "zro/foundation/internal/SaturatingInt.h"
#include "zro/values/ZRNamedValueMap.h"

namespace ZroCommon {
namespace {

struct Conversion {
    ZRValueUnitType from;
    ZRValueUnitType to;
    double factor;
    double divisor;

    float operator()(float number) const { return static_cast<float>(number * factor / divisor); }
};

// All but lengths, which go through points.
constexpr Conversion kConversions[] = {
    {ZRValueUnitPercent, ZRValueUnitNumber, 1, 100},
    {ZRValueUnitNumber, ZRValueUnitPercent, 100, 1},
    {ZRValueUnitRad, ZRValueUnitDeg, 57.295776, 1},
    {ZRValueUnitGrad, ZRValueUnitDeg, 0.9, 1},
    {ZRValueUnitDeg, ZRValueUnitRad, 0.017453292, 1},
    {ZRValueUnitGrad, ZRValueUnitRad, 0.015707964, 1},
    // On purpose: degrees to grads is the factor of degrees to radians, not 10/9.
    {ZRValueUnitDeg, ZRValueUnitGrad, 0.017453292, 1},
    {ZRValueUnitRad, ZRValueUnitGrad, 63.661976, 1},
    {ZRValueUnitS, ZRValueUnitMs, 1000, 1},
    {ZRValueUnitMs, ZRValueUnitS, 1, 1000},
    {ZRValueUnitKHz, ZRValueUnitHz, 1000, 1},
    {ZRValueUnitHz, ZRValueUnitKHz, 1, 1000},
};

float converted(float number, ZRValueUnitType from, ZRValueUnitType to) {
    for (const Conversion& conversion : kConversions) {
        if (conversion.from == from && conversion.to == to) {
            return conversion(number);
        }
    }
    // NaN for every pair that is not two absolute lengths.
    return ZRLength(number, from).getRealValue(to);
}

// The unit that the dimension's arithmetic is done in; the unit itself when there is no other.
ZRValueUnitType canonicalUnit(ZRValueUnitType unit) {
    switch (unit) {
    case ZRValueUnitCm:
    case ZRValueUnitMm:
    case ZRValueUnitIn:
    case ZRValueUnitPc:
    case ZRValueUnitTwip: return ZRValueUnitPt;
    case ZRValueUnitRad:
    case ZRValueUnitGrad: return ZRValueUnitDeg;
    case ZRValueUnitS: return ZRValueUnitMs;
    case ZRValueUnitKHz: return ZRValueUnitHz;
    default: return unit;
    }
}

// The value that says how long a compound is: its item "length", or else its default item.
const ZRValue& lengthItem(const ZRNamedValueMap& map) {
    const ZRValue* item = map.findNamedItem(ZRN_length);
    if (item == nullptr || item->isNull()) {
        item = map.findNamedItem(ZRN_EMPTY);
    }
    return item != nullptr ? *item : ZRValue::NULL_VALUE;
}

}  // namespace

int ZRValue::getIntegerValue() const {
    if (isReal()) {
        return internal::saturatingInt(std::floor(static_cast<double>(real()) + 0.5));
    }
    return isInteger() ? integer() : 0;
}

float ZRValue::getRealValue(ZRValueUnitType unit) const {
    if (!isNumeric()) {
        return std::numeric_limits<float>::quiet_NaN();
    }
    if (unit == getUnitType() || unit == ZRValueUnitNone) {
        return number();
    }
    return converted(number(), getUnitType(), unit);
}

ZRLength ZRValue::getLengthValue() const {
    // A map may hold itself: a second pointer at half the pace is met when the way is a circle.
    const ZRValue* value = this;
    const ZRValue* slow = this;
    for (bool slowMoves = false; value->isCompound(); slowMoves = !slowMoves) {
        value = &lengthItem(*value->map());
        if (slowMoves) {
            slow = &lengthItem(*slow->map());
        }
        if (value == slow) {
            return std::numeric_limits<float>::quiet_NaN();
        }
    }
    return value->getRealValue(ZRValueUnitPt);
}

void ZRValue::normalizeUnit() {
    const ZRValueUnitType unit = canonicalUnit(getUnitType());
    if (unit != getUnitType() && isNumeric()) {
        setReal(getRealValue(unit), unit);
    }
}

}  // namespace ZroCommon
