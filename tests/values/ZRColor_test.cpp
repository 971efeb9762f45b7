#include "zro/values/ZRColor.h"

#include <bit>
#include <cstdio>
#include <limits>

#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

std::string hex(unsigned int rgb) {
    char text[16];
    std::snprintf(text, sizeof text, "%06X", rgb);
    return text;
}

// "FF0000 #CMYK 0 1 1 0", with the flags of a separation as three digits.
std::string shown(const ZRColor& color) {
    std::string text = hex(color.getRGB()) + " " + utf8(color.getProfileType().toString());
    if (color.isSeparation()) {
        text += " " + utf8(color.getSeparationColorName());
    }
    const int count = color.isSeparation() ? 5 : color.isGrayscale() ? 1 : 4;
    for (int index = 0; index < count && !color.getProfileType().isEmpty(); ++index) {
        text += " " + utf8(ZRValue(color.getICCValue(index), ZRValueUnitNumber).toString());
    }
    if (color.isSeparation()) {
        text += std::string(" ") + (color.hasSeparationRGB() ? "1" : "0")
                + (color.hasSeparationTint() ? "1" : "0") + (color.hasSeparationCMYK() ? "1" : "0");
    }
    return text;
}

TEST(ZRColor, IsMadeOfComponents) {
    const ZRColor red(0xFF0000);
    for (const auto& [color, text] : Rows<ZRColor, const char*>{
             {ZRColor(), "000000 "},
             {ZRColor(300, -5, 128), "FF0080 "},
             {ZRColor(2.0F), "FFFFFF #GRAYSCALE 1"},
             {ZRColor(0.5F), "808080 #GRAYSCALE 0.5"},
             {ZRColor(kNaN), "000000 #GRAYSCALE 0"},
             {ZRColor(red, -1.0F), "FF0000 #GRAYSCALE 0"},
             {ZRColor(1.0F, 0.0F, 0.0F, 0.0F), "00FFFF #CMYK 1 0 0 0"},
             {ZRColor(-2.0F, 2.0F, kNaN, 0.0F), "FF0000 #CMYK 0 1 0 0"},
             {ZRColor(red, 0.0F, 0.5F, 1.0F, 7.0F), "FF0000 #CMYK 0 0.5 1 1"},
             {ZRColor(u"Gold", 0.25F), "BFBFBF #SEPARATION Gold 0.25 1 1 1 1 010"},
             {ZRColor(UnicodeString(), 3.0F), "000000 #SEPARATION All 1 1 1 1 1 010"},
             {ZRColor(u"Gold", 1.0F, 0.0F, 0.0F, 1.0F, 0.0F),
              "FFFF00 #SEPARATION Gold 1 0 0 1 0 011"},
             {ZRColor(red, u"Gold", 0.5F), "FF0000 #SEPARATION Gold 0.5 0 1 1 0 110"},
             {ZRColor(red, UnicodeString(), 0.5F, 1.0F, 2.0F, 0.0F, 0.0F),
              "FF0000 #SEPARATION All 0.5 1 1 0 0 111"},
             {ZRColor(red, u"sRGB", -1.0F, 2.0F, 0.5F, 0.0F), "FF0000 icc-color -1 2 0.5 0"},
         }) {
        EXPECT_EQ(shown(color), text);
        EXPECT_EQ(shown(ZRValue(color).getColorValue()), text) << "as a value";
        EXPECT_TRUE(ZRValue(color) == ZRValue(color)) << text;
    }
}

TEST(ZRColor, ConvertsBetweenInksAndChannels) {
    for (const auto& [color, expected] : Rows<unsigned, unsigned>{
             {ZRColor::cmyk2rgb(0, 0, 0, 1), 0x000000},
             {ZRColor::cmyk2rgb(0, 0, 0, 0), 0xFFFFFF},
             {ZRColor::cmyk2rgb(-9, 1e30F, kNaN, 0), 0xFF0000},  // channels stay within a byte
             {ZRColor::fromBGR(0x112233).getRGB(), 0x332211},
             {ZRColor::reverseRGB(0xFE000011), 0xFE110000},
             {ZRColor(0xFFFFFF).getDark().getRGB(), 0xAAAAAA},
             {ZRColor(0x0000FF).getLight().getRGB(), 0x8080FF},
             // An ink on screen follows its tint.
             {ZRColor(0xFF0000, u"Gold", 1.0F).getSeparationRGB(), 0xFF0000},
             {ZRColor(0xFF0000, u"Gold", 0.5F).getSeparationRGB(), 0xFF8080},
             {ZRColor(0xFF0000, u"Gold", 0.5F, 1, 0, 0, 0).getSeparationRGB(), 0x80FFFF},
             {ZRColor(u"Gold", 0.5F).getSeparationRGB(), 0x404040},
         }) {
        EXPECT_EQ(hex(color), hex(expected));
    }
    EXPECT_EQ(shown(ZRColor::rgb2cmyk(0xFF0000)), "FF0000 #CMYK 0 1 1 0");
}

