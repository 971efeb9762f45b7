#pragma once

#include "zro/values/ZRValue.h"

namespace ZroCommon {

/// A value that bears a name, in no more room than a value: what a `ZRNamedValueMap` holds.
class ZRO_API ZRNamedValue : public ZRValue {
public:
    constexpr ZRNamedValue() noexcept = default;
    ZRNamedValue(const ZRValue& value, ZRName name) : ZRValue(value) { setName(name); }

    /// Null, with the empty name.
    static const ZRNamedValue NULL_VALUE;

    ZRName getName() const { return m_itemName; }
    void setName(ZRName name) { m_itemName = name; }

    /// The plain value, which has no name.
    ZRValue getValue() const {
        ZRValue value(*this);
        value.m_itemName = ZRN_EMPTY;
        return value;
    }
    /// Replaces the value and keeps the name.
    void setValue(const ZRValue& value) {
        const ZRName name = getName();
        ZRValue::operator=(value);
        setName(name);
    }
};

static_assert(sizeof(ZRNamedValue) == sizeof(ZRValue), "a name costs a value nothing");

}  // namespace ZroCommon
