#include "bench/support/Memory.h"

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <string>

#include "bench/support/Timing.h"

namespace ZroCommon::bench {

double liveHeap() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

void settleHeap() {
    constexpr std::size_t kLarge = 4096;  // no size of small chunks
    void* const chunk = std::malloc(kLarge);
    keep(chunk);
    std::free(chunk);
}

double peakResident() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

bool resetPeakResident() {
    malloc_trim(0);
    std::ofstream clear("/proc/self/clear_refs");
    clear << "5" << std::flush;  // see proc(5): resets VmHWM to what is resident now
    return clear.good();
}

}  // namespace ZroCommon::bench
