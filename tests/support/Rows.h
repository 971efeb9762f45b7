#pragma once

#include <cstddef>
#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

namespace ZroCommon::testing {

/// A table of cases: for (const auto& [text, number] : Rows<const char*, int>{{"1", 1}, {"2", 2}})
template <class... Columns>
using Rows = std::initializer_list<std::tuple<Columns...>>;

/// Calls `function` with all columns of each row but the last, which is what it has to give:
/// expectRows<int, const char*>(toText, {{1, "1"}, {2, "2"}})
template <class... Columns, class Function>
void expectRows(const Function& function, Rows<Columns...> rows) {
    constexpr std::size_t kLast = sizeof...(Columns) - 1;
    for (const auto& row : rows) {
        const auto result = [&]<std::size_t... i>(std::index_sequence<i...>) {
            return function(std::get<i>(row)...);
        }
        (std::make_index_sequence<kLast>{});
        EXPECT_EQ(result, std::get<kLast>(row)) << "for: " << ::testing::PrintToString(row);
    }
}

/// The same from text to text: expectTexts(toUpper, {"a -> A", "b -> B"})
template <class Function>
void expectTexts(const Function& function, std::initializer_list<std::string_view> rows) {
    for (const std::string_view row : rows) {
        const std::size_t arrow = row.find(" -> ");
        EXPECT_EQ(function(std::string(row.substr(0, arrow))), row.substr(arrow + 4)) << row;
    }
}

/// The same from a text with a row a line; the first line is empty. A line that begins with a blank
/// goes on behind the one before, blanks included.
template <class Function>
void expectLines(const Function& function, std::string lines) {
    for (std::size_t at = 0; (at = lines.find("\n ", at)) != std::string::npos;) {
        lines.erase(at, 1);
    }
    std::istringstream rows(lines.substr(1));
    for (std::string row; std::getline(rows, row);) {
        expectTexts(function, {row});
    }
}

}  // namespace ZroCommon::testing
