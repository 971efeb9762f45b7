#pragma once

#include <cstddef>
#include <span>

namespace ZroCommon::internal {

/// Fills from the system's random source. Never fails: where the source is out of reach, the clock
/// and the address space layout stand in, which is enough for hash keys and for name counters.
void fillWithRandomBytes(std::span<std::byte> bytes);

}  // namespace ZroCommon::internal
