#include "tools/zro/Checksum.h"

#include <array>

#include <zlib.h>

#include "zro/foundation/ZRResourceLimits.h"

#include "tools/zro/Text.h"

namespace zro {
namespace {

// Whether a stream may have been ended there to keep it from growing.
bool mayBeLimited(std::uint64_t size) {
    const auto limits = ZroCommon::ZRResourceLimits::getCurrent();
    return (limits.expandedBytes != 0 && size >= limits.expandedBytes)
           || (limits.expansionFactor != 0 && size > limits.expansionGrace);
}

std::string digitsOf(std::uint32_t crc32) {
    const std::string digits = asHex(crc32);
    return std::string(8 - digits.size(), '0') + digits;
}

}  // namespace

void Checksum::add(std::string_view bytes) {
    const auto* const start = reinterpret_cast<const Bytef*>(bytes.data());
    m_crc32 = static_cast<std::uint32_t>(crc32_z(m_crc32, start, bytes.size()));
    m_size += bytes.size();
}

Checksum checksumOf(std::istream& stream, std::ostream* target) {
    Checksum sum;
    std::array<char, 65536> block{};
    while (target == nullptr || *target) {
        const std::streamsize count = stream.rdbuf()->sgetn(block.data(), block.size());
        if (count <= 0) {
            break;
        }
        sum.add({block.data(), static_cast<std::size_t>(count)});
        if (target != nullptr) {
            target->write(block.data(), count);
        }
    }
    return sum;
}

std::string wrongCrc32(const Checksum& given, std::uint32_t wanted) {
    return given.crc32() == wanted ? ""
                                   : "is damaged: its CRC-32 is " + digitsOf(given.crc32())
                                         + ", and " + digitsOf(wanted) + " by its header";
}

std::string damagedBehind(std::uint64_t size, std::uint64_t of) {
    return std::string(mayBeLimited(size) ? "is cut by --limits, or damaged," : "is damaged")
           + " behind byte " + withThousands(size) + (of == 0 ? "" : " of " + withThousands(of));
}

}  // namespace zro
