#include "zro/values/ZRValue.h"

#include <cmath>
#include <limits>
#include <type_traits>

#include "tests/support/Probe.h"
#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

std::string predicates(const ZRValue& value) {
    const Rows<const char*, bool (ZRValue::*)() const> all = {
        {"Null", &ZRValue::isNull},
        {"Empty", &ZRValue::isEmpty},
        {"Integer", &ZRValue::isInteger},
        {"Real", &ZRValue::isReal},
        {"Name", &ZRValue::isName},
        {"String", &ZRValue::isString},
        {"Numeric", &ZRValue::isNumeric},
        {"Number", &ZRValue::isNumber},
        {"Percentage", &ZRValue::isPercentage},
        {"RelativeLength", &ZRValue::isRelativeLength},
        {"AbsoluteLength", &ZRValue::isAbsoluteLength},
        {"Angle", &ZRValue::isAngle},
        {"Character", &ZRValue::isCharacter},
        {"NumericalValue", &ZRValue::isNumericalValue},
        {"UnknownString", &ZRValue::isUnknownString},
        {"LiteralString", &ZRValue::isLiteralString},
        {"UriString", &ZRValue::isUriString},
        {"Compound", &ZRValue::isCompound},
        {"Color", &ZRValue::isColor},
        {"RCObject", &ZRValue::isRCObject},
        {"True", &ZRValue::isTrue},
        {"False", &ZRValue::isFalse}};
    std::string result;
    for (const auto& [name, holds] : all) {
        result += (value.*holds)() ? (result.empty() ? "" : " ") + std::string(name) : "";
    }
    return result;
}

TEST(ZRValue, TellsItsKind) {
    ZRValue colourMap = mapOf(ZRN_rgb, 1);
    colourMap.setUnitType(ZRValueUnitColor);
    for (const auto& [value, kinds] : Rows<ZRValue, const char*>{
             {ZRValue(), "Null Empty"},
             {ZRValue(5), "Integer Numeric Number NumericalValue"},
             {ZRValue(5L), "Integer Numeric Number NumericalValue"},
             {integer(5, ZRValueUnitEx), "Integer Numeric RelativeLength NumericalValue"},
             {integer('x', ZRValueUnitCharacter), "Integer Numeric Character"},
             {integer(5, ZRValueUnitColor), "Integer Numeric NumericalValue Color"},
             {real(5, ZRValueUnitColor), "Real Numeric NumericalValue"},
             {real(5, ZRValueUnitPercent), "Real Numeric Percentage NumericalValue"},
             {real(5, static_cast<ZRValueUnitType>(12)),
              "Real Numeric AbsoluteLength NumericalValue"},
             {real(5, ZRValueUnitTwip), "Real Numeric AbsoluteLength NumericalValue"},
             {real(5, ZRValueUnitPt2), "Real Numeric NumericalValue"},
             {real(5, ZRValueUnitGrad), "Real Numeric Angle NumericalValue"},
             {ZRValue(ZRLength(5)), "Real Numeric AbsoluteLength NumericalValue"},
             {ZRValue(ZRN_EMPTY), "Empty Name"},
             {ZRValue(ZRN_yes), "Name True"},
             {ZRValue(true), "Name True"},
             {ZRValue(ZRN_no), "Name False"},
             {ZRValue(false), "Name False"},
             {ZRValue(ZRN_auto), "Name"},
             {ZRValue(u""), "Empty String UnknownString"},
             {ZRValue(u"true"), "String UnknownString"},
             {ZRValue(u"x", ZRValueUnitLiteral), "String LiteralString"},
             {ZRValue(u"x", ZRValueUnitUri), "String UriString"},
             {ZRValue(new Probe), "RCObject"},
             {ZRValue(static_cast<ZRRCObject*>(nullptr)), "Null Empty"},
             {ZRValue(static_cast<ZRNamedValueMap*>(nullptr)), "Null Empty"},
             {mapOf(ZRN_rgb, 1), "Compound RCObject"},
             {colourMap, "Compound Color RCObject"},
         }) {
        EXPECT_EQ(predicates(value), kinds) << "for: " << dump(value);
    }
}

