// Runs the fuzz target once for each file given, or found in a folder given, and for "--random=N"
// on so many random inputs: corpora and models replay without a fuzzer, with any compiler.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> inputsUnder(const std::filesystem::path& path) {
    if (!std::filesystem::is_directory(path)) {
        return {path};
    }
    std::vector<std::filesystem::path> inputs;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) {
            inputs.push_back(entry.path());
        }
    }
    return inputs;
}

bool replay(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        return false;
    }
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
    return true;
}

/// The same bytes in every run. An input that fails can be told from the last line.
void replayRandom(std::size_t count) {
    std::mt19937 random(1);  // NOLINT(cert-msc51-cpp)
    for (std::size_t number = 0; number < count; ++number) {
        std::vector<std::uint8_t> input(random() % 2048);
        std::generate(input.begin(), input.end(),
                      [&random] { return static_cast<std::uint8_t>(random()); });
        std::fprintf(stderr, "random input %zu\r", number);
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
}

}  // namespace

int main(int count, char** arguments) {
    constexpr std::string_view kRandom = "--random=";
    std::size_t replayed = 0;
    for (int i = 1; i < count; ++i) {
        if (std::string_view(arguments[i]).starts_with(kRandom)) {
            replayRandom(std::stoul(arguments[i] + kRandom.size()));
            continue;
        }
        for (const auto& input : inputsUnder(arguments[i])) {
            if (!replay(input)) {
                return 1;
            }
            ++replayed;
        }
    }
    std::printf("%zu inputs replayed\n", replayed);
    return replayed == 0 ? 1 : 0;  // an empty corpus tests nothing
}
