#pragma once

#include <cstddef>

namespace ZroCommon::testing {

// Memory.cpp replaces the operator new of a program that uses any of these.

/// How often memory was asked for so far: by `new`, and by texts once `lendTextsMemory` was called.
long allocations();

/// So many calls of `new` succeed from now on, then one fails, or all that follow. Below 0 none
/// fails.
void letNewsSucceed(long count, bool failsForGood = true);

/// The most that `new` has given out since this was made and that was held at once, in bytes; there
/// may be one of them at a time.
class PeakMemory {
public:
    PeakMemory();
    std::size_t bytes() const;

private:
    std::size_t m_before;
};

/// Texts, which do without `new`, ask here from now on, and get no piece larger than this.
void lendTextsMemory(std::size_t largest = static_cast<std::size_t>(-1));

}  // namespace ZroCommon::testing
