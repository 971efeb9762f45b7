#include "zro/text/ZRLang.h"

#include "tests/support/Test.h"
#include "zro/text/ZRScript.h"

namespace ZroCommon::testing {
namespace {

// "text iso3 script", with "-" for what is empty.
std::string described(const ZRLang& lang) {
    const auto orDash = [](const UnicodeString& part) {
        return part.isEmpty() ? std::string("-") : utf8(part);
    };
    return orDash(lang.toString()) + " " + orDash(lang.toISO3String()) + " "
           + std::to_string(lang.toScript().getUScriptCode());
}

TEST(ZRLang, ReadsLanguageTexts) {
    const auto read = [](const std::string& name) {
        EXPECT_EQ(ZRLang(name.c_str()), ZRLang(text(name))) << name;
        EXPECT_EQ(ZRLang(ZRName(text(name))), ZRLang(text(name))) << name;
        return described(ZRLang(text(name)));
    };
    expectTexts(read,
                {" -> - - -2", "none -> - - -2", "de -> de deu 25", "de-CH -> de-CH deu-CHE 25",
                 "en_US -> en-US eng-USA 25", "ja -> ja jpn -8", "ko-KR -> ko-KR kor-KOR -4",
                 "zh -> zh zho 73", "zh-TW -> zh-TW zho-TWN 74", "zh-HK -> zh-HK zho-HKG 74",
                 "zh-Hant-TW -> zh-TW zho-TWN 74", "ru -> ru rus 8", "ar -> ar ara 2",
                 // Bibliographic codes, alone and in front of a separator.
                 "ger -> de deu 25", "ger-DE -> de-DE deu-DEU 25", "ger_AT -> de-AT deu-AUT 25",
                 "chi-TW -> zh-TW zho-TWN 74", "gre -> el ell 14", "tib -> bo bod 39",
                 "mac.x -> mk mkd 8",
                 // What the map leaves alone: another case, longer words, none.
                 "GER -> ger - -2", "german -> german - -2", "gera -> gera - -2",
                 "none-US -> none-US -USA 25"});
}

// On purpose: the code in the table is a withdrawn one.
TEST(ZRLang, JavaneseHasAWithdrawnCode) {
    EXPECT_EQ(ZRLang("jav"), ZRLang("jaw"));
    EXPECT_EQ(ZRLang("jav-ID"), ZRLang("jaw-ID"));
}

TEST(ZRLang, TakesACountryOfItsOwn) {
    EXPECT_EQ(described(ZRLang(text("fre"), text("CA"))), "fr-CA fra-CAN 25");
    EXPECT_EQ(described(ZRLang(text("fr"), text("none"))), "fr fra 25");
    EXPECT_EQ(described(ZRLang(text("none"), text(""))), "- - -2");
    EXPECT_TRUE(ZRLang(text("none"), text("US")).isNullLang());
    EXPECT_EQ(utf8(ZRLang(text("none"), text("US")).getCountry()), "US");
}

TEST(ZRLang, AnswersForAnyText) {
    UnicodeString bogus;
    bogus.setToBogus();
    for (const ZRLang& none : {ZRLang(), ZRLang(""), ZRLang("none"), ZRLang(ZRN_none),
                               ZRLang(bogus), ZRLang(static_cast<const char*>(nullptr))}) {
        EXPECT_TRUE(none.isNullLang() && none == ZRLang());
    }
    EXPECT_FALSE(ZRLang(ZRN_ja).isNullLang());
    for (const UnicodeString& name :
         {text("\u65E5\u672C\u8A9E"), text("@=;"), text("-----"), text("x-\U0001F600"),
          UnicodeString(u'\xD800'), UnicodeString(100000, UChar32{'a'}, 100000),
          UnicodeString(100000, UChar32{'-'}, 100000)}) {
        const ZRLang lang(name);
        EXPECT_TRUE(lang == ZRLang(lang) && !(lang < ZRLang(lang)));
        EXPECT_TRUE(lang.toISO3String().isEmpty()) << name.length();
        const int script = ZRScript(name).getUScriptCode();
        EXPECT_TRUE(script == -1 || script == 25) << script;  // ICU may read an empty tag
    }
}

TEST(ZRLang, OrdersByLanguageThenCountry) {
    EXPECT_TRUE(ZRLang("de") < ZRLang("de-AT"));
    EXPECT_TRUE(ZRLang("de-CH") < ZRLang("en") && !(ZRLang("en") < ZRLang("de-CH")));
    EXPECT_FALSE(ZRLang("zh-Hans") < ZRLang("zh-Hant") || ZRLang("zh-Hant") < ZRLang("zh-Hans"));
    EXPECT_NE(ZRLang("zh-Hant"), ZRLang("zh-Hans"));
}

TEST(ZRLang, HasNamesAndNumbers) {
    EXPECT_EQ(utf8(ZRLang("ger-DE").getLanguageName().toString()), "deu");
    EXPECT_EQ(ZRLang("ja-JP").getLCID(), 0x0411U);
    EXPECT_EQ(utf8(ZRLang("de-CH").getISO3Country()), "CHE");
    EXPECT_EQ(ZRLang::getDefaultLocale().getLocale(), icu::Locale::getDefault());
    const icu::Locale before = icu::Locale::getDefault();
    UErrorCode status = U_ZERO_ERROR;
    for (const icu::Locale& locale : {icu::Locale::getJapan(), icu::Locale::getGermany()}) {
        icu::Locale::setDefault(locale, status);
        EXPECT_EQ(ZRLang::isDefaultLocaleJapanese(), locale == icu::Locale::getJapan());
    }
    icu::Locale::setDefault(before, status);
}

}  // namespace
}  // namespace ZroCommon::testing
