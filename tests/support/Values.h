#pragma once

#include "tests/support/Test.h"
#include "zro/values/ZRNamedValueMap.h"

namespace ZroCommon::testing {

/// A value with its type: "integer 5", "real 73pt", "name auto", "string a b", "null".
inline std::string dump(const ZRValue& value) {
    switch (value.getValueType()) {
    case ZRValueTypeNull: return "null";
    case ZRValueTypeInteger: return "integer " + utf8(value.toString());
    case ZRValueTypeReal: return "real " + utf8(value.toString());
    case ZRValueTypeName: return "name " + utf8(value.toString());
    case ZRValueTypeString: return "string " + utf8(value.toString());
    case ZRValueTypeRCObject: return "object " + utf8(value.toString());
    case ZRValueTypeMap: return "map " + utf8(value.toString());
    }
    return "unknown";
}

inline ZRValue real(float number, ZRValueUnitType unit) {
    return {number, unit};
}

inline ZRValue integer(int number, ZRValueUnitType unit = ZRValueUnitNumber) {
    ZRValue value(number);
    value.setUnitType(unit);
    return value;
}

/// The value of a word: "5" and "1in" are integers, "5." and "1.in" reals, "auto" a name, "'a'" and
/// "1foo" strings, "null" none.
inline ZRValue valueOf(const std::string& word) {
    ZRValue value = word == "null" ? ZRValue() : ZRValue::parse(text(word));
    if (!value.isNumeric() || value.isColor()) {
        return value;
    }
    return word.find('.') != std::string::npos
               ? real(value.getRealValue(ZRValueUnitNone), value.getUnitType())
               : integer(value.getIntegerValue(), value.getUnitType());
}

/// A map value of two words; the map lives as long as copies of it.
inline ZRValue mapOf(ZRName name, const ZRValue& value) {
    ZRValue map(ZRPtr<ZRNamedValueMap>(new ZRNamedValueMap).get());
    map.setNamedItem(name, value);
    return map;
}

}  // namespace ZroCommon::testing