TEST(ZRColor, InksNeedNotGiveTheirColourBack) {
    EXPECT_EQ(shown(ZRColor::rgb2cmyk(0x808080)), "808080 #CMYK 0 0 0 0.498039");
    EXPECT_EQ(hex(ZRColor::rgb2cmyk(0x804020).getRGB()), "806050");
}

TEST(ZRColor, KeywordsAreReadInAnyCase) {
    const auto rgb = [](const std::string& name) {
        return hex(ZRColor(ZRName(text(name))).getRGB());
    };
    expectTexts(rgb, {"red -> FF0000", "Red -> FF0000", "aqua -> 00FFFF", "grey -> 808080",
                      "yellowgreen -> 9ACD32", "TRANSPARENT -> FFFFFFFF",
                      "currentColor -> FE000000", "CURRENTcolor -> FE000000",
                      "windowtext -> FF000000", "nonsense -> FF000000", " -> FF000000"});
    EXPECT_EQ(ZRColor(static_cast<ZRNameEnum>(-1)), ZRColor::getInvalidColor());
    EXPECT_EQ(ZRColor(ZRValue(ZRN_red)), ZRColor::getInvalidColor()) << "a name is no colour yet";
}

TEST(ZRColor, OneKeywordNamesAValue) {
    const Rows<unsigned int, ZRNameEnum> cases = {
        {0x00FFFF, ZRN_cyan},           {0xFF00FF, ZRN_magenta},   {0x808080, ZRN_gray},
        {0x2F4F4F, ZRN_darkslategray},  {0xD3D3D3, ZRN_lightgray}, {0xFFFFFFFF, ZRN_transparent},
        {0xFE000000, ZRN_currentColor}, {0x123456, ZRN_EMPTY},     {0xFF000000, ZRN_EMPTY}};
    for (const auto& [rgb, name] : cases) {
        EXPECT_EQ(ZRColor(rgb).getColorName(), name) << hex(rgb);
    }
}

TEST(ZRColor, KnowsWhatIsNoColour) {
    for (const ZRColor& color :
         {ZRColor(0xFF000000U), ZRColor(0x01000000), ZRColor(ZRColor(), u"#CMYK", 0, 0, 0, 0),
          ZRColor(ZRColor::getTransparent(), u"#other", 0, 0, 0, 0)}) {
        EXPECT_TRUE(color.isInvalid()) << shown(color);
    }
    for (const ZRColor& color : {ZRColor::getTransparent(), ZRColor::getCurrentColor(),
                                 ZRColor(ZRColor(), u"sRGB", 0, 0, 0, 0)}) {
        EXPECT_FALSE(color.isInvalid()) << shown(color);
    }
    EXPECT_EQ(integer(5).getColorValue(), ZRColor::getInvalidColor());
}

TEST(ZRColor, ComparesByForm) {
    const ZRColor rgb(0);
    EXPECT_FALSE(ZRColor(rgb, 0.0F) == rgb);
    EXPECT_TRUE(ZRColor(rgb, u"ALL", 0.5F) == ZRColor(rgb, u"all", 0.5F));
    EXPECT_TRUE(ZRColor(rgb, u"ALL", 0.5F).isRegistration());
    EXPECT_FALSE(ZRColor(rgb, u"Gold", 0.5F) == ZRColor(rgb, u"gold", 0.5F));
    EXPECT_FALSE(ZRColor(rgb, u"a", 1, 2, 3, 4) == ZRColor(rgb, u"a", 1, 2, 3, 5));
    EXPECT_TRUE(ZRColor(rgb, 0.0F, 0, 0, 1) == ZRColor(rgb, -0.0F, 0, 0, 1));
    EXPECT_NE(ZRValue(ZRColor(rgb, 0.0F)), ZRValue(ZRColor(rgb, 1.0F)));
}

TEST(ZRColor, SeparationsCompareByBits) {
    EXPECT_FALSE(ZRColor(ZRColor(), u"a", 0.0F) == ZRColor(ZRColor(), u"a", -0.0F));
}

