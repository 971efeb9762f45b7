#include <locale>
#include <sstream>

#include <gmock/gmock.h>

#include "tests/support/Test.h"
#include "zro/text/xls/XlsFormatString.h"

namespace ZroCommon::testing {
namespace {

// Compiled text and kind of each section, and all other fields that are not 0.
std::string sections(const UnicodeString& format, const XlsFormatString& formats = {}) {
    FMT2 compiled;
    XlsFormatFault fault;
    if (formats.fmtget(format, &compiled, &fault) == 0) {
        return "invalid at " + std::to_string(fault.position);
    }
    std::ostringstream all;
    all.imbue(std::locale::classic());
    for (int index = 0; index < compiled.sectionCount; ++index) {
        const FMT& s = compiled.section[static_cast<std::size_t>(index)];
        EXPECT_EQ(s.compiledLength, s.compiled.length());
        EXPECT_EQ(s.sectionIndex, index);
        EXPECT_EQ(s.expAll, s.expPlaces);
        all << (index > 0 ? " | " : "") << utf8(s.compiled) << " kind " << int{s.kind};
        const std::pair<const char*, int> fields[] = {
            {"color", s.colorIndex},      {"grouped", s.grouped},       {"point", s.hasPoint},
            {"exponent", s.hasExponent},  {"slash", s.hasSlash},        {"commas", s.commaCount},
            {"percents", s.percentCount}, {"intZeros", s.intZeros},     {"intPlaces", s.intPlaces},
            {"intDigits", s.intDigits},   {"fracPlaces", s.fracPlaces}, {"fracZeros", s.fracZeros},
            {"expPlaces", s.expPlaces},   {"expZeros", s.expZeros},     {"num", s.numeratorDigits},
            {"den", s.denominatorDigits}, {"over", s.fixedDenominator}, {"dbNum", s.dbNum},
            {"hour", s.hasHour},          {"half", s.hasAmPm},          {"last", s.lastToken}};
        for (const auto& [name, value] : fields) {
            if (value != 0) {
                all << ' ' << name << ' ' << value;
            }
        }
        if (s.condition != 0) {
            all << " if " << int{s.condition} << ' ' << s.conditionValue;
        }
    }
    return all.str();
}

std::string compiled(const std::string& format) {
    return sections(text(format));
}

TEST(XlsFormatCompile, CountsWhatASectionHolds) {
    expectTexts(
        compiled,
        {" ->  kind 0", "0 -> 0 kind 1 intZeros 1 intPlaces 1 intDigits 1 last 3",
         "#,##0.0#? -> ###0.0#? kind 1 grouped 1 point 1 intZeros 1 intPlaces 4 intDigits 4 "
         "fracPlaces 3 fracZeros 2 last 5",
         "0,,% -> 0,,% kind 1 commas 2 percents 1 intZeros 1 intPlaces 1 intDigits 1 last 9",
         "0,,0 -> 0,0 kind 1 grouped 1 commas 1 intZeros 2 intPlaces 2 intDigits 2 last 3",
         "0.0E+0# -> 0.0E+0# kind 1 point 1 exponent 1 intZeros 1 intPlaces 1 intDigits 1 "
         "fracPlaces 1 fracZeros 1 expPlaces 2 expZeros 1 last 4",
         "#\\ ?/?? -> #\" \"?/?? kind 1 slash 1 intPlaces 2 intDigits 1 num 1 den 2 last 5",
         "?/16 -> ?/16 kind 1 slash 1 intPlaces 1 num 1 den 2 over 16 last 3",
         "?/16, -> ?/16, kind 1 slash 1 commas 1 intPlaces 1 num 1 den 2 over 16 last 10",
         "?/100000 -> ?/100000 kind 1 slash 1 intPlaces 1 num 1 den 6 over 34464 last 3",
         "[Red]0;[Color56]0 -> 0 kind 1 color 122 intZeros 1 intPlaces 1 intDigits 1 last 3 | "
         "0 kind 1 color 63 intZeros 1 intPlaces 1 intDigits 1 last 3",
         "[>=-1.5][<>1e]@ -> invalid at 8", "[>=-1.5]G -> R3 kind 2 last 31 if 1 -1.5",
         "[=+5.]G;[<16777217]G -> R3 kind 2 last 31 if 6 5 | R3 kind 2 last 31 if 4 1.67772e+07",
         "[DBNum2]GenERAL -> G kind 1 dbNum 2 last 52",
         ";;; ->  kind 0 |  kind 0 last 2 |  kind 0 last 2 |  kind 3 last 2",
         ";;;0 ->  kind 0 |  kind 0 last 2 |  kind 0 last 2 | 0 kind 1 intZeros 1 intPlaces 1 "
         "intDigits 1 last 3"});
}

TEST(XlsFormatCompile, NormalisesTokens) {
    expectTexts(
        compiled,
        {"yymMdD -> Y2M2D2 kind 2 last 24", "yyyymmmmmmddddd -> Y4M5M1D4D1 kind 2 last 23",
         "aaaaaaa -> D6D5 kind 2 last 27", "rrrggggeee -> R2R1R5R3R7R6 kind 2 last 34",
         "h:mmm -> h1\":\"m2m1 kind 2 hour 1 last 19", "m:SmmSm -> m1\":\"s1M2s1M1 kind 2 last 14",
         "mm:ssmmm:s -> m2\":\"s2M3\":\"s1 kind 2 last 42", "[m]mm -> m3M2 kind 2 last 15",
         "[hh][mm][ss][h][s] -> h4m4s4h3s3 kind 2 hour 1 last 44",
         "hhhA/P -> h2h1A/P kind 2 hour 1 half 1 last 46",
         "ss.000 -> s2.000 kind 2 point 1 fracPlaces 3 fracZeros 3 last 3",
         "ss.0# -> s2.0# kind 1 point 1 fracPlaces 2 fracZeros 1 last 4",
         // Literals run together until something else stands between.
         R"("a"\b:_x"" -> "ab: " kind 0 last 53)",
         R"("a"[Red]"b" -> "a""b" kind 0 color 122 last 53)",
         "\"a\"[$\u20AC-407]\"b\" -> \"a\u20AC\"\"b\" kind 0 last 53",
         "[$-F800] ->  kind 0 last 55", R"("a"\"\b -> "a"\""b" kind 0 last 53)",
         "*-* -> *-* kind 0 last 49", "\\ -> \"\" kind 0 last 53", "_ -> \" \" kind 0 last 53",
         ", -> \",\" kind 0 last 53", "@*\" -> @*\" kind 3 last 49"});
}

TEST(XlsFormatCompile, RefusesWhatHasNoMeaning) {
    expectTexts(compiled,
                {"$0 -> invalid at 0", "\u20AC0 -> invalid at 0", "\t0 -> invalid at 0",
                 "\"abc -> invalid at 0", "y -> invalid at 0", "Am/Pm -> invalid at 0",
                 "aa -> invalid at 0", "1 -> invalid at 0", "@[>1] -> invalid at 1",
                 "yyy -> invalid at 2", "yyyyy -> invalid at 4", "0  -> invalid at 1",
                 "0+0 -> invalid at 1", "0z -> invalid at 1", "0\x7F -> invalid at 1",
                 "0/8# -> invalid at 3", "Gen -> invalid at 2", "Dezember -> invalid at 2",
                 // Words in brackets.
                 "[red]0 -> invalid at 0", "[H] -> invalid at 0", "[hhh] -> invalid at 0",
                 "[h -> invalid at 0", "[Color0] -> invalid at 0", "[Color] -> invalid at 0",
                 "[Color9 -> invalid at 0", "[Color57] -> invalid at 0",
                 "[Color99999999999] -> invalid at 0", "[DBNum4]0 -> invalid at 0",
                 "[$x -> invalid at 0", "[>1-2]0 -> invalid at 0", "[> 1]0 -> invalid at 0",
                 "[ -> invalid at 0", "[>1.2.3]0 -> invalid at 0",
                 // Sections.
                 "m/d/yy h:mm -> invalid at 6", "0.00;-0.00 -> invalid at 5",
                 "0;0;0;0;0 -> invalid at 7", "0;0;[>1]0 -> invalid at 4",
                 "#,##0_);(#,##0) -> invalid at 8"});
}

// On purpose: the comma and the character behind it become one comma, a section mark too.
TEST(XlsFormatCompile, ALiteralCommaSwallowsACharacter) {
    expectTexts(compiled, {"dddd,mmmm -> D4\",\"M3 kind 2 last 16",
                           ",;0 -> \",\"0 kind 1 intZeros 1 intPlaces 1 intDigits 1 last 3"});
}

TEST(XlsFormatCompile, ASectionHasRoomFor255Characters) {
    const UnicodeString most(255, u'0', 255);
    EXPECT_THAT(sections(most), ::testing::HasSubstr("intDigits 255"));
    EXPECT_EQ(sections(most + u"0"), "invalid at 255");
    EXPECT_EQ(sections(u"0\"" + most + u"\""), "invalid at 1");
    EXPECT_THAT(sections(most + u";" + most), ::testing::HasSubstr(" | 000"));
}

TEST(XlsFormatCompile, OtherVersionsOfABookHaveNoEras) {
    XlsFormatString formats;
    formats.bookFlags = 0x700;
    EXPECT_EQ(sections(u"ag", formats), "\"ag\" kind 0 last 53");
    EXPECT_EQ(sections(u"aaag", formats), "D5\"g\" kind 2 last 53");
    EXPECT_EQ(sections(u"e", formats), "invalid at 0");
}

}  // namespace
}  // namespace ZroCommon::testing
