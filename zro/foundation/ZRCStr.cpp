#include "zro/foundation/ZRCStr.h"

#include <cstddef>

namespace ZroCommon {

ZRCStr::~ZRCStr() = default;
ZRUtfStr::~ZRUtfStr() = default;

const char* ZRCStr::c_str() const {
    m_narrow = toNarrow();
    return m_narrow.c_str();
}

std::string ZRCStr::toNarrow() const {
    const int32_t needed = extract(0, length(), static_cast<char*>(nullptr), 0U);
    std::string narrow(static_cast<std::size_t>(needed), '\0');
    extract(0, length(), narrow.data(), static_cast<uint32_t>(needed));
    return narrow;
}

std::string ZRUtfStr::toNarrow() const {
    std::string narrow;
    toUTF8String(narrow);
    return narrow;
}

}  // namespace ZroCommon
