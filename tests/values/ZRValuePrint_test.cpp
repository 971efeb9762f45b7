#include <bit>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>

#include "tests/support/Values.h"
#include "zro/foundation/internal/PrintReal.h"

namespace ZroCommon::testing {
namespace {

std::string printed(double number) {
    UnicodeString text;
    return utf8(internal::appendReal(text, number));
}

std::string printedByC(double number) {
    static const locale_t s_plain = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t outer = uselocale(s_plain);
    char text[32];
    std::snprintf(text, sizeof text, "%g", number);
    uselocale(outer);
    return text;
}

TEST(ZRValuePrint, PrintsNumbersAsCDoes) {
    std::mt19937 random(20240229);  // NOLINT: the same numbers on each run
    for (int i = 0; i < 20'000; ++i) {
        const auto bits = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        const auto decimal =
            static_cast<float>(static_cast<int>(random() % 20'000'001) - 10'000'000)
            / (i % 3 == 0 ? 1.0F : 1000.0F);
        for (const float number : {bits, decimal}) {
            if (number == number) {
                ASSERT_EQ(printed(number), printedByC(number));
            }
        }
    }
    for (const double number : {0.0, -0.0, 1e5, 999999.5, 1e6, 1e-4, 1e-5, 1e308, 5e-324}) {
        EXPECT_EQ(printed(number), printedByC(number));
    }
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
