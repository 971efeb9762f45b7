#include "bench/support/Timing.h"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <utility>

namespace ZroCommon::bench {
namespace {

double now(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

}  // namespace

double cpuNow() {
    return now(CLOCK_THREAD_CPUTIME_ID);
}

double wallNow() {
    return now(CLOCK_MONOTONIC);
}

Spread spreadOf(std::vector<double> rounds) {
    if (rounds.empty()) {
        return {};
    }
    std::vector<double> sorted = rounds;
    std::sort(sorted.begin(), sorted.end());
    const std::size_t count = sorted.size();
    const double middle = (sorted[(count - 1) / 2] + sorted[count / 2]) / 2;
    return {.median = middle, .rounds = std::move(rounds)};
}

std::vector<Spread> interleave(const std::vector<std::function<double()>>& jobs, int rounds) {
    std::vector<std::vector<double>> samples(jobs.size());
    for (const auto& job : jobs) {
        job();
    }
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t turn = 0; turn < jobs.size(); ++turn) {
            const std::size_t job = (turn + static_cast<std::size_t>(round)) % jobs.size();
            samples[job].push_back(jobs[job]());
        }
    }
    std::vector<Spread> result;
    result.reserve(samples.size());
    for (auto& times : samples) {
        result.push_back(spreadOf(std::move(times)));
    }
    return result;
}

}  // namespace ZroCommon::bench
