#include "zro/containers/ole/OleDirInfo.h"

#include <algorithm>

#include "zro/containers/ole/internal/FileNumbers.h"
#include "zro/containers/ole/internal/NameKey.h"

namespace ZroCommon {
namespace {

using internal::loadNumber;
using internal::loadSigned;

constexpr unsigned kNameBytes = 64;

OleStorageType storageType(unsigned char byte) {
    return byte <= OLESTORAGE_ROOT ? static_cast<OleStorageType>(byte) : OLESTORAGE_UNKNOWN;
}

UnicodeString nameFrom(const unsigned char* bytes, unsigned length, bool littleEndian) {
    std::array<char16_t, kNameBytes / 2> units{};
    int32_t count = 0;
    for (unsigned i = 0; i + 1 < length; i += 2) {
        const auto unit = static_cast<char16_t>(loadNumber<std::uint16_t>(bytes + i, littleEndian));
        if (unit != 0) {
            units[static_cast<std::size_t>(count)] = unit;
            ++count;
        }
    }
    return {units.data(), count};
}

}  // namespace

bool OleDirInfo::parse(const unsigned char* data, bool littleEndian) {
    const unsigned nameLength = loadNumber<std::uint16_t>(data + 64, littleEndian);
    if (nameLength > kNameBytes) {
        return false;
    }
    m_name = nameFrom(data, nameLength, littleEndian);
    m_storageType = storageType(data[66]);
    m_color = data[67];
    m_leftSiblingID = loadSigned(data + 68, littleEndian);
    m_rightSiblingID = loadSigned(data + 72, littleEndian);
    m_childID = loadSigned(data + 76, littleEndian);
    const bool isPlace = isStorage() || isRoot();
    m_clsid = {};
    if (isPlace) {
        std::copy_n(data + 80, m_clsid.size(), m_clsid.begin());
    }
    m_stateBits = isPlace ? loadNumber<std::uint32_t>(data + 96, littleEndian) : 0;
    m_createTime = isPlace ? loadNumber<std::uint64_t>(data + 100, littleEndian) : 0;
    m_modifyTime = isPlace ? loadNumber<std::uint64_t>(data + 108, littleEndian) : 0;
    const bool hasBytes = isStream() || isRoot();
    m_startSect = hasBytes ? loadSigned(data + 116, littleEndian) : -1;
    m_streamSize = hasBytes ? loadSigned(data + 120, littleEndian) : 0;
    return true;
}

bool OleDirInfo::compareName(const char* name) const {
    return name != nullptr && internal::NameKey(name).matches(m_name);
}

}  // namespace ZroCommon
