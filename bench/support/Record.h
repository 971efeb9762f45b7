#pragma once

#include <string>
#include <string_view>

#include "bench/support/Timing.h"

namespace ZroCommon::bench {

/// One line of JSON on standard output, which run.py gathers: what was measured, and the figures.
class Record {
public:
    /// \param job  "pull", "tree" and so on
    Record(std::string_view job, std::string_view corpus, std::string_view contender);
    ~Record();
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    Record& set(std::string_view key, double value);
    Record& set(std::string_view key, std::string_view value);
    /// As "ns", and each round under "rounds".
    Record& setSpread(const Spread& spread);

private:
    void append(double value);
    void beginKey(std::string_view key);

    std::string m_line;
};

}  // namespace ZroCommon::bench
