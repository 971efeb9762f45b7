// What loading the library costs over an empty library of the same dependencies, which are loaded
// already. Fails beyond a bound that only work at start-up could reach: tables built, names hashed.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <vector>

namespace {

constexpr int kRounds = 201;
constexpr double kBoundMicroseconds = 2000;

double microsecondsToLoad(const char* library) {
    const auto start = std::chrono::steady_clock::now();
    void* handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    const auto end = std::chrono::steady_clock::now();
    if (handle == nullptr) {
        std::fprintf(stderr, "cannot load %s: %s\n", library, dlerror());
        std::exit(1);
    }
    dlclose(handle);
    return std::chrono::duration<double, std::micro>(end - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: load_cost LIBRARY EMPTY_LIBRARY\n");
        return 2;
    }
    std::vector<double> loaded;
    std::vector<double> empty;
    for (int round = 0; round < kRounds; ++round) {
        loaded.push_back(microsecondsToLoad(arguments[1]));
        empty.push_back(microsecondsToLoad(arguments[2]));
    }
    const double cost = median(loaded) - median(empty);
    std::printf("library %.1f us, empty library %.1f us, difference %.1f us\n", median(loaded),
                median(empty), cost);
    return cost <= kBoundMicroseconds ? 0 : 1;
}
