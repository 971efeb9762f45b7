// A sequence of operations on a memory stream, held against a string.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "fuzz/MemStreamModel.h"

namespace {

void require(const std::string& fault) {
    if (!fault.empty()) {
        std::fprintf(stderr, "%s\n", fault.c_str());
        std::abort();
    }
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    ZroCommon::fuzzing::MemStreamModel model(data[0] % 17U + 1);
    for (std::size_t i = 1; i + 2 < size; i += 3) {
        require(model.step(data[i], data[i + 1], data[i + 2] * 0x01010101U));
        require(i % 192 == 1 ? model.finish() : std::string());
    }
    require(model.finish());
    return 0;
}
