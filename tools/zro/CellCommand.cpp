#include <charconv>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "zro/text/xls/XlsFormatString.h"

#include "tools/zro/CellFormat.h"
#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::CELLV;
using ZroCommon::FMT;
using ZroCommon::FMT2;
using ZroCommon::XlsFormatFault;
using ZroCommon::XlsFormatString;
using ZroCommon::ZRLength;
using ZroCommon::ZRValue;
using Json = nlohmann::ordered_json;

struct CellOptions {
    std::string format;
    std::vector<std::string> values;
    int width = 100;
    bool date1904 = false;
    bool fill = false;
    bool asText = false;
    bool explain = false;

    // None when the value is a text.
    std::optional<double> number(const std::string& value) const {
        double number = 0;
        const char* const end = value.data() + value.size();
        const auto read = std::from_chars(value.data(), end, number);
        const bool isNumber = read.ec == std::errc() && read.ptr == end && std::isfinite(number);
        return isNumber && !asText ? std::optional(number) : std::nullopt;
    }
};

struct Cell {
    UnicodeString text;
    unsigned char color = 0;
    bool fits = true;
};

Cell showCell(const XlsFormatString& formats, const CellOptions& options,
              const std::string& value) {
    const UnicodeString format = fromUtf8(options.format);
    const std::optional<double> number = options.number(value);
    CELLV content;
    content.type = number ? 1 : 0;
    content.number = number.value_or(0);
    content.text = fromUtf8(value);
    Cell cell;
    if (number) {
        cell.fits = formats.fmtnum(&content, ZRValue(options.width), format, cell.text, &cell.color,
                                   nullptr, ZRLength(), 0, 0, nullptr)
                    >= 0;
    } else {
        formats.fmtstr(&content, ZRValue(options.width), format, cell.text, &cell.color);
    }
    return cell;
}

void printCell(Session& session, const CellOptions& options, const std::string& value) {
    XlsFormatString formats;
    formats.setDate1904(options.date1904 ? 1 : 0);
    formats.setFill(options.fill);
    const Cell cell = showCell(formats, options, value);
    if (!session.settings().json) {
        session.out() << printable(cell.text) << "\n";
        return;
    }
    Json object;
    object["value"] = value;
    object["type"] = options.number(value) ? "number" : "text";
    object["text"] = toUtf8(cell.text);
    object["fits"] = cell.fits;
    object["color"] = colorName(cell.color);
    printLine(session, object);
}

Json describe(const FMT2& format, int index) {
    const FMT& section = format.section.at(static_cast<std::size_t>(index));
    Json object;
    object["for"] = purposeOf(format, index);
    object["kind"] = kindName(section);
    if (section.colorIndex != 0) {
        object["color"] = colorName(section.colorIndex);
    }
    if (section.grouped != 0) {
        object["groups"] = "digits by thousands";
    }
    if (section.dbNum != 0) {
        object["numerals"] = "DBNum" + std::to_string(section.dbNum);
    }
    return object;
}

void printSection(Session& session, const FMT2& format, int index) {
    constexpr std::size_t kColumn = 11;
    session.out() << session.outStyle().bold("section " + std::to_string(index + 1)) << "\n";
    printRows(session, describe(format, index), 2);
    for (const auto& [text, meaning] :
         piecesOf(format.section.at(static_cast<std::size_t>(index)))) {
        const UnicodeString shown = fromUtf8(text);
        std::size_t width = 0;
        for (int at = 0; at < shown.length(); at = shown.moveIndex32(at, 1)) {
            width +=
                static_cast<std::size_t>(displayWidth(static_cast<char32_t>(shown.char32At(at))));
        }
        session.out() << "    " << printable(shown)
                      << std::string(width < kColumn ? kColumn - width : 1, ' ')
                      << session.outStyle().faint(meaning) << "\n";
    }
}

Json jsonOf(const FMT2& format, int index) {
    const FMT& section = format.section.at(static_cast<std::size_t>(index));
    Json object = describe(format, index);
    object["compiled"] = toUtf8(section.compiled);
    object["tokens"] = Json::array();
    for (const auto& [text, meaning] : piecesOf(section)) {
        object["tokens"].push_back(Json{{"token", text}, {"shows", meaning}});
    }
    return object;
}

void explain(Session& session, const CellOptions& options, const FMT2& format) {
    if (session.settings().json) {
        Json object;
        object["format"] = options.format;
        object["sections"] = Json::array();
        for (int index = 0; index < format.sectionCount; ++index) {
            object["sections"].push_back(jsonOf(format, index));
        }
        printLine(session, object);
        return;
    }
    for (int index = 0; index < format.sectionCount; ++index) {
        printSection(session, format, index);
    }
}

void complain(Session& session, const UnicodeString& format, const XlsFormatFault& fault) {
    Diagnostic diagnostic;
    diagnostic.message = fault.reason;
    diagnostic.file = "format";
    Excerpt excerpt;
    excerpt.number = 1;
    for (int at = 0; at < format.length(); at = format.moveIndex32(at, 1)) {
        excerpt.line += static_cast<char32_t>(format.char32At(at));
    }
    excerpt.start = static_cast<std::size_t>(format.countChar32(0, fault.position));
    excerpt.length = 1;
    excerpt.column = static_cast<int>(excerpt.start) + 1;
    diagnostic.excerpt = excerpt;
    session.report(diagnostic);
}

void showCells(Session& session, const CellOptions& options) {
    const UnicodeString format = fromUtf8(options.format);
    FMT2 compiled;
    XlsFormatFault fault;
    if (XlsFormatString().fmtget(format, &compiled, &fault) == 0) {
        complain(session, format, fault);
        return;
    }
    if (options.explain) {
        explain(session, options, compiled);
    }
    for (const std::string& value : options.values) {
        printCell(session, options, value);
    }
}

}  // namespace

void addCellCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<CellOptions>();
    CLI::App& command =
        addCommand(program, "cell", "Show a cell's number or text by a spreadsheet's number format",
                   "Formats are read as files store them: a literal character is quoted or has a\n"
                   "backslash. What is no number is shown as text.",
                   "  zro cell '#,##0.00' 1234.5 -2\n"
                   "  zro cell 'yyyy\\-mm\\-dd' 45000 --json\n"
                   "  zro cell --explain '[Red][<0]0.0%;0.0%;\"none\"'\n");
    addOption(command, "FORMAT", options->format, " ", "A number format")->required();
    auto* values = addOption(command, "VALUE", options->values, " ", "Cells, each an argument");
    addOption(command, "--width", options->width, "W", "Columns of the cell, 100 by default");
    command.add_flag("--date1904", options->date1904, "Dates count from 1904");
    command.add_flag("--fill", options->fill, "\"*\" repeats its character up to the width");
    command.add_flag("--text", options->asText, "Values are texts, numbers too");
    command.add_flag("--explain", options->explain,
                     "Take the format apart: its sections, and what each of their tokens shows");
    command.callback([&task, options, values] {
        if (values->empty() && !options->explain) {
            throw CLI::RequiredError("A value or --explain");
        }
        task = [options](Session& session) {
            showCells(session, *options);
        };
    });
}

}  // namespace zro
