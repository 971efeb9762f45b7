
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

// What a colour gives, and the same from what it prints when it has another form than RGB.
auto colour(bool extended) {
    return [extended](const std::string& source) {
        const ZRValue color = ZRValue::parseColor(text(source), extended);
        const std::string result = shown(color, text(source));
        if (color.isColor()) {
            EXPECT_EQ(dump(ZRValue::parseColor(color.toString(), true)), result) << source;
        }
        return result;
    };
}

void expectNoColours(std::initializer_list<const char*> sources, bool extended) {
    for (const char* source : sources) {
        EXPECT_EQ(colour(extended)(source), "unknown") << source;
    }
}

TEST(ZRValueParse, ReadsColours) {
    for (const bool extended : {false, true}) {
        expectTexts(colour(extended),
                    {"#f00 -> integer #FF0000", "red -> name red", "nonsense -> name nonsense",
                     "rgb(255,0,0) -> integer #FF0000", "rgb ( 100% 0%, 50% )  -> integer #FF0080",
                     "rgb(1 2 3,) -> integer #010203", "rgb(300,-5,1.5) -> integer #FF0002",
                     "rgb(3000000000,0,0) -> integer #FF0000",
                     " #123456789  -> integer #FFFFFFFF"});
        expectNoColours({"rgb(1pt 2foo,3)", "rgb(1,,2)", "rgb(1,2)", "rgb(1,2,3", "rgb(1,2,3) x",
                         "rgb(#1,2,3)", "RGB(1,2,3)", "nonsense()", "red blue", "12pt", "'red'",
                         ""},
                        extended);
    }
}

TEST(ZRValueParse, ReadsTheOtherFormsOfColours) {
    expectLines(colour(false), R"(
rgb-icc(1,2,3,#CMYK,1,0,.5,0) -> map #010203 icc-color(#CMYK,1,0,0.5,0)
rgb-icc(1 2 3 #GRAYSCALE 50%) -> map #010203 icc-color(#GRAYSCALE,0.5)
rgb-icc(#CMYK,1,0,0,0) -> map #00FFFF icc-color(#CMYK,1,0,0,0)
rgb-icc(#GRAYSCALE,0.5) -> map #808080 icc-color(#GRAYSCALE,0.5)
rgb-icc(1,2,3,sRGB,1,2) -> map #010203 icc-color(sRGB,1,2,0,0)
rgb-icc(1,2,3,#SEPARATION,'A b') -> map #010203 icc-color(#SEPARATION,"A b",1)
rgb-icc(#SPOTCOLOR,Gold,.5) -> map rgb-icc(#SEPARATION,"Gold",0.5)
rgb-icc(#REGISTRATION,.5) -> map rgb-icc(#SEPARATION,"All",0.5)
rgb-icc(#SEPARATION,Gold,1,0,0,1,0) -> map rgb-icc(#SEPARATION,"Gold",1,0,0,1,0))");
    expectNoColours({"rgb-icc(1,2,3,#CMYK,1,0,0)", "rgb-icc(1,2,3,#CMYK,1,0,0,0,0)",
                     "rgb-icc(1,2,3,#GRAYSCALE)", "rgb-icc(1,2,3,#OTHER,1)", "rgb-icc(1,2,3,)",
                     "rgb-icc(1,2,3,p,-1)", "rgb-icc(1,2,3,p,1,2,3,4,5)",
                     "rgb-icc(1,2,3,#SEPARATION,'A')x", "rgb-icc(1,2,p)"},
                    false);
}

TEST(ZRValueParse, AFormBehindAColourIsAnExtension) {
    const auto extension = [](const std::string& source) {
        EXPECT_EQ(colour(false)(source), "unknown") << source;
        return colour(true)(source);
    };
    expectLines(extension, R"(
#F00 icc-color(#CMYK,0,1,1,0) -> map #FF0000 icc-color(#CMYK,0,1,1,0)
rgb(255,0,0) icc-color( p , 1 ) -> map #FF0000 icc-color(p,1,0,0,0)
Red icc-color(#GRAYSCALE,0) -> map #FF0000 icc-color(#GRAYSCALE,0)
icc-color(#CMYK,1,0,0,0) -> map #00FFFF icc-color(#CMYK,1,0,0,0)
icc-color(p,1,0,0) -> map #FF0000 icc-color(p,1,0,0,0))");
    expectNoColours({"nonsense icc-color(p,1)", "#F00 icc-color(p,1", "#F00 icc-color",
                     "#F00 other(p,1)", "icc-color(#CMYK)", "transparent icc-color(#OTHER,1)"},
                    true);
}

}  // namespace
}  // namespace ZroCommon::testing
