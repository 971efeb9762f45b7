#include <limits>

#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

// Which operators hold between two values.
std::string relations(const ZRValue& left, const ZRValue& right) {
    std::string result;
    result += left == right ? "== " : "";
    result += left != right ? "!= " : "";
    result += left < right ? "< " : "";
    result += left <= right ? "<= " : "";
    result += left > right ? "> " : "";
    result += left >= right ? ">=" : "";
    return result;
}

constexpr const char* kEqual = "== <= >=";
constexpr const char* kLess = "!= < <= ";
constexpr const char* kGreater = "!= > >=";
constexpr const char* kUnordered = "!= <= >=";  // unequal, and neither is less

TEST(ZRValueCompare, ComparesByKindUnitAndMagnitude) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const auto& [left, right, expected] : Rows<ZRValue, ZRValue, const char*>{
             {ZRValue(), ZRValue(), kEqual},
             {ZRValue(-1), 1, kLess},
             {integer(1, ZRValueUnitIn), integer(72, ZRValueUnitPt), kEqual},
             {real(1, ZRValueUnitNumber), 1, kEqual},
             {integer(1, ZRValueUnitEm), integer(1, ZRValueUnitPt), kLess},
             {integer(9, ZRValueUnitCm), integer(1, ZRValueUnitPx), kGreater},
             {ZRValue(1), integer(1, ZRValueUnitPt), kLess},
             {ZRValue(ZRN_zoom), ZRValue(ZRName(u"a name of this test")), kLess},
             {ZRValue(ZRN_yav), ZRValue(ZRN_azimuth), kLess},
             {ZRValue(ZRN_auto), ZRValue(u"auto"), kEqual},
             {ZRValue(u"auto", ZRValueUnitLiteral), ZRValue(ZRN_auto), kEqual},
             {ZRValue(u"aut"), ZRValue(ZRN_auto), kLess},
             {ZRValue(u"a"), ZRValue(u"b"), kLess},
             {ZRValue(u"auto"), ZRValue(u"auto", ZRValueUnitLiteral), kLess},
             {ZRValue(), 5, kLess},
             {ZRValue(5), ZRValue(u"5"), kLess},
             {ZRValue(u"5"), mapOf(ZRN_EMPTY, 5), kLess},
             {mapOf(ZRN_EMPTY, 5), ZRValue(ZRN_auto), kGreater},
             {real(nan, ZRValueUnitPt), real(nan, ZRValueUnitPt), kUnordered},
             {real(nan, ZRValueUnitPt), 1, kGreater},
         }) {
        EXPECT_EQ(relations(left, right), expected) << dump(left) << " and " << dump(right);
    }
}

TEST(ZRValueCompare, MapsAndObjectsAreEqualOnlyToThemselves) {
    const ZRValue map = mapOf(ZRN_EMPTY, 5);
    EXPECT_EQ(map, ZRValue(map));
    const ZRValue other = mapOf(ZRN_EMPTY, 5);
    EXPECT_NE(map, other);
    EXPECT_NE(map < other, other < map);
    EXPECT_EQ(ZRValue(map.getRCObject()), ZRValue(map.getRCObject()));
    EXPECT_NE(ZRValue(map.getRCObject()), map);
    const ZRValue value(ZRN_auto);  // compares with names directly
    EXPECT_TRUE(value == ZRName(ZRN_auto) && ZRName(ZRN_auto) == value && value != ZRN_none);
}

// On purpose: this is no ordering that could be sorted by.
TEST(ZRValueCompare, LessGoesRoundInACircleOverMixedKinds) {
    const ZRValue plain(u"b");
    const ZRValue literal(u"a", ZRValueUnitLiteral);
    const ZRValue name(ZRName(u"aa"));
    EXPECT_LT(plain, literal);
    EXPECT_LT(literal, name);
    EXPECT_LT(name, plain);
}

}  // namespace
}  // namespace ZroCommon::testing
