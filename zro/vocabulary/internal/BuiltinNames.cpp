// The builtin names: constant texts, a constant index over them, and the strings that stand for
// them. The strings are aliases of the constant texts, so start-up allocates nothing.

#include "zro/vocabulary/internal/BuiltinNames.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "zro/foundation/ZREmptyString.h"
#include "zro/vocabulary/ZRNameTable.h"
#include "zro/vocabulary/internal/NameHash.h"
#include "zro/vocabulary/internal/SharedNames.h"

namespace ZroCommon {
namespace {

constexpr std::u16string_view kTexts[] = {
    u"",
#define ZR_NAME(enumerator, text) text,
#include "zro/vocabulary/BuiltinNames.inc"
};
constexpr std::size_t kCount = std::size(kTexts);
static_assert(kCount == ZRN_LAST_BUILTIN + 1U, "the builtin names are numbered 1 to 1582");

// Open addressing with a load below 0.4: most look-ups see one slot.
struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t number = 0;  // 0 is a free slot
};
constexpr std::size_t kSlots = 4096;
constexpr std::size_t kSlotMask = kSlots - 1;

constexpr std::array<Slot, kSlots> kIndex = [] {
    std::array<Slot, kSlots> index{};
    for (std::size_t number = 1; number < kCount; ++number) {
        const std::uint32_t hash = internal::builtinNameHash(kTexts[number]);
        std::size_t at = hash & kSlotMask;
        while (index[at].number != 0) {
            at = (at + 1) & kSlotMask;
        }
        index[at] = {hash, static_cast<std::uint32_t>(number)};
    }
    return index;
}();

// Raw storage, so that no destructor runs while other static objects may still print names.
alignas(UnicodeString) std::array<std::byte, kCount * sizeof(UnicodeString)> s_storage;
constinit std::atomic<bool> s_forgotten{false};

// Behind the empty string and ahead of every ordinary initialiser.
struct Strings {
    Strings() {
        void* place = s_storage.data();
        std::size_t room = s_storage.size();
        auto* strings =
            static_cast<UnicodeString*>(std::align(alignof(UnicodeString), room, place, room));
        for (const std::u16string_view& text : kTexts) {
            std::construct_at(strings++, true, text.data(), static_cast<int32_t>(text.size()));
        }
    }
};
__attribute__((init_priority(102))) const Strings s_strings;

const UnicodeString& stringAt(std::size_t number) {
    return reinterpret_cast<const UnicodeString*>(s_storage.data())[number];
}

}  // namespace

namespace internal {

ZRNameEnum findBuiltinName(std::u16string_view text) {
    const std::uint32_t hash = builtinNameHash(text);
    for (std::size_t at = hash & kSlotMask; kIndex[at].number != 0; at = (at + 1) & kSlotMask) {
        if (kIndex[at].hash == hash && kTexts[kIndex[at].number] == text) {
            return s_forgotten.load(std::memory_order_relaxed)
                       ? ZRN_EMPTY
                       : static_cast<ZRNameEnum>(kIndex[at].number);
        }
    }
    return ZRN_EMPTY;
}

void forgetBuiltinNames() {
    s_forgotten.store(true, std::memory_order_relaxed);
}

}  // namespace internal

ZRNameEnum ZRNameTable::getBuiltinNameEnum(const UnicodeString& text) {
    return internal::findBuiltinName({text.getBuffer(), static_cast<std::size_t>(text.length())});
}

const UnicodeString& ZRNameTable::getBuiltinNameString(ZRNameEnum number) {
    if (number < 1 || number > ZRN_LAST_BUILTIN) {
        return ZREmptyString::EMPTY_VALUE;
    }
    return stringAt(static_cast<std::size_t>(number));
}

}  // namespace ZroCommon
