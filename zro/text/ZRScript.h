#pragma once

#include <concepts>
#include <cstdint>

#include <unicode/uscript.h>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

/// A script: ICU's number of it (any `UScriptCode`, the ones that are used by name below), or a
/// code of the library's own below zero.
enum ZRUScriptCode : std::int32_t {
    ZRUScriptInvalid = -1,
    ZRUScriptAuto = -2,  ///< to be told from the text
    ZRUScriptNone = -3,
    ZRUScriptKorean = -4,    ///< Hangul with Han
    ZRUScriptJapanese = -8,  ///< Han with kana
    ZRUScriptMathematics = -11,

    ZRUScriptCommon = 0,
    ZRUScriptInherited = 1,
    ZRUScriptArabic = 2,
    ZRUScriptBengali = 4,
    ZRUScriptBopomofo = 5,
    ZRUScriptCyrillic = 8,
    ZRUScriptDevanagari = 10,
    ZRUScriptEthiopic = 11,
    ZRUScriptGeorgian = 12,
    ZRUScriptGreek = 14,
    ZRUScriptGujarati = 15,
    ZRUScriptGurmukhi = 16,
    ZRUScriptHan = 17,
    ZRUScriptHangul = 18,
    ZRUScriptHebrew = 19,
    ZRUScriptHiragana = 20,
    ZRUScriptKannada = 21,
    ZRUScriptKatakana = 22,
    ZRUScriptKhmer = 23,
    ZRUScriptLao = 24,
    ZRUScriptLatin = 25,
    ZRUScriptMalayalam = 26,
    ZRUScriptMongolian = 27,
    ZRUScriptMyanmar = 28,
    ZRUScriptOgham = 29,
    ZRUScriptOriya = 31,
    ZRUScriptRunic = 32,
    ZRUScriptSinhala = 33,
    ZRUScriptSyriac = 34,
    ZRUScriptTamil = 35,
    ZRUScriptTelugu = 36,
    ZRUScriptThaana = 37,
    ZRUScriptThai = 38,
    ZRUScriptTibetan = 39,
    ZRUScriptKatakanaOrHiragana = 54,
    ZRUScriptSimplifiedHan = 73,
    ZRUScriptTraditionalHan = 74,
};

/// The script of a run of text, as line breaking, justification, hanging punctuation and glyph
/// orientation need it.
///
/// A small value: copy it freely. What is no script has the code -1 and no name; nothing throws.
class ZRO_API ZRScript {
public:
    /// The common script.
    ZRScript() = default;
    ZRScript(ZRUScriptCode code) : m_code(code) {}
    ZRScript(UScriptCode code) : m_code(static_cast<ZRUScriptCode>(code)) {}
    /// A code by its number. Takes nothing but `int`, or every enumeration would be a script.
    template <std::same_as<int> Number>
    ZRScript(Number code) : m_code(static_cast<ZRUScriptCode>(code)) {}
    /// By an ISO 15924 code, or a language with its country. The empty name is invalid.
    ZRScript(ZRName name);
    ZRScript(ZRNameEnum name) : ZRScript(ZRName(name)) {}
    /// By an ISO 15924 code, or by anything that `ZRLang` or ICU reads. The text is interned. The
    /// empty text is automatic, unlike the empty name.
    ZRScript(const UnicodeString& text);

    ZRUScriptCode getUScriptCode() const { return m_code; }
    operator ZRUScriptCode() const { return m_code; }

    /// The ISO 15924 code; empty for the invalid, the automatic and no script. Korean is "Hang",
    /// which is read back as Hangul.
    ZRName getScriptCode() const;
    /// The text of `getScriptCode`.
    const UnicodeString& toString() const { return getScriptCode().toString(); }
    /// ICU's long name, such as "Latin"; below zero as `toString`.
    UnicodeString getScriptName() const;

    bool isAuto() const { return m_code == ZRUScriptAuto; }
    bool isCJK() const;
    /// Scripts justified between any two characters: CJK without Korean, which has blanks.
    bool isCJKJustify() const;
    bool isCJKorAuto() const { return isAuto() || isCJK(); }
    /// Japanese, or one of its kana.
    bool isJA() const { return m_code == ZRUScriptJapanese || isKanaScript(); }
    bool isSC() const { return m_code == ZRUScriptSimplifiedHan; }
    bool isTC() const { return m_code == ZRUScriptTraditionalHan; }
    bool isKanaScript() const { return isKanaScript(m_code); }
    /// Scripts that keep their direction and their own fonts whatever stands around them.
    bool isIndependentScript() const;
    /// Whether glyphs may be turned in vertical text.
    bool isGlyphOrientationPossible() const { return !isIndependentScript(); }

    // Questions about a character in text of this script.

    /// Set as wide as an ideograph. In CJK scripts that takes in most of what Unicode calls
    /// ambiguous.
    bool isZenkakuScript(int c) const;
    /// May hang over the start of a line, in any script.
    bool isHangingStartChar(int c) const;
    /// May hang over the end of a line.
    bool isHangingEndChar(int c) const;
    /// May hang over the end of the last line.
    bool isHangingLastChar(int c) const;

    /// A letter that stands for the script, to measure fonts by; "A" where there is no other.
    char16_t getA() const;

    /// The script of a code point; -1 for what is none. Some signs go with the scripts that they
    /// are used in, and mathematical operators are a script of their own.
    static ZRScript getScript(int codePoint);
    /// The script of the first character that has one, inherited and mathematics included;
    /// common when there is none.
    static ZRScript getScriptFromText(const UnicodeString& text);

    static bool isKanaScript(ZRUScriptCode code) {
        return code == ZRUScriptHiragana || code == ZRUScriptKatakana
               || code == ZRUScriptKatakanaOrHiragana;
    }
    static bool isHebrewScript(int c) { return c >= 0x0590 && c <= 0x05FF; }
    /// The Arabic block without its digits, which run from left to right.
    static bool isArabicScript(int c);
    static bool isDevanagariScript(int c) { return c >= 0x0900 && c <= 0x097F; }
    static bool isMathematicalOperators(int c) { return c >= 0x2200 && c <= 0x22FF; }

private:
    ZRUScriptCode m_code = ZRUScriptCommon;
};

}  // namespace ZroCommon
