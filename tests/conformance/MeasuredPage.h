#pragma once

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

namespace ZroCommon::testing {

/// Compares what was measured with what a page says between its two marks, or writes it there.
/// \return an exit status: 1 when the page says something else
inline int comparePage(const std::string& path, const std::string& measured, bool write) {
    constexpr std::string_view kBegin = "<!-- measured: begin -->\n";
    constexpr std::string_view kEnd = "<!-- measured: end -->";
    std::ifstream in(path);
    std::string page{std::istreambuf_iterator<char>(in), {}};
    const std::size_t begin = page.find(kBegin);
    const std::size_t end = page.find(kEnd);
    if (begin == std::string::npos || end == std::string::npos) {
        std::cerr << path << " has no place for the tables\n";
        return 1;
    }
    const std::size_t from = begin + kBegin.size();
    if (page.substr(from, end - from) == measured) {
        return 0;
    }
    if (write) {
        std::ofstream(path) << page.replace(from, end - from, measured);
        return 0;
    }
    std::cout << measured << '\n' << path << " says something else; see --write\n";
    return 1;
}

}  // namespace ZroCommon::testing
