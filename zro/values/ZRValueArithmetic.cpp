#include "zro/values/ZRValue.h"

#include <cmath>
#include <optional>

namespace ZroCommon {
namespace {

// An operand of a multiplication or division.
struct Factor {
    float number;
    ZRValueUnitType unit;
};

Factor factorOf(ZRValue value) {
    value.normalizeUnit();
    const float number = value.getRealValue(ZRValueUnitNone);
    if (value.isPercentage()) {
        return {number / 100, ZRValueUnitNumber};
    }
    return {number, value.getUnitType()};
}

using MaybeUnit = std::optional<ZRValueUnitType>;

MaybeUnit unitOfProduct(ZRValueUnitType left, ZRValueUnitType right) {
    if (left == ZRValueUnitNumber) {
        return right;
    }
    if (right == ZRValueUnitNumber) {
        return left;
    }
    if (left == ZRValueUnitPt && right == ZRValueUnitPt) {
        return ZRValueUnitPt2;
    }
    if ((left == ZRValueUnitPt && right == ZRValueUnitPt2)
        || (left == ZRValueUnitPt2 && right == ZRValueUnitPt)) {
        return ZRValueUnitPt3;
    }
    return std::nullopt;
}

MaybeUnit unitOfQuotient(ZRValueUnitType left, ZRValueUnitType right) {
    if (right == ZRValueUnitNumber) {
        return left;
    }
    if (left == ZRValueUnitNumber) {
        return std::nullopt;
    }
    if (left == right) {
        return ZRValueUnitNumber;
    }
    if (left == ZRValueUnitPt3 && right == ZRValueUnitPt) {
        return ZRValueUnitPt2;
    }
    if ((left == ZRValueUnitPt2 && right == ZRValueUnitPt)
        || (left == ZRValueUnitPt3 && right == ZRValueUnitPt2)) {
        return ZRValueUnitPt;
    }
    return std::nullopt;
}

}  // namespace

void ZRValue::setInteger(std::uint32_t number) {
    releasePayload();
    m_payload.word = number;
    m_type = ZRValueTypeInteger;
}

void ZRValue::setReal(float number, ZRValueUnitType unit) {
    releasePayload();
    m_payload.word = std::bit_cast<std::uint32_t>(number);
    m_type = ZRValueTypeReal;
    m_unit = static_cast<std::uint8_t>(unit);
}

bool ZRValue::alignWith(const ZRValue& other, ZRValue& right) {
    if (!isNumeric() || !other.isNumeric()) {
        return false;
    }
    right = other;
    if (m_type == right.m_type && m_unit == right.m_unit) {
        return true;
    }
    normalizeUnit();
    right.normalizeUnit();
    if (m_unit != right.m_unit) {
        return false;
    }
    if (m_type != right.m_type) {
        ZRValue& narrow = isInteger() ? *this : right;
        narrow.setReal(narrow.number(), narrow.getUnitType());
    }
    return true;
}

ZRValue& ZRValue::operator+=(const ZRValue& other) {
    ZRValue right;
    if (!alignWith(other, right)) {
        return becomeNull();
    }
    if (isInteger()) {
        setInteger(word() + right.word());
    } else {
        setReal(real() + right.real(), getUnitType());
    }
    return *this;
}

ZRValue& ZRValue::operator-=(const ZRValue& other) {
    ZRValue right;
    if (!alignWith(other, right)) {
        return becomeNull();
    }
    if (isInteger()) {
        setInteger(word() - right.word());
    } else {
        setReal(real() - right.real(), getUnitType());
    }
    return *this;
}

ZRValue& ZRValue::operator%=(const ZRValue& other) {
    ZRValue right;
    if (!alignWith(other, right)) {
        return becomeNull();
    }
    if (isInteger()) {
        // On purpose: no guard against 0; that is the caller's.
        setInteger(wordOf(integer() % right.integer()));  // NOLINT(clang-analyzer-core.DivideZero)
    } else {
        setReal(std::fmod(real(), right.real()), getUnitType());
    }
    return *this;
}

ZRValue& ZRValue::operator*=(const ZRValue& other) {
    if (!isNumeric() || !other.isNumeric()) {
        return becomeNull();
    }
    const Factor left = factorOf(*this);
    const Factor right = factorOf(other);
    const MaybeUnit unit = unitOfProduct(left.unit, right.unit);
    if (!unit) {
        return becomeNull();
    }
    setReal(left.number * right.number, *unit);
    return *this;
}

ZRValue& ZRValue::operator/=(const ZRValue& other) {
    if (!isNumeric() || !other.isNumeric()) {
        return becomeNull();
    }
    const Factor left = factorOf(*this);
    const Factor right = factorOf(other);
    const MaybeUnit unit = unitOfQuotient(left.unit, right.unit);
    if (!unit) {
        return becomeNull();
    }
    setReal(left.number / right.number, *unit);
    return *this;
}

ZRValue ZRValue::operator-() const {
    if (!isNumeric()) {
        return {};
    }
    ZRValue result(*this);
    if (isInteger()) {
        result.setInteger(0U - word());
    } else {
        result.setReal(-0.0F - real(), getUnitType());
    }
    return result;
}

ZRValue ZRValue::abs() const {
    if (isInteger() && integer() < 0) {
        return -*this;
    }
    if (!isNumeric()) {
        return {};
    }
    ZRValue result(*this);
    if (isReal()) {
        result.setReal(std::fabs(real()), getUnitType());
    }
    return result;
}

ZRValue ZRValue::floor() const {
    if (!isNumber()) {
        return {};
    }
    return isInteger() ? *this : ZRValue(std::floor(real()), ZRValueUnitNumber);
}

ZRValue ZRValue::ceiling() const {
    if (!isNumber()) {
        return {};
    }
    return isInteger() ? *this : ZRValue(std::ceil(real()), ZRValueUnitNumber);
}

ZRValue ZRValue::round() const {
    if (!isNumber()) {
        return {};
    }
    // The sum is a float's: 8388609 gives 8388610.
    return isInteger() ? *this : ZRValue(std::floor(real() + 0.5F), ZRValueUnitNumber);
}

}  // namespace ZroCommon
