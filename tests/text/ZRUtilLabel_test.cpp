#include "zro/text/ZRUtil.h"

#include <limits>
#include <sstream>

#include "tests/support/Test.h"
#include "zro/text/ZRLang.h"
#include "zro/text/internal/Alphabets.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon::testing {
namespace {

std::string label(int number, const UnicodeString& format, const char* language = "",
                  const char16_t* separator = u"", int size = 0) {
    return utf8(ZRUtil::formatNumber(number, format, separator, size, ZRLang(language), ZRN_EMPTY));
}

// Rows of "7 12 as 001 -> 007 | 012", and of "27 as a in de -> ß".
void expectLabels(std::initializer_list<std::string_view> rows) {
    const auto labels = [](const std::string& row) {
        const std::size_t as = row.find(" as ");
        const std::size_t in = row.rfind(" in ");
        const std::string language = in == std::string::npos ? "" : row.substr(in + 4);
        std::istringstream numbers(row.substr(0, as));
        std::string all;
        for (std::string number; numbers >> number;) {
            const UnicodeString format = text(row.substr(as + 4, in - as - 4));
            all += " | " + label(std::stoi(number), format, language.c_str());
        }
        return all.substr(3);
    };
    expectTexts(labels, rows);
}

constexpr int kMin = std::numeric_limits<int>::min();

TEST(ZRUtilLabel, AFormatIsATokenWithTextAroundIt) {
    expectLabels({"5 as  -> 5", "-7 as 1 -> -7", "5 as 1. -> 5.", "3 as (a) -> (c)",
                  "3 as [ Ⅰ ] -> [ Ⅲ ]", "3 as a.b -> c.b", "3 as -1-1- -> -3-1-",
                  "3 as ... -> ...", "3 as .- -> .-3", "5 as * -> *5", "5 as z -> 5",
                  "5 as ab -> 5", "5 as (\U0001F600) -> (\U0001F600)5",
                  "2 as \U00010400 -> \U000104002"});
}

TEST(ZRUtilLabel, DigitsFillUpWithZeros) {
    expectLabels({"7 12345 -5 as 001 -> 007 | 12345 | -05", "-2147483648 as 01 -> -2147483648",
                  "12 as ٠١ -> ١٢", "9 as ०००१ -> ०००९", "-12 as ０１ -> －１２", "10 as ๑ -> ๑๐",
                  "3 as ௧ -> 3",      // Tamil is no digit set
                  "3 as 0x1 -> 003",  // the first and the last character count
                  "3 as 02 -> 3", "305 as 一 -> 三〇五",
                  "5 as 〇一 -> 〇五",  // 〇 is no letter, so it is text
                  "5 as 영일 -> 영오", "-5 as 일 -> -오"});
    const std::string zeros = label(1, UnicodeString(100000, u'0', 100000) + u"1");
    EXPECT_EQ(zeros, std::string(100000, '0') + "1");
}

// On purpose: a sign counts as a character of a group.
TEST(ZRUtilLabel, GroupsCountTheSign) {
    const auto grouped = [](int number, const char16_t* format, int size) {
        return label(number, format, "", u",", size);
    };
    const Rows<int, const char16_t*, int, const char*> cases = {
        {1234567, u"1", 3, "1,234,567"}, {1234567, u"", -3, "1,234,567"},
        {123, u"(1)", 3, "(123)"},       {-123, u"1", 3, "-,123"},
        {12, u"00001", 2, "0,00,12"},    {1234, u"z", 1, "1,2,3,4"},
        {1234567, u"1", 0, "1234567"},   {1234567, u"1", kMin, "1234567"},
        {4000, u"i", 3, "4,000"},        {12345, u"***", 3, "*12,345"},
        {12345, u"Α", 2, "ΦΚΙ"},         {1000, u"א", 3, "א,"},
        {2015016, u"א", 3, "ב,טו,טז"},   {1234567, u"一", 4, "一二三,四五六七"}};
    expectRows(grouped, cases);
}

TEST(ZRUtilLabel, LettersCountWithoutAZero) {
    expectLabels(
        {"27 52 2147483647 as a -> aa | az | fxshrxw", "1 60 61 as 甲子 -> 甲子 | 癸亥 | 甲子",
         // Alphabets of languages.
         "27 as a in de -> ß", "27 as a in ger -> ß", "27 as A in de -> AA", "21 as a in fi -> ö",
         "21 as A in fi -> AA", "5 as A in el -> Ε", "29 as a in ru -> я", "29 as а in be -> я",
         "29 as А in be -> АВ", "29 as а in de -> я", "27 as a in de-DE -> aa",
         "25 as α in ru -> αα", "27 as ａ in de -> ａａ",
         // Of the format alone.
         "53 as A -> BA", "29 as أ -> أأ", "47 as ア -> アア", "47 as イ -> ス", "46 as ｲ -> ｲｲ",
         "15 as ㄱ -> ㄱㄱ", "11 as 子 -> 戍", "11 as 甲 -> 甲甲", "3 as イロ -> イイ",
         "5 as (春夏秋冬) -> (春春)"});
}

TEST(ZRUtilLabel, RomanNumerals) {
    expectLabels({"3999 4000 as i -> mmmcmxcix | 4000", "444 as I. -> CDXLIV.",
                  "888 as Ｉ -> ＤＣＣＣＬＸＸＸＶＩＩＩ", "4000 as ｉ -> ４０００",
                  "4 13 1012 40000 as Ⅰ -> Ⅳ | ⅩⅢ | \u2180Ⅻ | 40000",
                  "12 1013 9000 as ⅰ -> ⅻ | ⅿⅹⅲ | ⅿ\u2182",
                  "39999 as Ⅰ -> \u2182\u2182\u2182\u2180\u2182Ⅽ\u2180ⅩⅭⅨ"});
}

TEST(ZRUtilLabel, OneLetterForEachDigit) {
    expectLabels({"15 116 500 999 15000 as א -> טו | קטז | ך | ץצט | טו",
                  "1111 10000 as Ա -> ՌՃԺԱ | ", "9999 as ա -> քջղթ", "10001 as (Ա) -> (Ա)",
                  "11111 20000 20009 as ა -> ჵჩრია |  | თ"});
}

TEST(ZRUtilLabel, BelowOneLettersHaveAZero) {
    for (const char* number : {"0", "-1", "-2147483648"}) {
        const auto below = [number](const std::string& format) {
            return label(std::stoi(number), text(format));
        };
        expectTexts(below, {"a -> 0", "I -> 0", "א -> 0", "أ -> ٠", "い -> 〇", "가 -> 영",
                            "Ａ -> ０", "甲子 -> 〇", "春夏 -> 〇"});
    }
}

TEST(ZRUtilLabel, LettersAndDigitsRepeatedAreMarksToo) {
    expectLabels({"2 4 0 as *** -> ** | *4 | *0", "-1 as †† -> †-1", "2 as ii -> ii",
                  "3 as 11 -> 13", "1 as 一一 -> 一", "3 as (ii) -> (3)", "3 as (11) -> (3)"});
}

TEST(ZRUtilLabel, SixtySevenAlphabets) {
    const std::string languages =
        "be bg cs da de el eo es et eu fi ga hu is it lt lv mk mt nl no pl "
        "ro ru sk sl sq sr sv tg tr uk uz vi";
    int count = 0;
    std::size_t letters = 0;
    for (std::size_t at = 0; at < languages.size(); at += 3) {
        const ZRLang language(languages.substr(at, 2).c_str());
        for (const bool isUpper : {false, true}) {
            const auto row = internal::lettersOf(language, internal::LetterScript::Any, isUpper);
            count += row.empty() ? 0 : 1;
            letters += row.size();
            ZRUtil::cleanup();  // which takes nothing away
        }
    }
    EXPECT_EQ(count, 67);
    EXPECT_EQ(letters, 1957U);
}

std::string kansuji(const std::string& source, ZRNameEnum method, ZRName digits = ZRN_kanji,
                    const char16_t* units = u"") {
    return utf8(ZRUtil::convertKansuji(text(source), method, digits, units, u"spare"));
}

TEST(ZRUtilKansuji, WritesNumbersInThreeWays) {
    const auto threeWays = [](const std::string& source) {
        return kansuji(source, ZRN_auto) + " | " + kansuji(source, ZRN_grouping) + " | "
               + kansuji(source, ZRN_readable);
    };
    expectTexts(
        threeWays,
        {" ->  |  | ", "0 -> 〇 | 〇 | 〇", "0円 -> 〇円 | 〇円 | 円",
         "0.5 -> 〇・五 | 〇・五 | ・五", "0, -> 〇、 | 〇 | 〇",
         "1000 -> 一〇〇〇 | 一〇〇〇 | 千", "1050 -> 一〇五〇 | 一〇五〇 | 千五十",
         "12,345.67円 -> 一二、三四五・六七円 | 一万二三四五・六七円 | 一万二千三百四十五・六七円",
         "12345678 -> 一二三四五六七八 | 一二三四万五六七八 | 千二百三十四万五千六百七十八",
         "100000000 -> 一〇〇〇〇〇〇〇〇 | 一億 | 一億万",
         "120000000 -> 一二〇〇〇〇〇〇〇 | 一億二〇〇〇万 | 一億二千万",
         "00012345 -> 〇〇〇一二三四五 | 〇〇〇一万二三四五 | 一万二千三百四十五",
         "00000000 -> 〇〇〇〇〇〇〇〇 | 〇〇〇〇万〇〇〇〇 | 〇",
         "1.2.3,a -> 一・二．三、ａ | 一・二．三ａ | 一・二．三ａ",
         "1.,2 -> 一・，二 | 一・，二 | 一・，二",
         ".5 a~漢 -> ．五 ａ～漢 | ．五 ａ～漢 | ．五 ａ～漢"});
}

// The unit 極 ends at the 52nd digit; digits above it have none.
TEST(ZRUtilKansuji, DigitsAboveTheLargestUnit) {
    const std::string long52 = "1" + std::string(48, '0');
    const std::string long53 = "1" + std::string(52, '0');
    EXPECT_EQ(kansuji(long52, ZRN_grouping), "一極");
    EXPECT_EQ(kansuji(long52, ZRN_readable), "一極載正澗溝穣秭垓京兆億万");
    EXPECT_EQ(kansuji(long53, ZRN_grouping), "一〇〇〇〇極");
    EXPECT_EQ(kansuji("5," + long53, ZRN_readable), "五一〇〇〇〇極載正澗溝穣秭垓京兆億万");
}

TEST(ZRUtilKansuji, DigitsAndUnitsAreReplaced) {
    EXPECT_EQ(kansuji("12340", ZRN_readable, ZRN_latin), "１万２千３百４十");
    EXPECT_EQ(kansuji("12340", ZRN_readable, ZRName(u"零壱弐"), u"拾佰"), "壱万弐千三佰四拾");
    EXPECT_EQ(kansuji("1,2.3", ZRN_auto, ZRName(u"0123456789XYZ"), u"abcdefghijklmnopqrst"),
              "1、2・3");
    EXPECT_EQ(kansuji("10000", ZRN_grouping, ZRN_kanji, u"abcdefghijklmnopqrst"), "一d");
}

}  // namespace
}  // namespace ZroCommon::testing
