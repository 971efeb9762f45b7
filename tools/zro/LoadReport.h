#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "tools/zro/Statistics.h"
#include "tools/zro/Terminal.h"

namespace zro {

/// All that `zro load` has to tell.
struct LoadReport {
    std::string file;
    std::string encoding;
    bool pulled = false;
    TreeStatistics tree;
    std::optional<TokenStatistics> tokens;  ///< nothing when the input cannot be read twice
    std::size_t shownProperties = 8;

    std::uint64_t bytes = 0;
    double firstElementSeconds = 0;
    double totalSeconds = 0;
    std::uint64_t peakMemory = 0;  ///< bytes

    std::string savedTo;  ///< empty when nothing was saved
    double saveSeconds = 0;

    /// 10^6 bytes a second.
    double megabytesPerSecond() const;
};

/// The report for people, aligned.
void printText(std::ostream& out, const LoadReport& report, const Style& style);

/// The report as one JSON object on one line.
void printJson(std::ostream& out, const LoadReport& report);

}  // namespace zro
