#pragma once

#include <cstdint>
#include <span>

namespace ZroCommon::internal {

/// The CRC-32 of gzip (RFC 1952) over further bytes. \param before  that of the bytes so far, or 0
std::uint32_t extendCrc32(std::uint32_t before, std::span<const char> bytes);

}  // namespace ZroCommon::internal
