#include "tools/zro/Checksum.h"

#include <array>

#include "zro/foundation/ZRResourceLimits.h"

#include "tools/zro/Text.h"

namespace zro {
namespace {

// By the polynomial of ISO 3309, its bits from the lowest on.
constexpr auto kTable = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t rest = byte;
        for (int bit = 0; bit < 8; ++bit) {
            rest = (rest & 1U) != 0 ? rest >> 1U ^ 0xEDB88320U : rest >> 1U;
        }
        table[byte] = rest;
    }
    return table;
}();

// Whether a stream may have been ended there to keep it from growing.
bool mayBeLimited(std::uint64_t size) {
    const auto limits = ZroCommon::ZRResourceLimits::getCurrent();
    return (limits.expandedBytes != 0 && size >= limits.expandedBytes)
           || (limits.expansionFactor != 0 && size > limits.expansionGrace);
}

}  // namespace

void Checksum::add(std::string_view bytes) {
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        m_register = m_register >> 8U ^ kTable[(m_register ^ byte) & 0xFFU];
    }
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

std::string wrongCrc32(const Checksum& given, std::uint32_t wanted, const char* place) {
    return given.crc32() == wanted ? ""
                                   : "is damaged: its CRC-32 is " + asHex(given.crc32()) + ", and "
                                         + asHex(wanted) + " by its " + place;
}

std::string damagedBehind(std::uint64_t size, std::uint64_t of) {
    return std::string(mayBeLimited(size) ? "is cut by --limits, or damaged," : "is damaged")
           + " behind byte " + withThousands(size) + (of == 0 ? "" : " of " + withThousands(of));
}

}  // namespace zro
