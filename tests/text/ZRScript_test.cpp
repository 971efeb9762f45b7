#include "zro/text/ZRScript.h"

#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

// The codes from -20 to 200 for which a question is answered with yes: "-8 5 17".
using Question = bool (*)(ZRScript);
std::string codesWhere(Question holds) {
    std::string codes;
    for (int code = -20; code <= 200; ++code) {
        if (holds(ZRScript(code))) {
            codes += (codes.empty() ? "" : " ") + std::to_string(code);
        }
    }
    return codes;
}

TEST(ZRScript, ReadsNamesAndTexts) {
    const auto code = [](const std::string& name) {
        const ZRScript script(text(name));
        EXPECT_EQ(ZRScript(ZRName(text(name))), script) << name;
        return std::to_string(script.getUScriptCode());
    };
    expectTexts(code, {"auto -> -2", "none -> -3", "Math -> -11", "Latn -> 25", "Arab -> 2",
                       "Hang -> 18", "Hani -> 17", "Hrkt -> 54", "Qaai -> 1", "Zyyy -> 0",
                       "Latin -> 25", "Armn -> 3", "nonsense -> -1",
                       // Languages.
                       "ja -> -8", "jpn -> -8", "ja-JP -> -8", "kor -> -4", "zh -> 73",
                       "zh-MO -> 73", "zh-TW -> 74", "zho-TWN -> 74", "chi-HK -> 74", "de -> 25"});
    EXPECT_EQ(ZRScript(ZRName()), -1) << "no name is no script";
    EXPECT_EQ(ZRScript(UnicodeString()), -2) << "an empty property is automatic";
    EXPECT_EQ(ZRScript(ZRN_Latf), 25);
    EXPECT_EQ(ZRScript(text("Latf")), USCRIPT_LATIN_FRAKTUR);
    EXPECT_EQ(ZRScript(text("Latg")), USCRIPT_LATIN_GAELIC);
    EXPECT_EQ(ZRScript(), USCRIPT_COMMON);
    EXPECT_EQ(ZRScript(ZRN_Thai).getUScriptCode(), ZRUScriptThai);
}

TEST(ZRScript, PrintsCodesAndNames) {
    const auto names = [](int code) {
        return utf8(ZRScript(code).toString()) + " " + utf8(ZRScript(code).getScriptName());
    };
    const Rows<int, const char*> cases = {{-11, "Math Math"}, {-8, "Jpan Jpan"},
                                          {-3, " "},          {-2, " "},
                                          {-1, " "},          {-100, " "},
                                          {0, "Zyyy Common"}, {1, "Qaai Inherited"},
                                          {25, "Latn Latin"}, {39, "Tibt Tibetan"},
                                          {73, "Hans Hans"},  {54, "Hrkt Katakana_Or_Hiragana"},
                                          {99999, " "}};
    expectRows(names, cases);
}

TEST(ZRScript, NamesOfScriptsReadBack) {
    for (int code = 0; code < 200; ++code) {
        const ZRName name = ZRScript(code).getScriptCode();
        const bool isReadAsAnother = name == ZRN_Latf || name == ZRN_Latg || name == ZRN_Jpan;
        if (!name.isEmpty() && !isReadAsAnother) {
            EXPECT_EQ(ZRScript(name), code) << utf8(name.toString());
        }
    }
}

// On purpose: there is one code for the script and for the language's mixture of scripts.
TEST(ZRScript, KoreanReadsBackAsHangul) {
    EXPECT_EQ(ZRScript(-4).getScriptCode(), ZRN_Hang);
    EXPECT_EQ(ZRScript(ZRScript(-4).getScriptCode()), 18);
}

TEST(ZRScript, SortsScripts) {
    expectRows<Question, const char*>(
        codesWhere,
        {{[](ZRScript s) { return s.isCJK(); }, "-8 -4 5 17 18 20 22 54 73 74"},
         {[](ZRScript s) { return s.isCJKJustify(); }, "-8 5 17 20 22 54 73 74"},
         {[](ZRScript s) { return s.isCJKorAuto(); }, "-8 -4 -2 5 17 18 20 22 54 73 74"},
         {[](ZRScript s) { return s.isJA(); }, "-8 20 22 54"},
         {[](ZRScript s) { return s.isSC() || s.isTC() || s.isAuto(); }, "-2 73 74"},
         {[](ZRScript s) { return !s.isGlyphOrientationPossible(); },
          "-11 2 4 10 11 12 15 16 19 21 23 24 26 27 28 29 31 32 33 34 35 36 37 38 39"}});
}

