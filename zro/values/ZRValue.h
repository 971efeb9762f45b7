#pragma once

#include <bit>
#include <concepts>
#include <cstdint>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/values/ZRLength.h"
#include "zro/values/ZRValueUnitType.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

class ZRColor;
class ZRNamedValue;
class ZRNamedValueMap;
class ZRRCObject;

/// What a `ZRValue` is. 3 bits.
enum ZRValueType : std::int32_t {
    ZRValueTypeNull = 0,
    ZRValueTypeInteger = 1,   ///< 32 bits, signed
    ZRValueTypeReal = 2,      ///< a 32-bit float
    ZRValueTypeName = 3,      ///< a `ZRNameEnum`
    ZRValueTypeString = 4,    ///< a text of the value's own
    ZRValueTypeRCObject = 5,  ///< a shared, counted object
    ZRValueTypeMap = 7,       ///< a shared `ZRNamedValueMap`: a compound value
};

/// A tagged value in two machine words: null, a number with a unit, a name, a text, a shared object
/// or a map of named values.
///
/// Copies are independent but for objects and maps, which are shared and counted: a change to a map
/// shows in every copy. Nothing here throws, but for `std::bad_alloc` without memory. What has no
/// meaning is null, 0, NaN or the empty text. One thread at a time.
class ZRO_API ZRValue {
public:
    constexpr ZRValue() noexcept = default;
    /// An integer without a unit (`ZRValueUnitNumber`).
    ZRValue(int number) : ZRValue(ZRValueTypeInteger, ZRValueUnitNumber, wordOf(number)) {}
    /// The same; of the number its low 32 bits.
    ZRValue(long number) : ZRValue(static_cast<int>(number)) {}
    ZRValue(float number, ZRValueUnitType unit)
        : ZRValue(ZRValueTypeReal, unit, std::bit_cast<std::uint32_t>(number)) {}
    /// A real in points; NaN for an `auto` length.
    ZRValue(ZRLength length) : ZRValue(static_cast<float>(length), ZRValueUnitPt) {}
    ZRValue(ZRNameEnum name) : ZRValue(ZRValueTypeName, ZRValueUnitName, wordOf(name)) {}
    ZRValue(ZRName name) : ZRValue(static_cast<ZRNameEnum>(name)) {}
    /// The name "true" or "false". Takes nothing but `bool`, or every pointer would be "true".
    template <std::same_as<bool> Truth>
    ZRValue(Truth truth) : ZRValue(truth ? ZRN_true : ZRN_false) {}
    /// A text, copied.
    ZRValue(const UnicodeString& text, ZRValueUnitType unit = ZRValueUnitNone);
    /// One reference on the object; null for a null pointer.
    ZRValue(ZRRCObject* object);
    ZRValue(ZRNamedValueMap* map);
    /// An integer RGB of the unit colour. What has another form beside it becomes a map with the
    /// RGB as its default item and an item named like the form.
    ZRValue(const ZRColor& color);

    ZRValue(const ZRValue& other) { copyFrom(other); }
    ZRValue(ZRValue&& other) noexcept { takeFrom(other); }
    ~ZRValue() { releasePayload(); }
    ZRValue& operator=(const ZRValue& other) {
        if (m_holding == Holding::Plain && other.m_holding == Holding::Plain) {
            takeWords(other);
            return *this;
        }
        return *this = ZRValue(other);  // the copy first: `other` may be an item of our own map
    }
    ZRValue& operator=(ZRValue&& other) noexcept {
        if (this != &other) {
            const ZRValue old(static_cast<ZRValue&&>(*this));
            takeFrom(other);
        }
        return *this;
    }

    /// What functions that fail to make a value return a copy of. Ready before any ordinary static
    /// initialiser runs.
    static const ZRValue NULL_VALUE;

    ZRValueType getValueType() const { return static_cast<ZRValueType>(m_type); }
    /// Replaces the type alone; the payload is not converted. A payload that cannot be read as the
    /// new type reads as 0, the empty text or a null pointer.
    void setValueType(ZRValueType type);
    ZRValueUnitType getUnitType() const { return static_cast<ZRValueUnitType>(m_unit); }
    /// Replaces the unit alone; the number is not converted.
    void setUnitType(ZRValueUnitType unit) { m_unit = static_cast<std::uint8_t>(unit & 31); }

