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
    const auto compared = [](const std::string& pair) {
        const std::size_t blank = pair.find(' ');
        return relations(valueOf(pair.substr(0, blank)), valueOf(pair.substr(blank + 1)));
    };
    expectTexts(compared,
                {"null null -> == <= >=", "-1 1 -> != < <= ", "1in 72pt -> == <= >=",
                 "1. 1 -> == <= >=", "1em 1pt -> != < <= ", "9cm 1px -> != > >=",
                 "1 1pt -> != < <= ", "yav azimuth -> != < <= ", "'auto' auto -> == <= >=",
                 "1foo 2foo -> != < <= ", "null 5 -> != < <= ", "5 1foo -> != < <= "});
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const auto& [left, right, expected] : Rows<ZRValue, ZRValue, const char*>{
             {ZRValue(ZRN_zoom), ZRValue(ZRName(u"a name of this test")), kLess},
             {ZRValue(ZRN_auto), ZRValue(u"auto"), kEqual},
             {ZRValue(u"aut"), ZRValue(ZRN_auto), kLess},
             {ZRValue(u"auto"), ZRValue(u"auto", ZRValueUnitLiteral), kLess},
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