TEST(ZRValue, PointersAreNoTruthValues) {
    static_assert(!std::is_constructible_v<ZRValue, void*>);
    static_assert(!std::is_constructible_v<ZRValue, const int*>);
    EXPECT_EQ(dump(ZRValue("x")), "string x");
    EXPECT_EQ(dump(ZRValue(0x1'0000'0005L)), "integer 5") << "a long is cut to its low bits";
}

TEST(ZRValue, SharesAndCountsObjects) {
    const ZRPtr<Probe> probe(new Probe);
    {
        const ZRValue first(probe.get());
        ZRValue second(first);
        EXPECT_EQ(probe->getRefCount(), 3);
        second = ZRValue(1);
        EXPECT_EQ(probe->getRefCount(), 2);
        second = first;
        EXPECT_EQ(second.getRCObject(), probe.get());
    }
    EXPECT_EQ(probe->getRefCount(), 1);
    ZRValue map = mapOf(ZRN_length, ZRValue(u"a text too long for the string object itself"));
    const ZRValue copy(map);
    map = *map.getNamedValueMap()->findNamedItem(ZRN_length);
    EXPECT_EQ(copy.getNamedItem(ZRN_length), map);
    copy.getNamedValueMap()->setNamedItem(ZRN_length, ZRValue(2));
    EXPECT_EQ(dump(map), "string a text too long for the string object itself");
    EXPECT_EQ(dump(copy), "map {length: 2}");
}

TEST(ZRValue, ReplacesTheTypeWithoutConverting) {
    ZRValue number(1065353216);  // the bits of 1.0F
    number.setValueType(ZRValueTypeReal);
    number.setUnitType(ZRValueUnitCm);
    EXPECT_EQ(dump(number), "real 1cm");
    for (const ZRValueType type : {ZRValueTypeString, ZRValueTypeRCObject, ZRValueTypeMap}) {
        number.setValueType(type);
        EXPECT_EQ(utf8(ZRValue(number).toString()), "");
    }
    ZRValue text(u"text");
    text.setValueType(ZRValueTypeInteger);
    EXPECT_EQ(text.getIntegerValue(), 0);
    text.setValueType(ZRValueTypeMap);
    EXPECT_EQ(text.getNamedValueMap(), nullptr);
    const ZRValue map = mapOf(ZRN_length, 1);
    ZRValue object(map.getRCObject());
    EXPECT_EQ(object.getNamedValueMap(), nullptr);
    object.setValueType(ZRValueTypeMap);
    EXPECT_EQ(object, map);
}

TEST(ZRValue, RoundsRealsHalfUpIntoTheRangeOfIntegers) {
    for (const auto& [number, expected] : Rows<float, int>{
             {1.5F, 2},
             {-1.5F, -1},
             {0.49999997F, 0},
             {8388609.0F, 8388609},
             {3e9F, std::numeric_limits<int>::max()},
             {-3e9F, std::numeric_limits<int>::min()},
             {kInfinity, std::numeric_limits<int>::max()},
             {kNaN, 0},
         }) {
        EXPECT_EQ(real(number, ZRValueUnitNumber).getIntegerValue(), expected) << number;
    }
    EXPECT_EQ(ZRValue(ZRN_auto).getIntegerValue(), 0);
    EXPECT_EQ(ZRValue(u"5").getIntegerValue(), 0);
}

TEST(ZRValue, ConvertsWithinADimension) {
    for (const auto& [number, from, to, expected] :
         Rows<float, ZRValueUnitType, ZRValueUnitType, float>{
             {50, ZRValueUnitPercent, ZRValueUnitNumber, 0.5F},
             {0.5F, ZRValueUnitNumber, ZRValueUnitPercent, 50},
             {1, ZRValueUnitIn, ZRValueUnitPc, 6},
             {1, ZRValueUnitRad, ZRValueUnitDeg, 57.295776F},
             {100, ZRValueUnitGrad, ZRValueUnitDeg, 90},
             {180, ZRValueUnitDeg, ZRValueUnitRad, 3.1415926F},
             {200, ZRValueUnitGrad, ZRValueUnitRad, 3.1415927F},
             {1, ZRValueUnitRad, ZRValueUnitGrad, 63.661976F},
             {2, ZRValueUnitS, ZRValueUnitMs, 2000},
             {500, ZRValueUnitMs, ZRValueUnitS, 0.5F},
             {2, ZRValueUnitKHz, ZRValueUnitHz, 2000},
             {500, ZRValueUnitHz, ZRValueUnitKHz, 0.5F},
             {7, ZRValueUnitEm, ZRValueUnitEm, 7},
             {7, ZRValueUnitEm, ZRValueUnitNone, 7},
         }) {
        EXPECT_FLOAT_EQ(real(number, from).getRealValue(to), expected) << from << " to " << to;
    }
    EXPECT_TRUE(std::isnan(ZRValue(ZRLength(1)).getRealValue(ZRValueUnitPercent)));
    EXPECT_TRUE(std::isnan(real(1, ZRValueUnitEm).getRealValue(ZRValueUnitPt)));
    EXPECT_TRUE(std::isnan(ZRValue(1).getRealValue(ZRValueUnitPt)));
    EXPECT_TRUE(std::isnan(ZRValue(ZRN_auto).getRealValue(ZRValueUnitNone)));
}

