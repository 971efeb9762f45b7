#include "zro/text/ZRScript.h"

#include <array>
#include <string>

#include "zro/text/ZRChar.h"
#include "zro/text/ZRLang.h"

namespace ZroCommon {
namespace {

// The first of the scripts that ICU knows for a script's or a language's text.
ZRUScriptCode askIcu(const UnicodeString& text) {
    std::string narrow;
    text.toUTF8String(narrow);
    std::array<UScriptCode, 8> codes{};
    UErrorCode status = U_ZERO_ERROR;
    const int32_t count = uscript_getCode(narrow.c_str(), codes.data(), codes.size(), &status);
    return U_SUCCESS(status) && count > 0 ? static_cast<ZRUScriptCode>(codes[0]) : ZRUScriptInvalid;
}

ZRUScriptCode scriptOfLanguage(const UnicodeString& text) {
    const ZRLang lang(text);
    switch (ZRName(lang.getLanguage())) {
    case ZRN_ja: return ZRUScriptJapanese;
    case ZRN_ko: return ZRUScriptKorean;
    case ZRN_zh: break;
    default: return askIcu(text);
    }
    const UnicodeString country = lang.getCountry();
    const bool isTraditional = country == UnicodeString(u"TW") || country == UnicodeString(u"HK");
    return isTraditional ? ZRUScriptTraditionalHan : ZRUScriptSimplifiedHan;
}

ZRUScriptCode scriptOfText(const UnicodeString& text) {
    switch (ZRName(text)) {
    case ZRN_EMPTY: return ZRUScriptAuto;
    case ZRN_Hans: return ZRUScriptSimplifiedHan;
    case ZRN_Hant: return ZRUScriptTraditionalHan;
    case ZRN_Hira: return ZRUScriptHiragana;
    case ZRN_Jpan: return ZRUScriptJapanese;
    case ZRN_Kana: return ZRUScriptKatakana;
    case ZRN_Math: return ZRUScriptMathematics;
    case ZRN_auto: return ZRUScriptAuto;
    case ZRN_none: return ZRUScriptNone;
    default: return scriptOfLanguage(text);
    }
}

// What the text constructor would answer, but for "Latf" and "Latg", which count as Latin here, and
// for the empty name.
ZRUScriptCode scriptOfName(ZRName name) {
    switch (name) {
    case ZRN_EMPTY: return ZRUScriptInvalid;
    case ZRN_Arab: return ZRUScriptArabic;
    case ZRN_Cyrl: return ZRUScriptCyrillic;
    case ZRN_Deva: return ZRUScriptDevanagari;
    case ZRN_Grek: return ZRUScriptGreek;
    case ZRN_Hang: return ZRUScriptHangul;
    case ZRN_Hani: return ZRUScriptHan;
    case ZRN_Hans:
    case ZRN_zh:
    case ZRN_zh_CHN:
    case ZRN_zh_CN:
    case ZRN_zh_SG:
    case ZRN_zho:
    case ZRN_zho_CHN:
    case ZRN_zho_CN: return ZRUScriptSimplifiedHan;
    case ZRN_Hant:
    case ZRN_zh_HK:
    case ZRN_zh_TW:
    case ZRN_zh_TWN:
    case ZRN_zho_TW:
    case ZRN_zho_TWN: return ZRUScriptTraditionalHan;
    case ZRN_Hebr: return ZRUScriptHebrew;
    case ZRN_Hira: return ZRUScriptHiragana;
    case ZRN_Jpan:
    case ZRN_ja:
    case ZRN_jpn: return ZRUScriptJapanese;
    case ZRN_Kana: return ZRUScriptKatakana;
    case ZRN_Latf:
    case ZRN_Latg:
    case ZRN_Latn: return ZRUScriptLatin;
    case ZRN_Math: return ZRUScriptMathematics;
    case ZRN_Qaai: return ZRUScriptInherited;
    case ZRN_Thai: return ZRUScriptThai;
    case ZRN_Zyyy: return ZRUScriptCommon;
    case ZRN_auto: return ZRUScriptAuto;
    case ZRN_ko:
    case ZRN_kor: return ZRUScriptKorean;
    case ZRN_none: return ZRUScriptNone;
    default: return scriptOfText(name.toString());
    }
}

ZRName icuShortName(ZRUScriptCode code) {
    const char* name = code > 0 ? uscript_getShortName(static_cast<UScriptCode>(code)) : nullptr;
    return name == nullptr ? ZRName() : ZRName(UnicodeString(name, -1, US_INV));
}

// Currency signs and the like, which are set in the font of Latin text.
bool isLatinSign(int c) {
    switch (c) {
    case 0xA2:
    case 0xA3:
    case 0xA4:
    case 0xA5:
    case 0xA7:
    case 0xA8:
    case 0xA9:
    case 0xAA:
    case 0xAE:
    case 0xAF:
    case 0xB4:
    case 0xB5:
    case 0xB8:
    case 0xBA: return true;
    default: return false;
    }
}

// Of text that is not CJK, at the end of any line.
bool hangsAtEnd(int c) {
    switch (c) {
    case ',':
    case '-':
    case '.':
    case '"':
    case '\'':
    case 0x00AD:
    case 0x2010:
    case 0x2019:
    case 0x201D: return true;
    default: return ZRChar::isPunct(c) && ZRChar::getLineBreak(c) == U_LB_CLOSE_PUNCTUATION;
    }
}

// Of CJK text: the commas and stops of the script.
bool hangsAtEndOfCjk(ZRUScriptCode script, int c) {
    switch (script) {
    case ZRUScriptJapanese:
    case ZRUScriptHiragana:
    case ZRUScriptKatakana:
    case ZRUScriptKatakanaOrHiragana:
    case ZRUScriptSimplifiedHan: return ZRChar::isHangingPunctuationEndChar(c);
    case ZRUScriptTraditionalHan: return (c >= 0xFE50 && c <= 0xFE52) || c == 0xFF64;
    default: return false;
    }
}

}  // namespace

ZRScript::ZRScript(ZRName name) : m_code(scriptOfName(name)) {}

ZRScript::ZRScript(const UnicodeString& text) : m_code(scriptOfText(text)) {}

ZRName ZRScript::getScriptCode() const {
    switch (m_code) {
    case ZRUScriptMathematics: return ZRN_Math;
    case ZRUScriptJapanese: return ZRN_Jpan;
    case ZRUScriptKorean:  // On purpose: read back, it is Hangul.
    case ZRUScriptHangul: return ZRN_Hang;
    case ZRUScriptCommon: return ZRN_Zyyy;
    case ZRUScriptInherited: return ZRN_Qaai;
    case ZRUScriptArabic: return ZRN_Arab;
    case ZRUScriptCyrillic: return ZRN_Cyrl;
    case ZRUScriptDevanagari: return ZRN_Deva;
    case ZRUScriptGreek: return ZRN_Grek;
    case ZRUScriptHan: return ZRN_Hani;
    case ZRUScriptHebrew: return ZRN_Hebr;
    case ZRUScriptHiragana: return ZRN_Hira;
    case ZRUScriptKatakana: return ZRN_Kana;
    case ZRUScriptLatin: return ZRN_Latn;
    case ZRUScriptThai: return ZRN_Thai;
    case ZRUScriptKatakanaOrHiragana: return ZRN_Hrkt;
    case ZRUScriptSimplifiedHan: return ZRN_Hans;
    case ZRUScriptTraditionalHan: return ZRN_Hant;
    default: return icuShortName(m_code);
    }
}

UnicodeString ZRScript::getScriptName() const {
    if (m_code < 0) {
        return toString();
    }
    const char* name = uscript_getName(static_cast<UScriptCode>(m_code));
    return name == nullptr ? UnicodeString() : UnicodeString(name, -1, US_INV);
}

bool ZRScript::isCJK() const {
    return m_code == ZRUScriptKorean || m_code == ZRUScriptHangul || isCJKJustify();
}

bool ZRScript::isCJKJustify() const {
    switch (m_code) {
    case ZRUScriptJapanese:
    case ZRUScriptBopomofo:
    case ZRUScriptHan:
    case ZRUScriptHiragana:
    case ZRUScriptKatakana:
    case ZRUScriptKatakanaOrHiragana:
    case ZRUScriptSimplifiedHan:
    case ZRUScriptTraditionalHan: return true;
    default: return false;
    }
}

bool ZRScript::isIndependentScript() const {
    switch (m_code) {
    case ZRUScriptMathematics:
    case ZRUScriptArabic:
    case ZRUScriptBengali:
    case ZRUScriptDevanagari:
    case ZRUScriptEthiopic:
    case ZRUScriptGeorgian:
    case ZRUScriptGujarati:
    case ZRUScriptGurmukhi:
    case ZRUScriptHebrew:
    case ZRUScriptKannada:
    case ZRUScriptKhmer:
    case ZRUScriptLao:
    case ZRUScriptMalayalam:
    case ZRUScriptMongolian:
    case ZRUScriptMyanmar:
    case ZRUScriptOgham:
    case ZRUScriptOriya:
    case ZRUScriptRunic:
    case ZRUScriptSinhala:
    case ZRUScriptSyriac:
    case ZRUScriptTamil:
    case ZRUScriptTelugu:
    case ZRUScriptThaana:
    case ZRUScriptThai:
    case ZRUScriptTibetan: return true;
    default: return false;
    }
}

bool ZRScript::isZenkakuScript(int c) const {
    const UEastAsianWidth width = ZRChar::getEastAsianWidth(c);
    if (width != U_EA_AMBIGUOUS) {
        return ZRChar::isZenkaku(width);
    }
    return isCJK() && (ZRChar::isSymbolJIS(c) || getScript(c) != ZRUScriptLatin);
}

bool ZRScript::isHangingStartChar(int c) const {
    return c == '"' || c == '\'' || ZRChar::isOpenParenEtc(c) || ZRChar::isBullet(c);
}

bool ZRScript::isHangingEndChar(int c) const {
    return isCJK() ? hangsAtEndOfCjk(m_code, c) : hangsAtEnd(c);
}

bool ZRScript::isHangingLastChar(int c) const {
    return hangsAtEnd(c) || (isCJK() && hangsAtEndOfCjk(m_code, c));
}

char16_t ZRScript::getA() const {
    switch (m_code) {
    case ZRUScriptJapanese:
    case ZRUScriptHiragana:
    case ZRUScriptKatakanaOrHiragana: return u'\u3042';
    case ZRUScriptKorean:
    case ZRUScriptHangul: return u'\uAC00';
    case ZRUScriptArabic: return u'\u0627';
    case ZRUScriptCyrillic: return u'\u0410';
    case ZRUScriptDevanagari: return u'\u0905';
    case ZRUScriptGreek: return u'\u0391';
    case ZRUScriptHan:
    case ZRUScriptSimplifiedHan:
    case ZRUScriptTraditionalHan: return u'\u4E9C';
    case ZRUScriptHebrew: return u'\u05D0';
    case ZRUScriptKatakana: return u'\u30A2';
    case ZRUScriptThai: return u'\u0E01';
    default: return u'A';
    }
}

ZRScript ZRScript::getScript(int codePoint) {
    if (isHebrewScript(codePoint)) {
        return ZRUScriptHebrew;
    }
    if (isArabicScript(codePoint)) {
        return ZRUScriptArabic;
    }
    if (isDevanagariScript(codePoint)) {
        return ZRUScriptDevanagari;
    }
    if (isLatinSign(codePoint)) {
        return ZRUScriptLatin;
    }
    if ((codePoint >= 0x3099 && codePoint <= 0x309C) || codePoint == 0x30FC) {
        return ZRUScriptKatakanaOrHiragana;
    }
    if (ZRChar::isMathOperator(codePoint)) {
        return ZRUScriptMathematics;
    }
    UErrorCode status = U_ZERO_ERROR;
    return uscript_getScript(codePoint, &status);
}

ZRScript ZRScript::getScriptFromText(const UnicodeString& text) {
    for (int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
        const ZRScript script = getScript(text.char32At(at));
        if (script != ZRUScriptCommon && script != ZRUScriptInvalid) {
            return script;
        }
    }
    return ZRUScriptCommon;
}

bool ZRScript::isArabicScript(int c) {
    const bool isDigit = (c >= 0x0660 && c <= 0x0669) || (c >= 0x06F0 && c <= 0x06F9);
    return ZRChar::isArabic(c) && !isDigit;
}

}  // namespace ZroCommon
