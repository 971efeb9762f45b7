#pragma once

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/text/xls/XlsFormat.h"
#include "zro/values/ZRLength.h"
#include "zro/values/ZRValue.h"

// NOLINTBEGIN(readability-identifier-naming): the names are given
namespace ZroCommon {

/// Shows a cell's number or text as its spreadsheet would, by the number format that the file
/// stores for it: `#,##0.00`, `[Red]\-0`, `yyyy\-mm\-dd`.
///
/// Formats are expected as files hold them: a literal character is quoted or has a backslash, and
/// an unescaped one without a meaning (a blank, a parenthesis, a minus) makes the whole format
/// invalid. An invalid format shows nothing, a text that is too wide shows as "#" characters, and
/// nothing throws. Locale codes have no effect, nor has the locale of the process.
///
/// Widths are numbers of columns, of which a character takes one or, if it is neither ASCII nor a
/// half-width form, two. What would be filled up to more than 32767 columns is filled up to that.
///
/// One object serves one thread at a time; any number of objects may work at once.
class ZRO_API XlsFormatString {
public:
    XlsFormatString() = default;

    unsigned short GetBookVersion() const { return bookFlags & 0xF00; }
    /// Days count from 1904, and dates ahead of the first are shown with a minus.
    bool isDate1904() const { return date1904 == 1; }
    /// 1904 or 1900.
    unsigned short GetYearBase() const { return isDate1904() ? 1904 : 1900; }
    void setDate1904(int system) { date1904 = static_cast<unsigned short>(system); }
    void setFill(bool isFilled) { fill = isFilled; }
    bool isFill() const { return fill; }

    /// The text of a number in a cell of 100 columns. Clears `fill` and leaves it so.
    UnicodeString FormatString(const UnicodeString& format, double number);

    /// Compiles a format. 1 for a valid format, 0 for an invalid one.
    short fmtget(const UnicodeString& format, FMT2* result) const;
    /// The same; says where and why a format is invalid.
    short fmtget(const UnicodeString& format, FMT2* result, XlsFormatFault* fault) const;

    /// The text of the cell's number.
    ///
    /// \param width     columns of the cell, as an integer
    /// \param result    untouched when the format is invalid
    /// \param color     takes the section's `colorIndex` when there is a section; may be null
    /// \param callback  asks whether the text is too wide; null counts columns
    /// \param length,a,b,user  passed to `callback` as they are
    /// \return 0, or a negative number when the text did not fit
    short fmtnum(CELLV* cell, const ZRValue& width, const UnicodeString& format,
                 UnicodeString& result, unsigned char* color, XlsWidthTest callback,
                 ZRLength length, int a, int b, void* user) const;

    /// The text of the cell's text. 1 when a section for text has shown it; 0 when there is none
    /// and `result` is the text itself, or the format is invalid and `result` untouched.
    short fmtstr(CELLV* cell, const ZRValue& width, const UnicodeString& format,
                 UnicodeString& result, unsigned char* color) const;

    /// Writes a serial date through one section. 0, or -3 when the text is too wide or there is no
    /// such date.
    short fmtnumD(FMT* section, double serial, const ZRValue& width, UnicodeString& result,
                  XlsWidthTest callback, ZRLength length, int a, int b, void* user) const;
    /// Writes a number through one section; `valueSign` is the sign that `General` shows. 0, or -3
    /// when the text is too wide. Of the section, `signState` and `exponentSign` are set.
    short fmtnumN(FMT* section, double number, const ZRValue& width, UnicodeString& result,
                  XlsWidthTest callback, ZRLength length, int a, int b, void* user) const;

    unsigned short date1904 = 0;       ///< 1 for the date system of 1904, 0 for that of 1900
    unsigned short bookFlags = 0x800;  ///< version of the book; the grammar varies with it
    bool fill = true;  ///< "*" repeats its character up to the width; else it is written once
};

}  // namespace ZroCommon
// NOLINTEND(readability-identifier-naming)
