#pragma once

#include <cstdint>

namespace ZroCommon {

/// The unit of a number, or the kind of a text. 5 bits; the numbers left out are in no use, but 11
/// and 12 count as absolute lengths that nothing converts.
enum ZRValueUnitType : std::int32_t {
    ZRValueUnitNone = 0,     ///< texts of unknown kind, maps, objects, null
    ZRValueUnitNumber = 1,   ///< plain numbers
    ZRValueUnitPercent = 2,  ///< "%"
    ZRValueUnitEm = 3,       ///< "em", a relative length
    ZRValueUnitEx = 4,       ///< "ex", a relative length
    ZRValueUnitPx = 5,       ///< "px", a relative length
    ZRValueUnitCm = 6,
    ZRValueUnitMm = 7,
    ZRValueUnitIn = 8,
    ZRValueUnitPt = 9,  ///< the canonical length
    ZRValueUnitPc = 10,
    ZRValueUnitDeg = 13,  ///< the canonical angle
    ZRValueUnitRad = 14,
    ZRValueUnitGrad = 15,
    ZRValueUnitMs = 16,  ///< the canonical time
    ZRValueUnitS = 17,
    ZRValueUnitHz = 18,  ///< the canonical frequency
    ZRValueUnitKHz = 19,
    ZRValueUnitCharacter = 20,  ///< a character: the integer is its code point
    ZRValueUnitLiteral = 21,    ///< a text that stood in quotation marks
    ZRValueUnitUri = 22,        ///< a URI text
    ZRValueUnitName = 23,       ///< every name
    ZRValueUnitColor = 24,      ///< a colour: an integer RGB, or a map of its components
    ZRValueUnitTwip = 29,
    ZRValueUnitPt2 = 30,  ///< length times length, from arithmetic alone
    ZRValueUnitPt3 = 31,  ///< area times length, from arithmetic alone
};

}  // namespace ZroCommon
