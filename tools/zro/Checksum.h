#pragma once

#include <cstdint>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>

namespace zro {

/// Size and CRC-32 of bytes that pass, as ZIP packages and gzip data have them.
class Checksum {
public:
    void add(std::string_view bytes);

    std::uint64_t size() const { return m_size; }
    std::uint32_t crc32() const { return m_crc32; }

private:
    std::uint64_t m_size = 0;
    std::uint32_t m_crc32 = 0;
};

/// Reads a stream to its end.
/// \param target  takes the bytes, as long as it can; may be null
Checksum checksumOf(std::istream& stream, std::ostream* target);

/// "is damaged: its CRC-32 is 00001A2B, and 00003C4D by its header"; empty when they are the same.
std::string wrongCrc32(const Checksum& given, std::uint32_t wanted);

/// "is damaged behind byte 7 of 9". Where a limit on resources may be the cause, it says so.
/// \param of  the size that was told; 0 when there is none
std::string damagedBehind(std::uint64_t size, std::uint64_t of);

}  // namespace zro
