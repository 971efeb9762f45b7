#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace ZroCommon::bench {

/// Nanoseconds of processor time that this thread has used; what other processes do is not in it.
double cpuNow();
/// Nanoseconds of the steady clock: for spans below some 50 us, which `cpuNow` is too coarse for.
double wallNow();

/// What one job took, in nanoseconds.
struct Spread {
    double median = 0;
    std::vector<double> rounds = {};  ///< in the order of measuring: compare jobs round by round
};

Spread spreadOf(std::vector<double> rounds);

/// Runs the jobs in turn, round by round, so that a slow spell of the machine meets all of them.
/// A first round only warms up. Each job answers with the time that it took. Every round begins
/// with another job.
std::vector<Spread> interleave(const std::vector<std::function<double()>>& jobs, int rounds);

/// The time of `action` on the given clock.
template <class Action>
double timed(double (*clock)(), Action&& action) {
    const double start = clock();
    action();
    return clock() - start;
}

/// Makes the compiler believe that the value is used.
template <class T>
void keep(const T& value) {
    asm volatile("" : : "r,m"(value) : "memory");
}

}  // namespace ZroCommon::bench
