#pragma once

#include <charconv>
#include <sstream>

#include "tests/support/Test.h"
#include "zro/text/xls/XlsFormatString.h"

namespace ZroCommon::testing {

/// The text of a number in a cell so wide, and "(-3)" behind it when it does not fit.
inline std::string cellText(const XlsFormatString& formats, const UnicodeString& format,
                            double number, int width = 100) {
    CELLV cell;
    cell.number = number;
    UnicodeString result(u"untouched");
    const short outcome =
        formats.fmtnum(&cell, ZRValue(width), UnicodeString(format).getTerminatedBuffer(), result,
                       nullptr, nullptr, ZRLength(), 0, 0, nullptr);
    return utf8(result) + (outcome < 0 ? "(" + std::to_string(outcome) + ")" : "");
}

/// Rows of "12.5 as 0.00 -> 12.50"; of several numbers, "1 -1 as 0;(0) -> 1 | (1)"; and of a narrow
/// cell, "123 as 0 in 2 -> ##(-3)".
inline void expectCells(std::initializer_list<std::string_view> rows, bool isSystem1904 = false) {
    XlsFormatString formats;
    formats.setDate1904(isSystem1904 ? 1 : 0);
    const auto texts = [&formats](const std::string& row) {
        const std::size_t as = row.find(" as ");
        const std::size_t in = row.rfind(" in ");
        const UnicodeString format = text(row.substr(as + 4, in - as - 4));
        const int width = in == std::string::npos ? 100 : std::stoi(row.substr(in + 4));
        std::istringstream numbers(row.substr(0, as));
        std::string all;
        for (std::string word; numbers >> word;) {
            double number = 0;
            std::from_chars(word.data(), word.data() + word.size(), number);
            all += " | " + cellText(formats, format, number, width);
        }
        return all.substr(3);
    };
    expectTexts(texts, rows);
}

}  // namespace ZroCommon::testing
