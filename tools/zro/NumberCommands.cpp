// The commands on numbers as labels: number and kansuji.

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zro/text/ZRLang.h"
#include "zro/text/ZRUtil.h"
#include "zro/vocabulary/ZRName.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::ZRLang;
using ZroCommon::ZRName;
using ZroCommon::ZRUtil;
using Json = nlohmann::ordered_json;

struct NumberOptions {
    std::vector<int> numbers;
    std::string range;
    std::string format = "1";
    std::string language;
    std::string separator;
    int groupSize = 3;

    UnicodeString label(int number) const {
        return ZRUtil::formatNumber(number, fromUtf8(format), fromUtf8(separator), groupSize,
                                    ZRLang(fromUtf8(language)), ZroCommon::ZRN_EMPTY);
    }
};

// "1:50"; the whole text has to be read.
bool readRange(const std::string& text, std::pair<int, int>& range) {
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, range.first);
    if (first.ec != std::errc() || first.ptr == end || *first.ptr != ':') {
        return false;
    }
    const auto last = std::from_chars(first.ptr + 1, end, range.second);
    return last.ec == std::errc() && last.ptr == end;
}

std::string rangeError(const std::string& text) {
    std::pair<int, int> range;
    return readRange(text, range) ? "" : "\"" + text + "\" is no range FIRST:LAST";
}

// A label, behind its number when that is one of several.
void printLabel(Session& session, const NumberOptions& options, int number, std::size_t column) {
    const UnicodeString label = options.label(number);
    if (session.settings().json) {
        Json object;
        object["number"] = number;
        object["label"] = toUtf8(label);
        printLine(session, object);
        return;
    }
    if (column > 0) {
        const std::string text = std::to_string(number);
        const std::string gap(column - std::min(column, text.size()), ' ');
        session.out() << session.outStyle().faint(gap + text) << "  ";
    }
    session.out() << printable(label) << "\n";
}

void printRange(Session& session, const NumberOptions& options) {
    std::pair<int, int> range;
    readRange(options.range, range);
    const std::size_t column =
        std::max(std::to_string(range.first).size(), std::to_string(range.second).size());
    const int step = range.first <= range.second ? 1 : -1;
    std::int64_t number = range.first;
    for (; number != std::int64_t{range.second} + step && !session.isOutputLost(); number += step) {
        printLabel(session, options, static_cast<int>(number), column);
    }
}

void printLabels(Session& session, const NumberOptions& options) {
    if (!options.range.empty()) {
        printRange(session, options);
        return;
    }
    std::size_t column = 0;
    for (const int number : options.numbers) {
        column = std::max(column, std::to_string(number).size());
    }
    for (const int number : options.numbers) {
        printLabel(session, options, number, options.numbers.size() > 1 ? column : 0);
    }
}

struct KansujiOptions {
    std::string text;
    std::string method = "plain";
    std::string digits = "kanji";
    std::string units;
};

void convertKansuji(Session& session, const KansujiOptions& options) {
    const UnicodeString result =
        ZRUtil::convertKansuji(fromUtf8(options.text), ZRName(fromUtf8(options.method)),
                               ZRName(fromUtf8(options.digits)), fromUtf8(options.units), {});
    if (session.settings().json) {
        Json object;
        object["input"] = options.text;
        object["result"] = toUtf8(result);
        printLine(session, object);
        return;
    }
    session.out() << printable(result) << "\n";
}

}  // namespace

void addNumberCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<NumberOptions>();
    CLI::App& command = addCommand(
        program, "number", "Write numbers as labels of lists, pages and notes",
        "A format is a token with text around it: 1, 01, a, A, i, I, other letters and digits,\n"
        "\xE4\xB8\x80, \xE7\x94\xB2\xE5\xAD\x90, or a mark repeated (***).",
        "  zro number 14 --format '(i)'\n"
        "  zro number --range 1:30 --format a --lang sv\n"
        "  zro number 1234567 --group-separator .\n");
    auto* numbers = addOption(command, "N", options->numbers, " ", "Numbers, each an argument");
    auto* range = addOption(command, "--range", options->range, "FIRST:LAST",
                            "A column of labels, the number beside each")
                      ->check(CLI::Validator(rangeError, ""))
                      ->excludes(numbers);
    addOption(command, "--format", options->format, "FORMAT", "1 by default");
    addOption(command, "--lang", options->language, "LANG",
              "The language whose letters count, such as de");
    addOption(command, "--group-separator", options->separator, "TEXT",
              "What stands between groups of digits; nothing by default");
    addOption(command, "--group-size", options->groupSize, "K",
              "Digits in a group, 3 by default, 0 for no groups; a sign counts as one")
        ->check(negativeError);
    command.callback([&task, options, numbers, range] {
        if (numbers->empty() && range->empty()) {
            throw CLI::RequiredError("A number or --range");
        }
        task = [options](Session& session) {
            printLabels(session, *options);
        };
    });
}

void addKansujiCommand(CLI::App& program, Task& task) {
    const auto options = std::make_shared<KansujiOptions>();
    CLI::App& command =
        addCommand(program, "kansuji", "Rewrite the numbers of a text in Japanese numerals",
                   "Other ASCII characters come out in full width.",
                   "  zro kansuji '12,345.67\xE5\x86\x86' --method readable\n"
                   "  zro kansuji 120000000 --method grouping --digits latin\n");
    addOption(command, "TEXT", options->text, " ", "A text with numbers in it")->required();
    addOption(command, "--method", options->method, "METHOD",
              "plain (digit by digit, the default), grouping or readable")
        ->check(CLI::IsMember({"plain", "grouping", "readable"}));
    addOption(command, "--digits", options->digits, "DIGITS",
              "kanji (the default), latin, or the digits themselves from 0 on");
    addOption(command, "--units", options->units, "UNITS",
              "The units themselves: ten, hundred, thousand, then each ten thousand times the\n"
              "one ahead");
    setTask(command, task, options, convertKansuji);
}

}  // namespace zro
