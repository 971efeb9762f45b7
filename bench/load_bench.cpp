// What loading the shared library costs over an empty one with the same dependencies. Each sample
// is a fresh process, which has loaded the dependencies with another empty library before it
// measures. The libraries are copies, as an installation makes them: the system keeps a file that a
// linker wrote here and there in many small pieces, and takes half as long again to map it.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/support/Options.h"
#include "bench/support/Record.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

// A copy of a file beside it, while this object lives.
class Copy {
public:
    explicit Copy(const std::filesystem::path& file) : m_path(file.string() + ".copy") {
        std::filesystem::remove(m_path);
        std::filesystem::copy_file(file, m_path);
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;
    ~Copy() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }

    std::string path() const { return m_path.string(); }

private:
    std::filesystem::path m_path;
};

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
    const Copy library(ZRO_BENCH_LIBRARY);
    const Copy empty(ZRO_BENCH_EMPTY_SECOND);
    const std::vector<Spread> times = interleave({[&] { return loadTime(library.path()); },
                                                  [&] {
                                                      return loadTime(empty.path());
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
