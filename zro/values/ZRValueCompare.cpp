#include "zro/values/ZRValue.h"

#include <functional>

#include "zro/foundation/ZRRCObject.h"
#include "zro/values/ZRColor.h"

namespace ZroCommon {
namespace {

// A number as comparisons take it.
struct Magnitude {
    ZRValueUnitType unit;
    float number;
};

Magnitude magnitudeOf(ZRValue value) {
    value.normalizeUnit();
    return {value.getUnitType(), value.getRealValue(ZRValueUnitNone)};
}

}  // namespace

bool ZRValue::operator==(const ZRValue& other) const {
    if (m_type == other.m_type && m_unit == other.m_unit) {
        return equalsAlike(other);
    }
    if (isNumeric() && other.isNumeric()) {
        const Magnitude left = magnitudeOf(*this);
        const Magnitude right = magnitudeOf(other);
        return left.unit == right.unit && left.number == right.number;
    }
    return isTextPair(other) && text() == other.text();
}

bool ZRValue::operator<(const ZRValue& other) const {
    if (m_type == other.m_type && m_unit == other.m_unit) {
        return lessAlike(other);
    }
    if (isNumeric() && other.isNumeric()) {
        const Magnitude left = magnitudeOf(*this);
        const Magnitude right = magnitudeOf(other);
        return left.unit == right.unit ? left.number < right.number : left.unit < right.unit;
    }
    if (isTextPair(other)) {
        return text() < other.text();
    }
    return m_type != other.m_type ? m_type < other.m_type : m_unit < other.m_unit;
}

// A string beside a name, either way round.
bool ZRValue::isTextPair(const ZRValue& other) const {
    return (isString() && other.isName()) || (isName() && other.isString());
}

// Both of one type and one unit.
bool ZRValue::equalsAlike(const ZRValue& other) const {
    switch (m_type) {
    case ZRValueTypeNull: return true;
    case ZRValueTypeReal: return real() == other.real();
    case ZRValueTypeString: return text() == other.text();
    case ZRValueTypeMap:
        if (isColor() && other.isColor()) {
            return getColorValue() == other.getColorValue();
        }
        [[fallthrough]];
    case ZRValueTypeRCObject: return object() == other.object();
    default: return integer() == other.integer();
    }
}

bool ZRValue::lessAlike(const ZRValue& other) const {
    switch (m_type) {
    case ZRValueTypeNull: return false;
    case ZRValueTypeReal: return real() < other.real();
    case ZRValueTypeString: return text() < other.text();
    case ZRValueTypeRCObject:
    case ZRValueTypeMap: return std::less<>()(object(), other.object());
    default: return integer() < other.integer();
    }
}

}  // namespace ZroCommon
