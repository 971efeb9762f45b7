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
    for (const int number : {0, -1, last + 1}) {
        EXPECT_TRUE(Name::toZRName(static_cast<Enum>(number)).isEmpty()) << number;
    }
}

TEST(MarkupNames, NumbersAndTextsGoRound) {
    expectRoundTrip<MathMLName>(MathMLN_LAST);
    expectRoundTrip<SVGName>(SVGN_LAST);
    const std::vector<int> math{MathMLN_abs, MathMLN_annotation_xml, MathMLN_URI, MathMLN_other};
    EXPECT_EQ(math, (std::vector{1, 4, 183, 434}));
    const std::vector<int> svg{SVGN_svg, SVGN_clipPath, SVGN_clip_path, SVGN_mask};
    EXPECT_EQ(svg, (std::vector{1, 9, 56, 134}));
}

TEST(MarkupNames, AreMadeOfNamesAndValues) {
    EXPECT_EQ(MathMLName(ZRName(text("mrow"))), MathMLN_mrow);
    EXPECT_EQ(MathMLName(ZRN_color), MathMLN_color);
    EXPECT_EQ(MathMLName(ZRValue(text("number h-unit"))), MathMLN_number_h_unit);
    EXPECT_EQ(MathMLName(ZRValue(ZRN_none)), MathMLN_none);
    EXPECT_EQ(utf8(ZRName(MathMLName(MathMLN_mrow)).toString()), "mrow");
    EXPECT_EQ(SVGName(ZRN_color), SVGN_color);
    EXPECT_EQ(SVGName(ZRValue(text("viewBox"))), SVGN_viewBox);
    for (const ZRValue& value :
         {ZRValue(), ZRValue(1), ZRValue(text("Mrow")), ZRValue(ZRN_EMPTY), ZRValue(text("mro")),
          ZRValue(text("mrow ")), ZRValue(text("viewbox"))}) {
        EXPECT_TRUE(MathMLName(value).isEmpty()) << utf8(value.toString());
        EXPECT_TRUE(SVGName(value).isEmpty()) << utf8(value.toString());
    }
    EXPECT_TRUE(MathMLName().isEmpty());
}

}  // namespace
}  // namespace ZroCommon::testing
