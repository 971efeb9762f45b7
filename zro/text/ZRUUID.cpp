#include "zro/text/ZRUUID.h"

#include <string_view>

#include "zro/platform/internal/RandomBytes.h"

namespace ZroCommon {

ZRUUID::ZRUUID() {
    internal::fillWithRandomBytes(m_bytes);
    constexpr std::size_t kVersion = 6;
    constexpr std::size_t kVariant = 8;
    m_bytes[kVersion] = (m_bytes[kVersion] & std::byte{0x0F}) | std::byte{0x40};
    m_bytes[kVariant] = (m_bytes[kVariant] & std::byte{0x3F}) | std::byte{0x80};
}

UnicodeString ZRUUID::toString() const {
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    std::array<char16_t, 32> digits{};
    char16_t* next = digits.data();
    for (const std::byte byte : m_bytes) {
        const auto bits = std::to_integer<unsigned>(byte);
        *next++ = kDigits[bits >> 4U];
        *next++ = kDigits[bits & 15U];
    }
    return {digits.data(), static_cast<int32_t>(digits.size())};
}

}  // namespace ZroCommon
