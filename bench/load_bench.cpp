// What loading the shared library costs over an empty one with the same dependencies. Each sample
// is a fresh process, which has loaded the dependencies with another empty library before it
// measures.

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

double loadTime(const std::string& library) {
    const std::string command =
        std::string(ZRO_BENCH_PROBE) + " " + ZRO_BENCH_EMPTY_FIRST + " " + library;
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    double nanoseconds = 0;
    if (pipe == nullptr || std::fscanf(pipe.get(), "%lf", &nanoseconds) != 1) {
        throw std::runtime_error("cannot run " + command);
    }
    return nanoseconds;
}

void run(const Options& options) {
    constexpr int kRoundsPerRound = 10;  // one sample takes a few milliseconds
    const std::vector<Spread> times = interleave({[] { return loadTime(ZRO_BENCH_LIBRARY); },
                                                  [] {
                                                      return loadTime(ZRO_BENCH_EMPTY_SECOND);
                                                  }},
                                                 options.rounds * kRoundsPerRound);
    Record("load", "library", "zro").setSpread(times[0]);
    Record("load", "library", "empty").setSpread(times[1]);
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