    /// The name of a name value, else the empty name.
    ZRName getNameValue() const { return isName() ? nameOf(word()) : ZRN_EMPTY; }
    /// The name of a name value; the text of any other is interned.
    ZRName toZRName() const;
    /// The text of a name or a string, else the empty text.
    UnicodeString getStringValue() const;
    /// An integer as it stands, a real rounded (half up) to what an `int` can hold, else 0.
    int getIntegerValue() const;
    /// The number in the unit asked for (`ZRValueUnitNone`: as it stands); NaN where there is no
    /// such conversion, and for what is no number.
    float getRealValue(ZRValueUnitType unit) const;
    /// The points of an absolute length; of a map its item "length" or else its default item.
    /// Everything else is `auto`, the number 0 without a unit too.
    ZRLength getLengthValue() const;
    /// The colour of a value of the unit colour; everything else, names too, is the invalid colour.
    ZRColor getColorValue() const;
    /// The object or map, null for any other type. No reference is added.
    ZRRCObject* getRCObject() const {
        return m_type == ZRValueTypeRCObject || m_type == ZRValueTypeMap ? object() : nullptr;
    }
    /// The map, null for any other type. No reference is added.
    ZRNamedValueMap* getNamedValueMap() const { return isCompound() ? map() : nullptr; }

    bool isNull() const { return m_type == ZRValueTypeNull; }
    /// Null, the empty name or the empty text.
    bool isEmpty() const;
    bool isInteger() const { return m_type == ZRValueTypeInteger; }
    bool isReal() const { return m_type == ZRValueTypeReal; }
    bool isName() const { return m_type == ZRValueTypeName; }
    bool isString() const { return m_type == ZRValueTypeString; }
    /// An integer or a real, whatever the unit: characters and integer colours too.
    bool isNumeric() const { return isInteger() || isReal(); }
    bool isNumber() const { return isNumeric() && m_unit == ZRValueUnitNumber; }
    bool isPercentage() const { return isNumeric() && m_unit == ZRValueUnitPercent; }
    bool isRelativeLength() const {
        return isNumeric() && m_unit >= ZRValueUnitEm && m_unit <= ZRValueUnitPx;
    }
    bool isAbsoluteLength() const {
        return isNumeric()
               && ((m_unit >= ZRValueUnitCm && m_unit <= 12) || m_unit == ZRValueUnitTwip);
    }
    bool isAngle() const {
        return isNumeric() && m_unit >= ZRValueUnitDeg && m_unit <= ZRValueUnitGrad;
    }
    bool isCharacter() const { return isInteger() && m_unit == ZRValueUnitCharacter; }
    /// Numeric and no character.
    bool isNumericalValue() const { return isNumeric() && m_unit != ZRValueUnitCharacter; }
    bool isUnknownString() const { return isString() && m_unit == ZRValueUnitNone; }
    bool isLiteralString() const { return isString() && m_unit == ZRValueUnitLiteral; }
    bool isUriString() const { return isString() && m_unit == ZRValueUnitUri; }
    /// A map that is there.
    bool isCompound() const { return m_type == ZRValueTypeMap && m_holding == Holding::Map; }
    bool isColor() const { return m_unit == ZRValueUnitColor && (isInteger() || isCompound()); }
    bool isRCObject() const { return m_type == ZRValueTypeRCObject || isCompound(); }
    /// The name "true" or "yes". What is neither true nor false is both false.
    bool isTrue() const;
    /// The name "false" or "no".
    bool isFalse() const;

    /// Brings a number to the canonical unit of its dimension: pt, deg, ms or Hz, then as a real.
    /// Everything else stays.
    void normalizeUnit();

    // Arithmetic without a meaning gives null, and null goes on.

