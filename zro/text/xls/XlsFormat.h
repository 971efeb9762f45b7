#pragma once

#include <array>

#include "zro/foundation/Text.h"
#include "zro/values/ZRLength.h"

// NOLINTBEGIN(readability-identifier-naming): the names are given
namespace ZroCommon {

/// One section of a compiled spreadsheet number format.
///
/// `compiled` is the section in a normal form: literal text in double quotes, placeholders and
/// marks as they stand, and each date or time token as a letter and a digit (`M1` to `M5` month,
/// `m1` `m2` minutes, `m3` `m4` elapsed minutes, `D1` to `D4` day, `D5` `D6` Japanese weekday,
/// `Y2` `Y4` year, `R1` to `R7` era, `h1` `h2` hours, `h3` `h4` elapsed hours, `s1` `s2` seconds,
/// `s3` `s4` elapsed seconds), and `G` for `General`.
struct FMT {
    unsigned char sectionIndex = 0;       ///< 0 to 3
    unsigned char lastToken = 0;          ///< kind of the last token read
    unsigned char colorIndex = 0;         ///< 0 none, 120 to 127 a named colour, N + 7 `[ColorN]`
    unsigned char condition = 0;          ///< 0 none, 1 >=, 2 <=, 3 <>, 4 <, 5 >, 6 =
    double conditionValue = 0;            ///< right side; NaN where the text holds no number
    unsigned char kind = 0;               ///< 0 literals or `General`, 1 number, 2 date, 3 text
    unsigned char grouped = 0;            ///< a comma stands between digit placeholders
    unsigned char hasPoint = 0;           ///< "." seen
    unsigned char hasExponent = 0;        ///< "E+" or "E-" seen
    unsigned char hasSlash = 0;           ///< "/" seen
    unsigned char commaCount = 0;         ///< commas that divide by a thousand each
    unsigned char percentCount = 0;       ///< percent signs
    unsigned char intZeros = 0;           ///< "0" ahead of point, exponent and slash
    unsigned char intPlaces = 0;          ///< all placeholders there
    unsigned char intDigits = 0;          ///< the same without those of a numerator
    unsigned char fracPlaces = 0;         ///< placeholders behind the point
    unsigned char fracZeros = 0;          ///< "0" and "?" behind the point
    unsigned char expPlaces = 0;          ///< placeholders behind the exponent mark
    unsigned char expZeros = 0;           ///< "0" there
    unsigned char expAll = 0;             ///< the same as `expPlaces`
    unsigned char valueSign = 0;          ///< sign of the cell: 0 zero, 1 positive, 2 negative
    unsigned char signState = 0;          ///< 2 while a minus sign is still to be written
    unsigned char exponentSign = 0;       ///< 0 no exponent, 1 positive, 2 negative
    unsigned char numeratorDigits = 0;    ///< placeholders of a numerator
    unsigned char denominatorDigits = 0;  ///< placeholders and digits of a denominator
    unsigned char dbNum = 0;              ///< 1 to 3 for `[DBNum1]` to `[DBNum3]`
    unsigned short fixedDenominator = 0;  ///< the 8 of `?/8`, modulo 65536; 0 none
    unsigned char hasHour = 0;            ///< an hour was seen: "m" now means minutes
    unsigned char hasAmPm = 0;            ///< hours count to twelve
    unsigned char compiledLength = 0;     ///< UTF-16 units in `compiled`
    UnicodeString compiled;               ///< at most 255 units
};

/// A compiled format: one to four sections.
struct FMT2 {
    unsigned char sectionCount = 0;
    std::array<FMT, 4> section;
};

/// A cell: what `fmtnum` and `fmtstr` read.
struct CELLV {
    int type = 0;  ///< the caller's; 1 for a number
    double number = 0;
    UnicodeString text;
};

/// Why `fmtget` refuses a format.
struct XlsFormatFault {
    int position = -1;        ///< UTF-16 units ahead of what is refused; -1 for a valid format
    const char* reason = "";  ///< a clause in English, ASCII; valid for ever
};

/// Whether the finished text is too wide for its cell, measured in the caller's own font.
/// `length`, `a` and `b` are what the caller has given.
using XlsWidthTest = bool (*)(void* user, const UnicodeString& text, const ZRLength& length, int a,
                              int b);

}  // namespace ZroCommon
// NOLINTEND(readability-identifier-naming)
