#include "tests/support/Test.h"
#include "zro/values/ZRValue.h"
#include "zro/vocabulary/MathMLName.h"
#include "zro/vocabulary/SVGName.h"

namespace ZroCommon::testing {
namespace {

// Every number has a text of its own, from which it comes back.
template <class Name, class Enum>
void expectRoundTrip(Enum last) {
    for (int number = 1; number <= last; ++number) {
        const auto row = static_cast<Enum>(number);
        const ZRName name = Name::toZRName(row);
        EXPECT_FALSE(name.isEmpty()) << number;
        EXPECT_EQ(Name(name), row) << utf8(name.toString());
    }
    EXPECT_TRUE(Name::toZRName(static_cast<Enum>(0)).isEmpty());
    EXPECT_TRUE(Name::toZRName(static_cast<Enum>(-1)).isEmpty());
    EXPECT_TRUE(Name::toZRName(static_cast<Enum>(last + 1)).isEmpty());
}

TEST(MathMLName, NumbersAndTextsGoRound) {
    expectRoundTrip<MathMLName>(MathMLN_LAST);
    EXPECT_EQ(MathMLN_abs, 1);
    EXPECT_EQ(MathMLN_annotation_xml, 4);
    EXPECT_EQ(MathMLN_URI, 183);
    EXPECT_EQ(MathMLN_other, 434);
}

TEST(SVGName, NumbersAndTextsGoRound) {
    expectRoundTrip<SVGName>(SVGN_LAST);
    EXPECT_EQ(SVGN_svg, 1);
    EXPECT_EQ(SVGN_clipPath, 9);
    EXPECT_EQ(SVGN_clip_path, 56);
    EXPECT_EQ(SVGN_mask, 134);
}

TEST(MathMLName, IsMadeOfNamesAndValues) {
    EXPECT_EQ(MathMLName(ZRName(text("mrow"))), MathMLN_mrow);
    EXPECT_EQ(MathMLName(ZRN_color), MathMLN_color);
    EXPECT_EQ(MathMLName(ZRValue(text("number h-unit"))), MathMLN_number_h_unit);
    EXPECT_EQ(MathMLName(ZRValue(ZRN_none)), MathMLN_none);
    const ZRName name = MathMLName(MathMLN_mrow);
    EXPECT_EQ(utf8(name.toString()), "mrow");
    EXPECT_NE(MathMLName(MathMLN_mi), MathMLName(MathMLN_mo));
    for (const ZRValue& value : {ZRValue(), ZRValue(1), ZRValue(text("Mrow")), ZRValue(ZRN_EMPTY),
                                 ZRValue(text("mro")), ZRValue(text("mrow "))}) {
        EXPECT_TRUE(MathMLName(value).isEmpty()) << utf8(value.toString());
    }
    EXPECT_TRUE(MathMLName().isEmpty());
}

TEST(SVGName, IsMadeOfNamesAndValues) {
    EXPECT_EQ(SVGName(ZRN_color), SVGN_color);
    EXPECT_EQ(SVGName(ZRValue(text("viewBox"))), SVGN_viewBox);
    EXPECT_TRUE(SVGName(ZRValue(text("viewbox"))).isEmpty());
    EXPECT_TRUE(SVGName(ZRName(text("mrow"))).isEmpty());
}

}  // namespace
}  // namespace ZroCommon::testing
