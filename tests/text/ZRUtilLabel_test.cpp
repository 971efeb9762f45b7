#include "zro/text/ZRUtil.h"

#include <limits>
#include <vector>

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

struct Row {
    const char16_t* format = u"";
    std::vector<int> numbers;
    const char* labels = "";  // with bars between
    const char* language = "";
};

void expectLabels(std::initializer_list<Row> rows) {
    for (const auto& [format, numbers, labels, language] : rows) {
        std::string all;
        for (const int number : numbers) {
            all += label(number, format, language) + " | ";
        }
        EXPECT_EQ(all, labels + std::string(" | ")) << utf8(format) << ' ' << language;
    }
}

constexpr int kMin = std::numeric_limits<int>::min();

TEST(ZRUtilLabel, AFormatIsATokenWithTextAroundIt) {
    expectLabels({
        {u"", {5}, "5"},
        {u"1", {-7}, "-7"},
        {u"1.", {5}, "5."},
        {u"(a)", {3}, "(c)"},
        {u"[ Ⅰ ]", {3}, "[ Ⅲ ]"},
        {u"a.b", {3}, "c.b"},
        {u"-1-1-", {3}, "-3-1-"},
        {u"...", {3}, "..."},
        {u".-", {3}, ".-3"},
        {u"*", {5}, "*5"},
        {u"z", {5}, "5"},
        {u"ab", {5}, "5"},
        {u"(\U0001F600)", {5}, "(\U0001F600)5"},
        {u"\U00010400", {2}, "\U000104002"},
    });
}

TEST(ZRUtilLabel, DigitsFillUpWithZeros) {
    expectLabels({
        {u"001", {7, 12345, -5}, "007 | 12345 | -05"},
        {u"01", {kMin}, "-2147483648"},
        {u"٠١", {12}, "١٢"},
        {u"०००१", {9}, "०००९"},
        {u"０１", {-12}, "－１２"},
        {u"๑", {10}, "๑๐"},
        {u"௧", {3}, "3"},      // Tamil is no digit set
        {u"0x1", {3}, "003"},  // the first and the last character count
        {u"02", {3}, "3"},
        {u"一", {305}, "三〇五"},
        {u"〇一", {5}, "〇五"},  // 〇 is no letter, so it is text
        {u"영일", {5}, "영오"},
        {u"일", {-5}, "-오"},
    });
    const std::string zeros = label(1, UnicodeString(100000, u'0', 100000) + u"1");
    EXPECT_EQ(zeros, std::string(100000, '0') + "1");
}

// On purpose: a sign counts as a character of a group.
TEST(ZRUtilLabel, GroupsCountTheSign) {
    for (const auto& [number, format, size, expected] :
         Rows<int, const char16_t*, int, const char*>{{1234567, u"1", 3, "1,234,567"},
                                                      {1234567, u"", -3, "1,234,567"},
                                                      {123, u"(1)", 3, "(123)"},
                                                      {-123, u"1", 3, "-,123"},
                                                      {12, u"00001", 2, "0,00,12"},
                                                      {1234, u"z", 1, "1,2,3,4"},
                                                      {1234567, u"一", 4, "一二三,四五六七"},
                                                      {1234567, u"1", 0, "1234567"},
                                                      {1234567, u"1", kMin, "1234567"},
                                                      {4000, u"i", 3, "4,000"},
                                                      {12345, u"***", 3, "*12,345"},
                                                      {12345, u"Α", 2, "ΦΚΙ"},
                                                      {1000, u"א", 3, "א,"},
                                                      {2015016, u"א", 3, "ב,טו,טז"}}) {
        EXPECT_EQ(label(number, format, "", u",", size), expected) << number << utf8(format);
    }
}

TEST(ZRUtilLabel, LettersCountWithoutAZero) {
    expectLabels({{u"a", {27, 52, std::numeric_limits<int>::max()}, "aa | az | fxshrxw"},
                  {u"甲子", {1, 60, 61}, "甲子 | 癸亥 | 甲子"}});
    for (const auto& [number, format, letter, language] :
         Rows<int, const char16_t*, const char*, const char*>{
             {27, u"a", "ß", "de"},     {27, u"a", "ß", "ger"},    {27, u"A", "AA", "de"},
             {21, u"a", "ö", "fi"},     {21, u"A", "AA", "fi"},    {5, u"A", "Ε", "el"},
             {29, u"a", "я", "ru"},     {29, u"а", "я", "be"},     {29, u"А", "АВ", "be"},
             {29, u"а", "я", "de"},     {27, u"a", "aa", "de-DE"}, {25, u"α", "αα", "ru"},
             {27, u"ａ", "ａａ", "de"}, {53, u"A", "BA", ""},      {29, u"أ", "أأ", ""},
             {47, u"ア", "アア", ""},   {47, u"イ", "ス", ""},     {46, u"ｲ", "ｲｲ", ""},
             {15, u"ㄱ", "ㄱㄱ", ""},   {11, u"子", "戍", ""},     {11, u"甲", "甲甲", ""},
             {3, u"イロ", "イイ", ""}}) {
        EXPECT_EQ(label(number, format, language), letter) << number << utf8(format) << language;
    }
    EXPECT_EQ(label(5, u"(春夏秋冬)"), "(春春)");
}