    /// Equal units and types are added as they stand (1cm + 1cm is 2cm, integers wrap); others in
    /// canonical units. Different dimensions give null.
    ZRValue& operator+=(const ZRValue& other);
    ZRValue& operator-=(const ZRValue& other);
    /// Always a real. A percentage counts as a number; lengths multiply up to `ZRValueUnitPt3`.
    ZRValue& operator*=(const ZRValue& other);
    /// Always a real; a number divided by a dimension is null.
    ZRValue& operator/=(const ZRValue& other);
    /// As addition; the sign of the dividend. The remainder of an integer by 0 is a processor
    /// fault, which the caller has to prevent.
    ZRValue& operator%=(const ZRValue& other);
    ZRValue operator+(const ZRValue& other) const { return ZRValue(*this) += other; }
    ZRValue operator-(const ZRValue& other) const { return ZRValue(*this) -= other; }
    ZRValue operator*(const ZRValue& other) const { return ZRValue(*this) *= other; }
    ZRValue operator/(const ZRValue& other) const { return ZRValue(*this) /= other; }
    ZRValue operator%(const ZRValue& other) const { return ZRValue(*this) %= other; }
    ZRValue operator-() const;
    ZRValue abs() const;

    // Of numbers without a unit; null for all others. Reals stay reals.
    ZRValue floor() const;
    ZRValue ceiling() const;
    ZRValue round() const;

    /// Numbers compare in canonical units, a string and a name by their texts, objects and maps by
    /// identity; strings of different units are never equal.
    bool operator==(const ZRValue& other) const;
    template <std::same_as<ZRName> Name>
    bool operator==(Name name) const {
        return *this == ZRValue(name);
    }
    /// Names compare by number. This is no strict weak ordering over values of mixed types: never
    /// sort by it. A NaN makes both `<=` and `>=` true.
    bool operator<(const ZRValue& other) const;
    bool operator<=(const ZRValue& other) const { return !(other < *this); }
    bool operator>(const ZRValue& other) const { return other < *this; }
    bool operator>=(const ZRValue& other) const { return !(*this < other); }

    /// Makes a map of anything that is none; the old value becomes its item of the empty name.
    void makeCompound();
    /// Sets an item, after `makeCompound`. Every copy that shares the map sees it.
    void setNamedItem(ZRName name, const ZRValue& value);
    void setNamedItem(const ZRNamedValue& item);
    /// An item, null when there is none. What is no map has itself as its item of the empty name.
    ZRValue getNamedItem(ZRName name) const;
    void removeNamedItem(ZRName name);

    /// What a whole text stands for: "12pt" is a number with a unit, "auto" a name, "'a b'" a
    /// literal string, "#F00" a colour, "-3" an integer. Any other text, the empty one too, is a
    /// string of unit none with the whole text: the unknown string.
    static ZRValue parse(const UnicodeString& text);
    /// The same for quoted strings and names alone; "12pt" stays an unknown string.
    static ZRValue parseNonNumeric(const UnicodeString& text);
    /// A colour: "#F00", "rgb(255, 0%, 0)", a form behind it as `rgb-icc(...)`; a name as it
    /// stands, unresolved; else the unknown string. \param extended  takes "icc-color(...)" too,
    /// alone and behind a colour
    static ZRValue parseColor(const UnicodeString& text, bool extended);

    // Links: what they say behind "#", as a compound value.

    /// "file.pdf#page=3&view=fit": the items "uri", "nameddest", "page", "last-page", "view",
    /// "zoom", "left", "top", "width" and "height". Without a destination, "page" is 1 and "view"
    /// is "xyz" unless they are given. Null when the text begins with "#".
    static ZRValue parsePDFOpenParameters(const UnicodeString& text);
    /// The same for an XLink, where a fragment "#name" is a destination and the text may begin with
    /// "#". Null for the empty text.
    static ZRValue parseXlinkHref(const UnicodeString& text);
    /// A destination of this document: a name, a page number, or neither, with parameters behind
    /// "#" as above and no defaults. Null when nothing is understood. \param flags  has no effect
    static ZRValue parseInternalDestination(const UnicodeString& text, int flags);
    /// How a destination is shown: a name from "fit" to "fitv", or one from "xyz" to "xyz-top" with
    /// the item "zoom" (100 for "100%") beside it; "xyz-top" for all else.
    static ZRValue parseDestinationType(const UnicodeString& text);
    /// "file.xls#sheet=1": the items "sheet" and "chart", numbers from 0 up. Null without "#".
    static ZRValue parseExcelOpenParameters(const UnicodeString& text);
    /// "uri#key=value&...": strings by their keys, both unescaped, and the URI as the default item.
    /// A text without "#" is a string.
    static ZRValue parseUriFragmentParameters(const UnicodeString& text, bool lowerKeys);

