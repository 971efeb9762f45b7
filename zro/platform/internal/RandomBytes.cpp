#include "zro/platform/internal/RandomBytes.h"

#include <chrono>
#include <cstdint>
#include <sys/random.h>

namespace ZroCommon::internal {
namespace {

void fillFromClock(std::span<std::byte> bytes) {
    auto state =
        static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count())
        ^ reinterpret_cast<std::uintptr_t>(bytes.data());
    for (std::byte& byte : bytes) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        byte = static_cast<std::byte>(state >> 56U);
    }
}

}  // namespace

void fillWithRandomBytes(std::span<std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t got = getrandom(bytes.data(), bytes.size(), GRND_NONBLOCK);
        if (got <= 0) {
            fillFromClock(bytes);
            return;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(got));
    }
}

}  // namespace ZroCommon::internal
