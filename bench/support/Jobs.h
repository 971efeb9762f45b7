#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/support/Options.h"

namespace ZroCommon::bench {

/// One contender's way to do a thing.
struct Job {
    std::string what;
    std::string contender;
    std::function<double()> run;  ///< nanoseconds of a call, or of all that the job is about
};

/// Times the jobs of the contenders that are wanted, in turn, and records each under `kind`.
void runJobs(const Options& options, std::string_view kind, std::vector<Job> jobs);

}  // namespace ZroCommon::bench
