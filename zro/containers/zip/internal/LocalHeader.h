#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

class PackageReader;

/// Little-endian numbers in a record that may be cut off: a number that is not whole is 0.
class FieldReader {
public:
    FieldReader(const char* bytes, std::size_t size) : m_bytes(bytes, size) {}

    std::uint16_t at16(std::size_t offset) const {
        return static_cast<std::uint16_t>(number(offset, 2));
    }
    std::uint32_t at32(std::size_t offset) const { return number(offset, 4); }

private:
    std::uint32_t number(std::size_t offset, std::size_t size) const;

    std::span<const char> m_bytes;
};

/// What a local header says behind its signature, in its order.
struct LocalHeader {
    static constexpr std::uint64_t kSize = 30;  // the signature included, without name and extra

    std::uint16_t versionNeeded = 0;
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint16_t time = 0;
    std::uint16_t date = 0;
    std::uint32_t crc32 = 0;
    std::uint32_t compressedSize = 0;
    std::uint32_t uncompressedSize = 0;
    std::uint16_t nameLength = 0;
    std::uint16_t extraLength = 0;
    UnicodeString fileName;

    /// Reads what follows the signature, up to the end of the name.
    static LocalHeader read(PackageReader& reader);
};

}  // namespace ZroCommon::internal
