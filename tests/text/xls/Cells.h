#pragma once

#include <string>

#include "tests/support/Text.h"
#include "zro/text/xls/XlsFormatString.h"

namespace ZroCommon::testing {

/// The text of a number in a cell so wide, and "(-3)" behind it when it does not fit.
inline std::string cellText(const XlsFormatString& formats, const char16_t* format, double number,
                            int width = 100) {
    CELLV cell;
    cell.number = number;
    UnicodeString result(u"untouched");
    const short outcome = formats.fmtnum(&cell, ZRValue(width), format, result, nullptr, nullptr,
                                         ZRLength(), 0, 0, nullptr);
    return utf8(result) + (outcome < 0 ? "(" + std::to_string(outcome) + ")" : "");
}

inline std::string cellText(const char16_t* format, double number, int width = 100) {
    return cellText(XlsFormatString(), format, number, width);
}

struct CellCase {
    const char16_t* format;
    double number;
    const char* text;
    int width = 100;
};

}  // namespace ZroCommon::testing
