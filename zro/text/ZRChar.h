#pragma once

#include <array>
#include <cstdint>

#include <unicode/uchar.h>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

/// Predicates over code points: the one place that decides what is a space, a name character, a
/// full-width character or a character that may not start a line.
///
/// Most are fixed ranges, on purpose not Unicode properties; the last group asks ICU. Any `int` may
/// be asked about. Pure functions, for any thread.
class ZRO_API ZRChar {
public:
    /// The last code unit; U+FFFF of the empty text.
    static char16_t last(const UnicodeString& text);
    /// The last code point, a surrogate pair joined; U+FFFF of the empty text.
    static int last32(const UnicodeString& text);
    /// XML white space alone. The empty text is none.
    static bool isWhitespace(const UnicodeString& text);
    static bool isEmptyOrWhitespace(const UnicodeString& text);
    /// The value of a hexadecimal digit. On purpose: not checked; any other character gives a
    /// number from 10 to 25.
    static int hex2dig(int c) {
        return isAsciiDigit(c) ? c - '0'
                               : static_cast<int>((static_cast<unsigned>(c) - 1U) & 15U) + 10;
    }
    /// The full-width form of U+0021 to U+007E; all else stays, the blank too.
    static char16_t toZenkaku(char16_t c) {
        return c >= 0x21 && c <= 0x7E ? static_cast<char16_t>(c + 0xFEE0) : c;
    }

    // By fixed ranges.

    static bool isHardBreak(int c) { return c == 0x0A || c == 0x0C || c == 0x2028 || c == 0x2029; }
    /// Up to U+007E and U+00A0, but for hard breaks.
    static bool isAsciiNoHardBreak(int c) { return (c < 0x7F || c == 0xA0) && !isHardBreak(c); }
    /// What may stand in XML 1.0 text.
    static bool isValidChar(int c) {
        return within(c, 0x20, 0xD7FF) || c == 0x09 || c == 0x0A || c == 0x0D
               || within(c, 0xE000, 0xFFFD) || within(c, 0x10000, 0x10FFFF);
    }
    /// XML white space: U+0020, U+0009, U+000A, U+000D.
    static bool isWhitespace(int c) { return isAscii(c, kSpace); }
    /// The same and the form feed.
    static bool isCssWhitespace(int c) { return isWhitespace(c) || c == 0x0C; }
    static bool isCssNewline(int c) { return c == 0x0A || c == 0x0D || c == 0x0C; }
    /// U+0020 and the no-break space.
    static bool isSpaceChar(int c) { return c == 0x20 || c == 0xA0; }
    static bool isAsciiDigit(int c) { return within(c, '0', '9'); }
    static bool isAsciiLetter(int c) { return within(c | 0x20, 'a', 'z'); }
    static bool isHexDigit(int c) { return isAscii(c, kHexDigit); }
    /// The name characters of XML 1.0. On purpose: without its gaps at U+00D7 and U+00F7, and with
    /// U+F900 to U+EFFFF in one piece.
    static bool isNCNameStartChar(int c) {
        return isAscii(c, kNameStart) || (c >= 0x80 && isNameStartBeyondAscii(c));
    }
    static bool isNCNameChar(int c) {
        return isAscii(c, kName) || (c >= 0x80 && isNameBeyondAscii(c));
    }
    static bool isNameStartChar(int c) { return c == ':' || isNCNameStartChar(c); }
    static bool isNameChar(int c) { return c == ':' || isNCNameChar(c); }
    /// What is set half as wide as an ideograph: the western code pages.
    static bool isHalf(int c);
    static bool isMathOperator(int c) {
        return within(c, 0x2200, 0x22FF) || within(c, 0x27C0, 0x27FF) || within(c, 0x2980, 0x2AFF)
               || within(c, 0x1D400, 0x1D7FF);
    }
    static bool isBullet(int c);
    /// The zero-width joiner and non-joiner.
    static bool isJoiningChar(int c) { return c == 0x200C || c == 0x200D; }
    /// The ideographic middle dot, colon and semicolon.
    static bool isZenkakuMidDotEtc(int c) { return c == 0x30FB || c == 0xFF1A || c == 0xFF1B; }
    static bool isHankakuChar(int c) { return c < 0x80 || isHankakuKana(c); }
    static bool isHankakuKana(int c) { return within(c, 0xFF61, 0xFF9F); }
    static bool isHangingPunctuationEndChar(int c) {
        return c == 0x3001 || c == 0xFF0C || isFullStopChar(c);
    }
    /// The ideographic full stop and the full-width one.
    static bool isFullStopChar(int c) { return c == 0x3002 || c == 0xFF0E; }
    /// Small kana, iteration and prolonged sound marks, which may not start a line.
    static bool isNonStarterJIS(int c);
    /// The symbols of the Japanese character set that are set as wide as an ideograph.
    static bool isSymbolJIS(int c);
    static bool isArrow(int c) { return within(c, 0x2190, 0x21FF); }
    static bool isToneLetters(int c) { return within(c, 0x02E5, 0x02E9); }
    static bool isArabic(int c) { return within(c, 0x0600, 0x06FF); }
    static bool isFixedWidthSpaceChar(int c) { return within(c, 0x2000, 0x200A) || c == 0x205F; }
    /// What is never set upright in vertical text.
    static bool isNoVerticalChar(int c) { return c < 0x2000 || within(c, 0xFF60, 0xFF9F); }
    /// The supplementary ones, U+E0100 to U+E01EF, alone.
    static bool isVariationSelectorCharacter(int c) { return within(c, 0xE0100, 0xE01EF); }
    /// Two characters that no line break may part: a doubled dash or leader, or the halves of a
    /// vertical repeat mark.
    static bool isNonSeparateChars(int first, int second);