TEST(ZRScript, TellsTheScriptOfACharacter) {
    const Rows<int, int> cases = {
        {'a', 25},     {0xA3, 25},     {0xBA, 25},   {'1', 0},
        {0xA6, 0},     {0xAB, 0},      {0x1F600, 0}, {0x5D0, 19},
        {0x5FF, 19},   {0x600, 2},     {0x60C, 2},   {0x660, 2},
        {0x6FF, 2},    {0x964, 10},    {0x3042, 20}, {0x30A2, 22},
        {0x3099, 54},  {0x30FC, 54},   {0x4E00, 17}, {0xAC00, 18},
        {0x2211, -11}, {0x1D400, -11}, {0x300, 1},   {0x378, USCRIPT_UNKNOWN},
        {-1, -1},      {0x110000, -1}};
    expectRows([](int c) { return ZRScript::getScript(c); }, cases);
    // Digits run from left to right; by Unicode they belong to the script all the same.
    for (const int digit : {0x0660, 0x0661, 0x0669, 0x06F0, 0x06F9}) {
        EXPECT_FALSE(ZRScript::isArabicScript(digit)) << std::hex << digit;
    }
    EXPECT_TRUE(ZRScript::isArabicScript(0x066A) && ZRScript::isArabicScript(0x06EF));
    EXPECT_TRUE(ZRScript::isMathematicalOperators(0x22FF));
    EXPECT_FALSE(ZRScript::isMathematicalOperators(0x2300));
}

TEST(ZRScript, TellsTheScriptOfAText) {
    EXPECT_EQ(ZRScript::getScriptFromText(text("12 \u3042a")), 20);
    EXPECT_EQ(ZRScript::getScriptFromText(text("1\u0300a")), 1);
    EXPECT_EQ(ZRScript::getScriptFromText(text("\U0001D400a")), -11);
    EXPECT_EQ(ZRScript::getScriptFromText(text("1.5 \U0001F600")), 0);
    EXPECT_EQ(ZRScript::getScriptFromText(UnicodeString()), 0);
}

TEST(ZRScript, WidensAmbiguousCharactersInCjk) {
    const Rows<int, int, bool> cases = {
        {25, 0x3042, true},  {-8, 'a', false},    {25, 0x00A7, false},
        {-8, 0x00A7, true},  {-8, 0x0416, true},  {-8, 0x00AA, false},
        {25, 0x0416, false}, {-2, 0x0416, false}, {-8, 0xFF71, false}};
    expectRows([](int script, int c) { return ZRScript(script).isZenkakuScript(c); }, cases);
}

TEST(ZRScript, HangsPunctuation) {
    for (const auto& [script, c, places] : Rows<int, int, const char*>{
             {-8, 0x3001, "-EL"}, {73, 0xFF0E, "-EL"}, {-4, 0x3001, "--L"}, {74, 0x3001, "--L"},
             {74, 0xFE50, "-EL"}, {74, 0xFF64, "-EL"}, {-8, 0xFF64, "--L"}, {17, 0x3002, "--L"},
             {-8, ',', "--L"},    {25, ',', "-EL"},    {25, '"', "SEL"},    {-8, '\'', "S-L"},
             {25, 0x2019, "-EL"}, {25, 0x2018, "S--"}, {25, '(', "S--"},    {25, ')', "---"},
             {25, '}', "-EL"},    {25, 0x300D, "-EL"}, {25, 0x2022, "S--"}, {25, 0x00AD, "-EL"},
             {25, 0x3001, "-EL"}, {25, 'a', "---"},    {-8, 'a', "---"},
         }) {
        const ZRScript s(script);
        const std::string found = std::string(s.isHangingStartChar(c) ? "S" : "-")
                                  + (s.isHangingEndChar(c) ? "E" : "-")
                                  + (s.isHangingLastChar(c) ? "L" : "-");
        EXPECT_EQ(found, places) << script << " " << std::hex << c;
    }
}

TEST(ZRScript, HasALetterForEachScript) {
    std::string letters;
    for (const int code : {-8, 20, 54, -4, 18, 2, 8, 10, 14, 17, 73, 74, 19, 22, 38, 25, -1}) {
        letters += utf8(UnicodeString(ZRScript(code).getA()));
    }
    EXPECT_EQ(letters, "\u3042\u3042\u3042\uAC00\uAC00\u0627\u0410\u0905\u0391\u4E9C\u4E9C\u4E9C"
                       "\u05D0\u30A2\u0E01AA");
}

}  // namespace
}  // namespace ZroCommon::testing