    /// The text of a name or string, "12pt" for a number, "#FF0000" for a colour, "{name: value;
    /// ...}" for a map with "." for the empty name, "##" and the class for an object; null is
    /// empty. Numbers have six digits.
    UnicodeString toString() const;
    UnicodeString toValueText() const { return toString(); }
    operator UnicodeString() const { return toString(); }

private:
    friend class ZRNamedValue;

    // What the payload is, whatever `setValueType` has said since.
    enum class Holding : std::uint8_t { Plain, String, Object, Map };

    union Payload {
        std::uint32_t word;  // Plain: an integer, the bits of a float, or a name's number
        UnicodeString* string;
        ZRRCObject* object;
        ZRNamedValueMap* map;
    };

    ZRValue(ZRValueType type, ZRValueUnitType unit, std::uint32_t word)
        : m_payload{word},
          m_type(static_cast<std::uint8_t>(type)),
          m_unit(static_cast<std::uint8_t>(unit & 31)) {}

    static std::uint32_t wordOf(std::int32_t number) { return static_cast<std::uint32_t>(number); }
    static ZRNameEnum nameOf(std::uint32_t word) { return static_cast<ZRNameEnum>(word); }

    std::uint32_t word() const { return m_holding == Holding::Plain ? m_payload.word : 0; }
    int integer() const { return static_cast<int>(word()); }
    float real() const { return std::bit_cast<float>(word()); }
    /// The number of a numeric value as a float.
    float number() const { return isReal() ? real() : static_cast<float>(integer()); }
    /// The text of a name or string, else the empty one.
    const UnicodeString& text() const;
    ZRRCObject* object() const;
    ZRNamedValueMap* map() const { return m_payload.map; }

    void setInteger(std::uint32_t number);
    void setReal(float number, ZRValueUnitType unit);
    ZRValue& becomeNull();
    /// The first steps of + - and %: this and a copy of the other in one unit and of one type.
    /// False when null is the result.
    bool alignWith(const ZRValue& other, ZRValue& right);
    bool isTextPair(const ZRValue& other) const;
    bool equalsAlike(const ZRValue& other) const;
    bool lessAlike(const ZRValue& other) const;

    void takeWords(const ZRValue& other) {
        m_payload = other.m_payload;
        m_type = other.m_type;
        m_unit = other.m_unit;
        m_holding = other.m_holding;
        m_itemName = other.m_itemName;
    }
    void takeFrom(ZRValue& other) {
        takeWords(other);
        other.m_holding = Holding::Plain;
        other.m_type = ZRValueTypeNull;
        other.m_unit = ZRValueUnitNone;
    }
    void copyFrom(const ZRValue& other) {
        takeWords(other);
        if (m_holding != Holding::Plain) {
            ownPayload();
        }
    }
    void releasePayload() {
        if (m_holding != Holding::Plain) {
            freePayload();
        }
    }
    void ownPayload();
    void freePayload();

    Payload m_payload{0};
    std::uint8_t m_type = ZRValueTypeNull;
    std::uint8_t m_unit = ZRValueUnitNone;
    Holding m_holding = Holding::Plain;
    ZRNameEnum m_itemName = ZRN_EMPTY;  // of a ZRNamedValue; goes along in copies, unseen
};

static_assert(sizeof(ZRValue) == 2 * sizeof(void*), "a value is two machine words");

}  // namespace ZroCommon