    // By ICU's properties.

    static bool isAlphabetic(int c);
    static UEastAsianWidth getEastAsianWidth(int c);
    /// Full-width, wide or ambiguous.
    static bool isZenkakuAmbiguous(UEastAsianWidth width) {
        return width == U_EA_AMBIGUOUS || isZenkaku(width);
    }
    static bool isZenkaku(UEastAsianWidth width) {
        return width == U_EA_FULLWIDTH || width == U_EA_WIDE;
    }
    static bool isZenkaku(int c) { return isZenkaku(getEastAsianWidth(c)); }
    static bool isHankaku(UEastAsianWidth width) { return width == U_EA_HALFWIDTH; }
    static bool isHankaku(int c) { return isHankaku(getEastAsianWidth(c)); }
    static UCharCategory getCategory(int c);
    static bool isLetter(int c);
    static bool isPunct(int c) { return isPunct(getCategory(c)); }
    static bool isPunct(UCharCategory category);
    static bool isSymbol(int c);
    static ULineBreak getLineBreak(int c);
    /// Control characters and what is neither visible nor blank; the soft hyphen is none.
    static bool isZeroWidthControlCode(int c);
    static bool isOpenParenEtc(int c);
    /// Line break class CL. On purpose: ")" and "]" have a class of their own and are none.
    static bool isCloseParenEtc(int c);
    /// Punctuation that takes half an ideograph's width: brackets, quotes, middle dot, colon and
    /// semicolon.
    static bool isHalfPunct(int c);

private:
    static constexpr std::uint8_t kSpace = 1;
    static constexpr std::uint8_t kHexDigit = 2;
    static constexpr std::uint8_t kNameStart = 4;
    static constexpr std::uint8_t kName = 8;

    static constexpr bool within(int c, int first, int last) { return c >= first && c <= last; }
    static bool isAscii(int c, std::uint8_t kinds) {
        return static_cast<unsigned>(c) < kAscii.size()
               && (kAscii[static_cast<unsigned>(c)] & kinds) != 0;
    }
    static bool isNameStartBeyondAscii(int c);
    static bool isNameBeyondAscii(int c);

    static const std::array<std::uint8_t, 128> kAscii;
};

}  // namespace ZroCommon
