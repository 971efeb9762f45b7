#pragma once

#include <array>
#include <cstddef>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

/// A universally unique identifier: 16 bytes, copied freely.
class ZRO_API ZRUUID {
public:
    /// A new random one: version 4 of RFC 9562, from the system's random source.
    ZRUUID();

    /// 32 upper-case hexadecimal digits in the order of the bytes, without hyphens.
    UnicodeString toString() const;

    bool operator==(const ZRUUID& other) const { return m_bytes == other.m_bytes; }

private:
    std::array<std::byte, 16> m_bytes{};
};

}  // namespace ZroCommon
