
#include "tests/support/SmallStack.h"
#include "tests/support/Values.h"
#include "zro/values/ZRColor.h"

namespace ZroCommon::testing {
namespace {

using ParseCases = Rows<const char16_t*, const char*>;

std::string shown(const ZRValue& value, const UnicodeString& text) {
    if (value.isUnknownString()) {
        EXPECT_EQ(value.toString(), text);
        return "unknown";
    }
    return dump(value);
}

TEST(ZRValueParse, TypesAWholeText) {
    for (const auto& [source, value] : ParseCases{
             {u"12pt", "real 12pt"},     {u" 1in\n", "real 1in"},  {u"-3", "integer -3"},
             {u"auto", "name auto"},     {u"'a b'", "string a b"}, {u"#ff0000", "integer #FF0000"},
             {u"50%", "real 50%"},       {u"+.5em", "real 0.5em"}, {u"-0.0", "integer 0"},
             {u"", "unknown"},           {u" ", "unknown"},        {u"%", "unknown"},
             {u"a b", "unknown"},        {u"12 pt", "unknown"},    {u"1e5", "unknown"},
             {u"10foo", "unknown"},      {u"- 5", "unknown"},      {u"'a", "unknown"},
             {u"rgb(1,2,3)", "unknown"}, {u"a, b", "unknown"},     {u"\xD800", "unknown"},
         }) {
        EXPECT_EQ(shown(ZRValue::parse(source), source), value) << utf8(source);
    }
    EXPECT_TRUE(ZRValue::parse(u"'x'").isLiteralString());
    EXPECT_TRUE(ZRValue::parse(u"").isEmpty());
    UnicodeString bogus;
    bogus.setToBogus();
    EXPECT_FALSE(ZRValue::parse(bogus).toString().isBogus());
}

TEST(ZRValueParse, ATextEndsAtItsFirstNul) {
    EXPECT_EQ(dump(ZRValue::parse(UnicodeString(u"12\0abc", 6))), "integer 12");
    EXPECT_EQ(dump(ZRValue::parse(UnicodeString(u"#F00\0", 5))), "integer #FF0000");
    EXPECT_EQ(dump(ZRValue::parseColor(UnicodeString(u"#F00\0x", 6), true)), "integer #FF0000");
    EXPECT_TRUE(ZRValue::parse(UnicodeString(u"'a\0'", 4)).isUnknownString());
}

TEST(ZRValueParse, TypesLongTexts) {
    const std::string name(300, 'n');
    EXPECT_EQ(dump(ZRValue::parse(text("  " + name))), "name " + name);
    EXPECT_EQ(dump(ZRValue::parse(text(std::string(200, ' ') + "1pt"))), "real 1pt");
    EXPECT_TRUE(ZRValue::parse(text(std::string(100, '1'))).isUnknownString());
    EXPECT_EQ(dump(ZRValue::parse(text(std::string(98, '1') + "em"))), "real infem");
    const UnicodeString channels = text("rgb(" + std::string(98, '9') + ",-1e5,0)");
    EXPECT_TRUE(ZRValue::parseColor(channels, true).isUnknownString());
    const UnicodeString brackets = text("rgb" + std::string(1'000'000, '('));
    onSmallStack([&] {
        EXPECT_EQ(ZRValue::parse(brackets).toString(), brackets);
        EXPECT_EQ(ZRValue::parseColor(brackets, true).toString(), brackets);
    });
}

TEST(ZRValueParse, TypesNamesAndQuotedStringsAlone) {
    const auto typed = [](const std::string& source) {
        return shown(ZRValue::parseNonNumeric(text(source)), text(source));
    };
    expectTexts(typed, {"auto -> name auto", "'12pt' -> string 12pt", "12pt -> unknown",
                        "#ff0000 -> unknown", "a b -> unknown", " -> unknown"});
}

// What a colour of another form prints, and the same from what was printed.
void expectColor(const char16_t* source, bool extended, const std::string& printed) {
    const ZRValue color = ZRValue::parseColor(source, extended);
    EXPECT_EQ(shown(color, source), printed) << utf8(source);
    if (color.isColor()) {
        EXPECT_EQ(dump(ZRValue::parseColor(color.toString(), true)), printed) << utf8(source);
    }
}

TEST(ZRValueParse, ReadsColours) {
    for (const auto& [source, value] : ParseCases{
             {u"#f00", "integer #FF0000"},
             {u"red", "name red"},
             {u"nonsense", "name nonsense"},
             {u"rgb(255,0,0)", "integer #FF0000"},
             {u"rgb ( 100% 0%, 50% ) ", "integer #FF0080"},
             {u"rgb(1 2 3,)", "integer #010203"},
             {u"rgb(300,-5,1.5)", "integer #FF0002"},
             {u"rgb(3000000000,0,0)", "integer #FF0000"},
             {u" #123456789 ", "integer #FFFFFFFF"},
         }) {
        EXPECT_EQ(shown(ZRValue::parseColor(source, false), source), value) << utf8(source);
        EXPECT_EQ(shown(ZRValue::parseColor(source, true), source), value) << utf8(source);
    }
    for (const char16_t* source :
         {u"rgb(1pt 2foo,3)", u"rgb(1,,2)", u"rgb(1,2)", u"rgb(1,2,3", u"rgb(1,2,3) x",
          u"rgb(#1,2,3)", u"RGB(1,2,3)", u"nonsense()", u"red blue", u"12pt", u"'red'", u""}) {
        expectColor(source, false, "unknown");
        expectColor(source, true, "unknown");
    }
}

TEST(ZRValueParse, ReadsTheOtherFormsOfColours) {
    for (const auto& [source, printed] : ParseCases{
             {u"rgb-icc(1,2,3,#CMYK,1,0,.5,0)", "map #010203 icc-color(#CMYK,1,0,0.5,0)"},
             {u"rgb-icc(1 2 3 #GRAYSCALE 50%)", "map #010203 icc-color(#GRAYSCALE,0.5)"},
             {u"rgb-icc(#CMYK,1,0,0,0)", "map #00FFFF icc-color(#CMYK,1,0,0,0)"},
             {u"rgb-icc(#GRAYSCALE,0.5)", "map #808080 icc-color(#GRAYSCALE,0.5)"},
             {u"rgb-icc(1,2,3,sRGB,1,2)", "map #010203 icc-color(sRGB,1,2,0,0)"},
             {u"rgb-icc(1,2,3,#SEPARATION,'A b')", "map #010203 icc-color(#SEPARATION,\"A b\",1)"},
             {u"rgb-icc(#SPOTCOLOR,Gold,.5)", "map rgb-icc(#SEPARATION,\"Gold\",0.5)"},
             {u"rgb-icc(#REGISTRATION,.5)", "map rgb-icc(#SEPARATION,\"All\",0.5)"},
             {u"rgb-icc(#SEPARATION,Gold,1,0,0,1,0)",
              "map rgb-icc(#SEPARATION,\"Gold\",1,0,0,1,0)"},
         }) {
        expectColor(source, false, printed);
    }
    for (const char16_t* source :
         {u"rgb-icc(1,2,3,#CMYK,1,0,0)", u"rgb-icc(1,2,3,#CMYK,1,0,0,0,0)",
          u"rgb-icc(1,2,3,#GRAYSCALE)", u"rgb-icc(1,2,3,#OTHER,1)", u"rgb-icc(1,2,3,)",
          u"rgb-icc(1,2,3,p,-1)", u"rgb-icc(1,2,3,p,1,2,3,4,5)", u"rgb-icc(1,2,3,#SEPARATION,'A')x",
          u"rgb-icc(1,2,p)"}) {
        expectColor(source, false, "unknown");
    }
}

TEST(ZRValueParse, AFormBehindAColourIsAnExtension) {
    for (const auto& [source, printed] : ParseCases{
             {u"#F00 icc-color(#CMYK,0,1,1,0)", "map #FF0000 icc-color(#CMYK,0,1,1,0)"},
             {u"rgb(255,0,0) icc-color( p , 1 )", "map #FF0000 icc-color(p,1,0,0,0)"},
             {u"Red icc-color(#GRAYSCALE,0)", "map #FF0000 icc-color(#GRAYSCALE,0)"},
             {u"icc-color(#CMYK,1,0,0,0)", "map #00FFFF icc-color(#CMYK,1,0,0,0)"},
             {u"icc-color(p,1,0,0)", "map #FF0000 icc-color(p,1,0,0,0)"},
         }) {
        expectColor(source, true, printed);
        EXPECT_TRUE(ZRValue::parseColor(source, false).isUnknownString()) << utf8(source);
    }
    for (const char16_t* source :
         {u"nonsense icc-color(p,1)", u"#F00 icc-color(p,1", u"#F00 icc-color", u"#F00 other(p,1)",
          u"icc-color(#CMYK)", u"transparent icc-color(#OTHER,1)"}) {
        expectColor(source, true, "unknown");
    }
}

}  // namespace
}  // namespace ZroCommon::testing
