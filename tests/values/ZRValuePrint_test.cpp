#include <limits>

#include "tests/support/Values.h"
#include "zro/foundation/internal/PrintReal.h"

namespace ZroCommon::testing {
namespace {

TEST(ZRValuePrint, PrintsNumbersWithSixDigits) {
    expectRows<double, const char*>(
        [](double number) {
            UnicodeString text;
            return utf8(internal::appendReal(text, number));
        },
        {{0.0, "0"},
         {-0.0, "-0"},
         {1e5, "100000"},
         {999999.5, "1e+06"},
         {1e-4, "0.0001"},
         {1e-5, "1e-05"},
         {-1234.5678, "-1234.57"},
         {1e308, "1e+308"},
         {5e-324, "4.94066e-324"}});
}

TEST(ZRValuePrint, PrintsNumbersWithTheirUnits) {
    for (const auto& [value, text] : Rows<ZRValue, const char*>{
             {ZRValue(), ""},
             {ZRValue(-12), "-12"},
             {integer(12, ZRValueUnitPt), "12pt"},
             {real(0.5F, ZRValueUnitPercent), "0.5%"},
             {real(1234567, ZRValueUnitPt), "1.23457e+06pt"},
             {real(std::numeric_limits<float>::infinity(), ZRValueUnitEm), "infem"},
             {real(-std::numeric_limits<float>::quiet_NaN(), ZRValueUnitPt), "nanpt"},
             {integer(2, ZRValueUnitKHz), "2kHz"},
             {integer(2, ZRValueUnitTwip), "2twip"},
             {integer(2, ZRValueUnitPt2), "2"},
             {integer(2, static_cast<ZRValueUnitType>(11)), "2"},
             {integer('%', ZRValueUnitCharacter), "%"},
             {integer(0x1F600, ZRValueUnitCharacter), "\U0001F600"},
             {integer(0x110000, ZRValueUnitCharacter), ""},
             {integer(-1, ZRValueUnitCharacter), ""},
         }) {
        EXPECT_EQ(utf8(value.toString()), text);
        EXPECT_EQ(value.toValueText(), value.toString());
        EXPECT_EQ(static_cast<UnicodeString>(value), value.toString());
    }
}

TEST(ZRValuePrint, PrintsMapsInTheOrderOfNameNumbers) {
    ZRValue value = mapOf(ZRName(u"b"), ZRValue(u"a", ZRValueUnitLiteral));
    value.setNamedItem(ZRN_EMPTY, 5);
    value.setNamedItem(ZRN_length, ZRValue());
    EXPECT_EQ(utf8(value.toString()), "{.: 5; b: a}");
    value.setNamedItem(ZRN_length, mapOf(ZRN_minimum, ZRValue(ZRLength(1))));
    value.setNamedItem(ZRN_maximum, ZRValue(value.getNamedItem(ZRN_length).getRCObject()));
    EXPECT_EQ(utf8(value.toString()),
              "{.: 5; length: {minimum: 1pt}; maximum: ##ZRNamedValueMap; b: a}");
}

TEST(ZRValuePrint, AMapWithinItselfIsEmptyThere) {
    ZRValue value = mapOf(ZRN_length, 1);
    value.setNamedItem(ZRN_maximum, mapOf(ZRN_auto, value));
    EXPECT_EQ(utf8(value.toString()), "{length: 1; maximum: {auto: }}");
    value.removeNamedItem(ZRN_maximum);  // opens the circle, which would never die
}

TEST(ZRValuePrint, PrintsMapsAtAnyDepth) {
    constexpr int kDepth = 100'000;
    ZRValue value(1);
    for (int i = 0; i < kDepth; ++i) {
        value = mapOf(ZRN_EMPTY, value);
    }
    EXPECT_EQ(value.toString().length(), 5 * kDepth + 1);
    EXPECT_TRUE(value.getLengthValue().isAuto());
}

}  // namespace
}  // namespace ZroCommon::testing