TEST(ZRUtilLabel, RomanNumerals) {
    expectLabels({
        {u"i", {3999, 4000}, "mmmcmxcix | 4000"},
        {u"I.", {444}, "CDXLIV."},
        {u"Ｉ", {888}, "ＤＣＣＣＬＸＸＸＶＩＩＩ"},
        {u"ｉ", {4000}, "４０００"},
        {u"Ⅰ", {4, 13, 1012, 40000}, "Ⅳ | ⅩⅢ | \u2180Ⅻ | 40000"},
        {u"ⅰ", {12, 1013, 9000}, "ⅻ | ⅿⅹⅲ | ⅿ\u2182"},
        {u"Ⅰ", {39999}, "\u2182\u2182\u2182\u2180\u2182Ⅽ\u2180ⅩⅭⅨ"},
    });
}

TEST(ZRUtilLabel, OneLetterForEachDigit) {
    expectLabels({
        {u"א", {15, 116, 500, 999, 15000}, "טו | קטז | ך | ץצט | טו"},
        {u"Ա", {1111, 10000}, "ՌՃԺԱ | "},
        {u"ա", {9999}, "քջղթ"},
        {u"(Ա)", {10001}, "(Ա)"},
        {u"ა", {11111, 20000, 20009}, "ჵჩრია |  | თ"},
    });
}

TEST(ZRUtilLabel, BelowOneLettersHaveAZero) {
    for (const auto& [format, zero] : Rows<const char16_t*, const char*>{{u"a", "0"},
                                                                         {u"I", "0"},
                                                                         {u"א", "0"},
                                                                         {u"أ", "٠"},
                                                                         {u"い", "〇"},
                                                                         {u"가", "영"},
                                                                         {u"Ａ", "０"},
                                                                         {u"甲子", "〇"},
                                                                         {u"春夏", "〇"}}) {
        for (const int number : {0, -1, kMin}) {
            EXPECT_EQ(label(number, format), zero) << number << utf8(format);
        }
    }
}

TEST(ZRUtilLabel, LettersAndDigitsRepeatedAreMarksToo) {
    expectLabels({
        {u"***", {2, 4, 0}, "** | *4 | *0"},
        {u"††", {-1}, "†-1"},
        {u"ii", {2}, "ii"},
        {u"11", {3}, "13"},
        {u"一一", {1}, "一"},
        {u"(ii)", {3}, "(3)"},
        {u"(11)", {3}, "(3)"},
    });
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
    for (const auto& [source, plain, grouping, readable] :
         Rows<const char*, const char*, const char*, const char*>{
             {"", "", "", ""},
             {"0", "〇", "〇", "〇"},
             {"0円", "〇円", "〇円", "円"},
             {"0.5", "〇・五", "〇・五", "・五"},
             {"0,", "〇、", "〇", "〇"},
             {"1000", "一〇〇〇", "一〇〇〇", "千"},
             {"1050", "一〇五〇", "一〇五〇", "千五十"},
             {"12,345.67円", "一二、三四五・六七円", "一万二三四五・六七円",
              "一万二千三百四十五・六七円"},
             {"12345678", "一二三四五六七八", "一二三四万五六七八", "千二百三十四万五千六百七十八"},
             {"100000000", "一〇〇〇〇〇〇〇〇", "一億", "一億万"},
             {"120000000", "一二〇〇〇〇〇〇〇", "一億二〇〇〇万", "一億二千万"},
             {"00012345", "〇〇〇一二三四五", "〇〇〇一万二三四五", "一万二千三百四十五"},
             {"00000000", "〇〇〇〇〇〇〇〇", "〇〇〇〇万〇〇〇〇", "〇"},
             {"1.2.3,a", "一・二．三、ａ", "一・二．三ａ", "一・二．三ａ"},
             {"1.,2", "一・，二", "一・，二", "一・，二"},
             {".5 a~漢", "．五 ａ～漢", "．五 ａ～漢", "．五 ａ～漢"},
         }) {
        EXPECT_EQ(kansuji(source, ZRN_auto), plain) << source;
        EXPECT_EQ(kansuji(source, ZRN_grouping), grouping) << source;
        EXPECT_EQ(kansuji(source, ZRN_readable), readable) << source;
    }
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
