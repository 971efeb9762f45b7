#include "zro/text/xls/internal/FormatCache.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "zro/text/xls/internal/FormatCompiler.h"

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kSlots = 32;
constexpr std::size_t kMaxLength = 64;  // of a format that is remembered; some 20 KB a thread

std::u16string_view unitsOf(const UnicodeString& text) {
    return {text.getBuffer(), static_cast<std::size_t>(std::max(text.length(), 0))};
}

std::size_t slotOf(std::u16string_view format) {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15U;
    constexpr std::size_t kUnitsInWord = 4;
    std::uint64_t hash = format.size();
    while (!format.empty()) {
        std::uint64_t word = 0;
        const std::size_t count = std::min(format.size(), kUnitsInWord);
        std::memcpy(&word, format.data(), count * sizeof(char16_t));
        hash = (hash ^ word) * kMultiplier;
        hash ^= hash >> 29U;
        format.remove_prefix(count);
    }
    return static_cast<std::size_t>(hash % kSlots);
}

struct Slot {
    std::array<char16_t, kMaxLength> source{};
    std::size_t length = 0;
    bool isCurrentVersion = true;
    bool isUsed = false;
    bool isValid = false;
    FMT2 format;

    bool holds(std::u16string_view text, bool currentVersion) const {
        return isUsed && isCurrentVersion == currentVersion
               && std::u16string_view(source.data(), length) == text;
    }

    void fill(std::u16string_view text, bool currentVersion) {
        isUsed = text.size() <= kMaxLength;
        if (isUsed) {
            std::copy(text.begin(), text.end(), source.begin());
            length = text.size();
        }
        isCurrentVersion = currentVersion;
        isValid = FormatCompiler(text, currentVersion, format).compile();
    }
};

using Slots = std::array<Slot, kSlots>;

}  // namespace

const FMT2* compiledFormat(const UnicodeString& format, bool isCurrentVersion) {
    thread_local std::unique_ptr<Slots> s_slots;
    if (!s_slots) {
        s_slots = std::make_unique<Slots>();
    }
    const std::u16string_view text = unitsOf(format);
    Slot& slot = (*s_slots)[slotOf(text)];
    if (!slot.holds(text, isCurrentVersion)) {
        slot.fill(text, isCurrentVersion);
    }
    return slot.isValid ? &slot.format : nullptr;
}

}  // namespace ZroCommon::internal
