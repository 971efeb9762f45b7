// Every numeral system and every token of number formats: of each row of the page's tables the
// first cells say what to show, and the others are made of them.
#include <charconv>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/conformance/Surveys.h"
#include "tests/support/Text.h"
#include "zro/text/ZRLang.h"
#include "zro/text/ZRUtil.h"
#include "zro/text/xls/XlsFormatString.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon::testing {
namespace {

using Cells = std::vector<std::string>;

Cells cellsOfMarkdown(const std::string& line) {
    Cells cells;
    for (std::size_t at = 2, end = 0; (end = line.find(" |", at)) != std::string::npos;
         at = end + 3) {
        cells.push_back(line.substr(at, end - at));
    }
    return cells;
}

// A cell without its marks of code.
std::string plain(const std::string& cell) {
    return cell.starts_with('`') ? cell.substr(1, cell.size() - 2) : cell;
}

std::string label(int number, const std::string& format, const std::string& language) {
    const ZRLang lang(text(language));
    return utf8(ZRUtil::formatNumber(number, text(format), {}, 0, lang, ZRN_EMPTY));
}

std::string labels(std::initializer_list<int> numbers, const std::string& format,
                   const char* between, const std::string& language = {}) {
    std::string all;
    for (const int number : numbers) {
        all += (all.empty() ? "" : between) + label(number, format, language);
    }
    return all;
}

// The letters of a language in counting order: all labels of one character.
std::string alphabet(const std::string& format, const std::string& language) {
    std::string all;
    for (int number = 1; text(label(number, format, language)).length() == 1; ++number) {
        all += label(number, format, language);
    }
    return all;
}

std::string kansuji(const std::string& source, ZRNameEnum method, ZRNameEnum digits = ZRN_kanji) {
    return utf8(ZRUtil::convertKansuji(text(source), method, digits, {}, {}));
}

std::string shown(const std::string& format, const std::string& number) {
    double value = 0;
    std::from_chars(number.data(), number.data() + number.size(), value);
    return utf8(XlsFormatString().FormatString(text(format), value));
}

/// \param table  the first column's heading
Cells remade(const std::string& table, const Cells& told) {
    const std::string first = plain(told[0]);
    if (table == "Format") {
        return {told[0], labels({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, first, " "),
                labels({99, 100, 1999}, first, " | ")};
    }
    if (table == "Language") {
        return {first, alphabet("a", first), labels({99, 100, 1999}, "a", " ", first),
                alphabet("A", first), labels({99, 100, 1999}, "A", " ", first)};
    }
    if (table == "Text") {
        return {first, kansuji(first, ZRN_EMPTY), kansuji(first, ZRN_grouping),
                kansuji(first, ZRN_readable), kansuji(first, ZRN_readable, ZRN_latin)};
    }
    return {told[0], told[1], told[2], told[3], "`" + shown(plain(told.at(2)), told.at(3)) + "`"};
}

// The kinds of tokens in a format: each beginning ends with one.
void collectTokens(const UnicodeString& format, std::set<int>& tokens) {
    for (int32_t length = 1; length <= format.length(); ++length) {
        FMT2 compiled;
        if (XlsFormatString().fmtget(UnicodeString(format, 0, length), &compiled) == 1) {
            const auto last = static_cast<std::size_t>(compiled.sectionCount - 1);
            tokens.insert(compiled.section[last].lastToken);
        }
    }
}

}  // namespace

int remakeGallery(const Measuring& measuring) {
    constexpr std::size_t kTokens = 52;  // 3 to 55 without 50
    constexpr int kRows = 150;
    std::set<int> tokens;
    std::string table;
    int rows = 0;
    std::istringstream lines(measuring.told);
    for (std::string line; std::getline(lines, line);) {
        const bool isRow = line.starts_with("| ");
        if (isRow && !table.empty()) {
            const Cells told = cellsOfMarkdown(line);
            line = "|";
            for (const std::string& cell : remade(table, told)) {
                line.append(" ").append(cell).append(" |");
            }
            if (table == "Token") {
                collectTokens(text(plain(told[2])), tokens);
            }
            ++rows;
        } else if (!line.starts_with("|---")) {
            table = isRow ? cellsOfMarkdown(line)[0] : "";
        }
        measuring.out << line << '\n';
    }
    tokens.erase(tokens.begin(), tokens.lower_bound(3));
    tokens.erase(50);
    if (tokens.size() != kTokens || rows < kRows) {
        std::cout << tokens.size() << " kinds of tokens in " << rows << " rows\n";
        return 1;
    }
    return 0;
}

}  // namespace ZroCommon::testing
