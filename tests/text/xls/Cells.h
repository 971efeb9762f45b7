#pragma once

#include <initializer_list>

#include "tests/support/Test.h"
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

/// One number or several.
struct Numbers : std::vector<double> {
    Numbers(double number) : vector{number} {}
    using vector::vector;
};

struct CellCase {
    const char16_t* format = u"";
    Numbers numbers;
    const char* texts = "";  // with bars between
    int width = 100;
};

inline void expectTexts(std::initializer_list<CellCase> cases, bool isSystem1904 = false) {
    XlsFormatString formats;
    formats.setDate1904(isSystem1904 ? 1 : 0);
    for (const auto& [format, numbers, texts, width] : cases) {
        std::string all;
        for (const double number : numbers) {
            all += cellText(formats, format, number, width) + " | ";
        }
        EXPECT_EQ(all, texts + std::string(" | ")) << utf8(format);
    }
}

}  // namespace ZroCommon::testing
