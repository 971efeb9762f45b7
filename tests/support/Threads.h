#pragma once

#include <cstddef>
#include <thread>
#include <vector>

namespace ZroCommon::testing {

/// Runs `work(0)` to `work(count - 1)`, each in a thread of its own, and waits for all.
template <class Work>
void inThreads(int count, Work work) {
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        threads.emplace_back(work, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace ZroCommon::testing