// Components lie in common slots: what one form keeps as a flag, another reads as a number.
TEST(ZRColor, ComponentsAreReadWhateverTheForm) {
    const ZRColor gray(0.5F);
    EXPECT_EQ(gray.getC(), 0.5F);
    EXPECT_EQ(std::bit_cast<unsigned>(gray.getM()), 1U);
    EXPECT_TRUE(gray.hasGrayscaleRGB());
    EXPECT_TRUE(ZRColor(1.0F, 0, 0, 0).hasCMYKRGB());
    EXPECT_EQ(gray.getICCValue(6) + gray.getICCValue(-1), 0);
}

TEST(ZRColor, BecomesAMapWithItsFormBesideTheRgb) {
    const ZRValue plain = ZRColor(0x0A0B0C);
    EXPECT_EQ(dump(plain), "integer #0A0B0C");
    const ZRValue cmyk = ZRColor(0.25F, 0, 0, 0);
    ASSERT_TRUE(cmyk.isColor());
    EXPECT_EQ(dump(cmyk.getNamedItem(ZRN_EMPTY)), "integer #BFFFFF");
    EXPECT_EQ(dump(cmyk.getNamedItem(ZRN_hash_CMYK)),
              "map {black: 0; cyan: 0.25; magenta: 0; yellow: 0}");
    EXPECT_EQ(dump(ZRValue(ZRColor(0.5F)).getNamedItem(ZRN_hash_GRAYSCALE)), "real 0.5");
    EXPECT_EQ(
        dump(ZRValue(ZRColor(u"Gold", 0.5F)).getNamedItem(ZRN_hash_SEPARATION)),
        "map {#SEPARATION: 2; black: 1; cyan: 1; magenta: 1; name: Gold; value: 0.5; yellow: 1}");
    EXPECT_EQ(dump(ZRValue(ZRColor(0, u"sRGB", 1, 2, 3, 4)).getNamedItem(ZRN_icc_color)),
              "map {black: 4; cyan: 1; magenta: 2; name: sRGB; yellow: 3}");
}

TEST(ZRColor, ReadsAnyMapThatClaimsToBeAColour) {
    ZRValue map = mapOf(ZRN_hash_CMYK, ZRValue(u"x"));
    map.setUnitType(ZRValueUnitColor);
    EXPECT_EQ(shown(map.getColorValue()), "000000 #CMYK 0 0 0 0");
    map.setNamedItem(ZRN_hash_CMYK, ZRValue());
    map.setNamedItem(ZRN_EMPTY, integer(0x123456));
    EXPECT_EQ(shown(map.getColorValue()), "123456 ");
    map.setNamedItem(ZRN_EMPTY, map);
    EXPECT_EQ(map.toString(), u"#000000") << "a colour within itself";
    map.removeNamedItem(ZRN_EMPTY);
}

TEST(ZRColor, PrintsEachForm) {
    const ZRColor blue(0x0000FF);
    for (const auto& [color, plain, named] : Rows<ZRColor, const char*, const char*>{
             {blue, "#0000FF", "blue"},
             {ZRColor(0x00FFFF), "#00FFFF", "cyan"},
             {ZRColor(0x0000FE), "#0000FE", "#0000FE"},
             {ZRColor::getTransparent(), "#FFFFFFFF", "transparent"},
             {ZRColor::getCurrentColor(), "#FE000000", "currentColor"},
             {ZRColor::getInvalidColor(), "", ""},
             {ZRColor(blue, 1, 0.5F, 0, 1e-7F), "#0000FF icc-color(#CMYK,1,0.5,0,1e-07)", nullptr},
             {ZRColor(ZRColor::getInvalidColor(), 1, 0, 0, 0), "rgb-icc(#CMYK,1,0,0,0)", nullptr},
             {ZRColor(0.5F), "#808080 icc-color(#GRAYSCALE,0.5)", nullptr},
             {ZRColor(u"A b", 0.5F), "rgb-icc(#SEPARATION,\"A b\",0.5)", nullptr},
             {ZRColor(blue, u"A", 1), "#0000FF icc-color(#SEPARATION,\"A\",1)", nullptr},
             {ZRColor(u"A", 1, 0, 0, 1, 0), "rgb-icc(#SEPARATION,\"A\",1,0,0,1,0)", nullptr},
             {ZRColor(blue, u"sRGB", 0, 0, 1, 0), "#0000FF icc-color(sRGB,0,0,1,0)", nullptr},
         }) {
        EXPECT_EQ(utf8(color.toString(false)), plain);
        EXPECT_EQ(utf8(color.toString(true)), named != nullptr ? named : plain);
        EXPECT_EQ(ZRValue(color).toString(), color.toString(false));
    }
    EXPECT_EQ(mapOf(ZRN_color, ZRValue(ZRColor(0.0F))).toString(),
              u"{color: #000000 icc-color(#GRAYSCALE,0)}");
}

}  // namespace
}  // namespace ZroCommon::testing
