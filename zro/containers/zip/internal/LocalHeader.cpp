#include "zro/containers/zip/internal/LocalHeader.h"

#include <array>
#include <string>

#include "zro/containers/zip/internal/PackageReader.h"

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kSignatureSize = 4;

// On purpose: in the default code page, whatever bit 11 of the flags says of UTF-8.
UnicodeString readName(PackageReader& reader, std::size_t length) {
    std::array<char, 256> usual{};
    std::string unusual;
    char* bytes = usual.data();
    if (length > usual.size()) {
        unusual.resize(length);
        bytes = unusual.data();
    }
    const std::size_t count = reader.read(bytes, length);
    return {bytes, static_cast<int32_t>(count)};
}

}  // namespace

std::uint32_t FieldReader::number(std::size_t offset, std::size_t size) const {
    if (m_bytes.size() < offset + size) {
        return 0;
    }
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        value |= std::uint32_t{static_cast<unsigned char>(m_bytes[offset + i])} << (8 * i);
    }
    return value;
}

LocalHeader LocalHeader::read(PackageReader& reader) {
    std::array<char, kSize - kSignatureSize> bytes{};
    const FieldReader fields(bytes.data(), reader.read(bytes.data(), bytes.size()));
    LocalHeader header{.versionNeeded = fields.at16(0),
                       .flags = fields.at16(2),
                       .method = fields.at16(4),
                       .time = fields.at16(6),
                       .date = fields.at16(8),
                       .crc32 = fields.at32(10),
                       .compressedSize = fields.at32(14),
                       .uncompressedSize = fields.at32(18),
                       .nameLength = fields.at16(22),
                       .extraLength = fields.at16(24),
                       .fileName = {}};
    header.fileName = readName(reader, header.nameLength);
    return header;
}

}  // namespace ZroCommon::internal
