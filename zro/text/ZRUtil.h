#pragma once

#include <cstdint>
#include <iosfwd>
#include <limits>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

class ZRLang;
class ZRName;
enum ZRNameEnum : std::int32_t;

/// Static helpers over texts and numbers, which hold no state.
///
/// Nothing here throws for bad text, and nothing depends on the locale. Functions that read from a
/// `text` pointer read UTF-16 up to its U+0000, and set `*end`, where `end` is given, behind what
/// they have taken. Pure functions for any thread.
class ZRO_API ZRUtil {
public:
    /// How a text is quoted: bits, joined by `|`.
    enum QuoteMode : std::uint32_t {
        QUOTE_DOUBLE = 1,    ///< it is, or may be, enclosed in `"`
        QUOTE_SINGLE = 2,    ///< it is, or may be, enclosed in `'`
        QUOTE_DOUBLING = 4,  ///< a quote character inside is written twice
        QUOTE_BACKSLASH = 8  ///< CSS escapes: `\` with a hexadecimal code or a literal character
    };
    friend constexpr QuoteMode operator|(QuoteMode left, QuoteMode right) {
        return static_cast<QuoteMode>(static_cast<std::uint32_t>(left)
                                      | static_cast<std::uint32_t>(right));
    }

    // Numbers.

    /// Reads a decimal number without an exponent behind XML white space: "-.5", "+7", "5.".
    ///
    /// Correctly rounded. Where there is no number, the result is 0 and `*end` is `text`; so it is
    /// for more than 98 integer digits. Fraction digits beyond 98 in all are taken and dropped.
    static double parseNumber(const char16_t* text, const char16_t** end);

    /// Reads hexadecimal digits behind XML white space, `maxDigits` at most (0: any number).
    ///
    /// More than 32 bits give 0xFFFFFFFF. Without a digit the result is 0, and `*end` stands behind
    /// the white space.
    static unsigned int parseHexNum(const char16_t* text, const char16_t** end, int maxDigits);

    /// As C's "%d" prints it.
    static UnicodeString toString(int number);
    /// As C's "%g" prints it in the C locale: six digits at most.
    static UnicodeString toString(double number);

    /// The nearest integer, halves away from zero; as far as an `int` reaches, and 0 for NaN.
    static int roundToInteger(double number);
    /// The same, with the half added in single precision: 0.49999997f gives 1.
    static int roundToInteger(float number);

    static double getNaN() { return std::numeric_limits<double>::quiet_NaN(); }
    static float getNaNf() { return std::numeric_limits<float>::quiet_NaN(); }
    static bool isNaN(double number) { return number != number; }
    static bool isNaN(float number) { return number != number; }

    // Numbers as labels.

    /// The label of a number, as `xsl:number` and page numbers have it.
    ///
    /// The format is a token of letters and digits with text around it: "1", "01", "a", "I", "(i)",
    /// "一", "甲子". Two digits and more fill up with zeros; several full-width or wide characters
    /// are an alphabet of their own; one mark repeated ("***") repeats as often as the number says.
    /// Numbers below 1 have a zero in systems of letters. What a system cannot write is written in
    /// decimal. `docs/gallery.md` shows them all.
    ///
    /// \param groupingSeparator  stands between groups of digits, and behind Hebrew thousands
    /// \param groupingSize       characters in a group, the sign counted; 0 for no groups
    /// \param lang               the language whose alphabet letters are of; one with a country has
    ///                           none
    /// \param letterValue        of no effect
    static UnicodeString formatNumber(int num, const UnicodeString& format,
                                      const UnicodeString& groupingSeparator, int groupingSize,
                                      ZRLang lang, ZRNameEnum letterValue);

    /// Rewrites the numbers inside a text in Japanese numerals, and its other ASCII in full width.
    ///
    /// \param method  `grouping` writes the units of groups of four digits (一二三四万五六七八),
    ///                `readable` all units (千二百三十四万五千), any other name none
    /// \param digits  `kanji` for 〇 to 九, `latin` for full-width digits; the text of any other
    /// name
    ///                replaces the digits from 〇 on, as far as it reaches
    /// \param units   replaces 十百千万億兆京垓秭穣溝澗正載極 as far as it reaches
    /// \param spare   of no effect
    static UnicodeString convertKansuji(const UnicodeString& text, const ZRName& method,
                                        const ZRName& digits, const UnicodeString& units,
                                        const UnicodeString& spare);

    // Quotes. Failure is `ZRBogusString::BOGUS_VALUE`.

    /// Reads a quoted string behind CSS white space.
    ///
    /// A string without its closing quote, or without the opening one that `mode` asks for, is a
    /// failure, and `*end` is `text`. With neither quote bit all of `text` is read, white space and
    /// all. A code point beyond Unicode reads as U+FFFD.
    static UnicodeString parseString(const char16_t* text, const char16_t** end, QuoteMode mode);

    /// Encloses a text in the quote of `mode`: of two, the one that does not occur in it, `"` if
    /// both do. `QUOTE_BACKSLASH` escapes quotes, backslashes and line ends, and alone makes the
    /// text safe for any content; it leaves `QUOTE_DOUBLING` without effect.
    static UnicodeString quoteString(const UnicodeString& text, QuoteMode mode);

    /// Reads a text that is one quoted string but for white space around it. Text behind the
    /// closing quote is a failure in modes with an escape; in others all between the first and the
    /// last character is the result, if they are equal: "'a'b'" is "a'b".
    static UnicodeString unquoteString(const UnicodeString& text, QuoteMode mode);

    /// `url("...")`, with each `"` as "%22".
    static UnicodeString quoteUri(const UnicodeString& text);
    /// The URI in a `url(...)` or in quotes, normalised as `ZRUri` does.
    static UnicodeString unquoteUri(const UnicodeString& text);

    // Base64 of RFC 4648, with the standard alphabet.

    /// Encodes all that is left in the stream, padded, without line breaks. Empty when the stream
    /// has failed already.
    /// \param sizeHint  the number of bytes to be expected; a wrong one costs time only
    static UnicodeString encodeBase64(std::istream& stream, int sizeHint);
    /// A `data:` URI of the stream's content.
    /// \param parameter  such as "charset=utf-8"; none when empty
    static UnicodeString encodeBase64(std::istream& stream, int sizeHint,
                                      const UnicodeString& mediaType,
                                      const UnicodeString& parameter);
    /// Decodes up to `length` characters. What is not of the alphabet is skipped; "=" ends, and
    /// bits that make no whole byte are dropped.
    static void decodeBase64(const char16_t* text, int length, std::ostream& out);

    /// The name that IANA prefers for an encoding, given by any of its names: "UTF-8" for "utf8"
    /// and for the empty text, "UTF-16LE" for "utf-16". Empty when it is not known. Names that are
    /// not builtin are interned.
    static UnicodeString getStandardEncoding(const UnicodeString& name);

    /// Does nothing: alphabets are constants. Part of the library's `cleanup`.
    static void cleanup();

    /// Does nothing: something for a client to call, so that its linker keeps the library.
    static void checkLink();
};

}  // namespace ZroCommon