// On purpose: the factor from degrees to grads is the one to radians.
TEST(ZRValue, DegreesToGradsHaveTheFactorOfRadians) {
    EXPECT_EQ(real(100, ZRValueUnitDeg).getRealValue(ZRValueUnitGrad), 1.7453292F);
}

// That of a map is its length, or else its default item.
TEST(ZRValue, OnlyAbsoluteLengthsHaveALength) {
    EXPECT_EQ(integer(2, ZRValueUnitPt).getLengthValue(), ZRLength(2));
    EXPECT_EQ(real(1, ZRValueUnitIn).getLengthValue(), ZRLength(72));
    ZRValue map = mapOf(ZRN_EMPTY, ZRValue(ZRLength(5)));
    EXPECT_EQ(map.getLengthValue(), ZRLength(5));
    map.setNamedItem(ZRN_length, ZRValue());
    EXPECT_EQ(map.getLengthValue(), ZRLength(5));
    map.setNamedItem(ZRN_length, mapOf(ZRN_length, ZRValue(ZRLength(7))));
    EXPECT_EQ(map.getLengthValue(), ZRLength(7));
    map.setNamedItem(ZRN_length, ZRValue(0));
    ZRValue circle = mapOf(ZRN_length, 1);
    circle.setNamedItem(ZRN_length, circle);
    for (const ZRValue& value : {ZRValue(0), real(1, ZRValueUnitPercent), ZRValue(ZRN_auto), map,
                                 real(1, static_cast<ZRValueUnitType>(11)), ZRValue(u"1pt"), circle,
                                 mapOf(ZRN_length, mapOf(ZRN_EMPTY, circle))}) {
        EXPECT_TRUE(value.getLengthValue().isAuto())
            << "for a value of type " << value.getValueType();
    }
    circle.removeNamedItem(ZRN_length);  // opens the circle, which would never die
}

TEST(ZRValue, NormalizesToTheCanonicalUnit) {
    const auto normalized = [](const std::string& word) {
        ZRValue value =
            word == "unit 11" ? real(2, static_cast<ZRValueUnitType>(11)) : valueOf(word);
        value.normalizeUnit();
        return dump(value);
    };
    expectTexts(normalized, {"1in -> real 72pt", "1pt -> integer 1pt", "20.twip -> real 1pt",
                             "1rad -> real 57.2958deg", "100grad -> real 90deg",
                             "2s -> real 2000ms", "2kHz -> real 2000Hz", "2em -> integer 2em",
                             "unit 11 -> real 2", "1foo -> string 1foo"});
}

TEST(ZRValue, NamesComeFromNameValuesAndFromTheTextOfOthers) {
    EXPECT_EQ(ZRValue(ZRN_auto).getNameValue(), ZRN_auto);
    EXPECT_EQ(ZRValue(u"auto").getNameValue(), ZRN_EMPTY);
    EXPECT_EQ(ZRValue(u"auto").toZRName(), ZRN_auto);
    EXPECT_EQ(utf8(ZRName(ZRValue(ZRLength(12))).toString()), "12pt");
    EXPECT_EQ(utf8(ZRValue(ZRN_auto).getStringValue()), "auto");
    EXPECT_EQ(utf8(ZRValue(5).getStringValue()), "");
}

}  // namespace
}  // namespace ZroCommon::testing
