// The builtin names: one constant text, a constant index over it, and the strings that stand for
// the names. Nothing here has an address in it, so that loading the library does no work for the
// names; the strings are made when they are first asked for.

#include "zro/vocabulary/internal/BuiltinNames.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>

#include "zro/foundation/ZREmptyString.h"
#include "zro/vocabulary/ZRNameTable.h"
#include "zro/vocabulary/internal/NameHash.h"
#include "zro/vocabulary/internal/SharedNames.h"

namespace ZroCommon {
namespace {

// For the compiler alone: what follows is made of it.
constexpr std::u16string_view kRows[] = {
    u"",
#define ZR_NAME(enumerator, text) text,
#include "zro/vocabulary/BuiltinNames.inc"
};
constexpr std::size_t kCount = std::size(kRows);
static_assert(kCount == ZRN_LAST_BUILTIN + 1U, "the builtin names are numbered 1 to 1582");

constexpr std::size_t kUnitCount = [] {
    std::size_t sum = 0;
    for (const std::u16string_view& row : kRows) {
        sum += row.size();
    }
    return sum;
}();
static_assert(kUnitCount <= UINT16_MAX, "a start has 16 bits");

// All texts in the order of their numbers, and where each begins; the last entry is the end.
constexpr std::array<char16_t, kUnitCount> kUnits = [] {
    std::array<char16_t, kUnitCount> units{};
    std::size_t at = 0;
    for (const std::u16string_view& row : kRows) {
        for (const char16_t unit : row) {
            units[at++] = unit;
        }
    }
    return units;
}();

constexpr std::array<std::uint16_t, kCount + 1> kStarts = [] {
    std::array<std::uint16_t, kCount + 1> starts{};
    for (std::size_t number = 0; number < kCount; ++number) {
        starts[number + 1] = static_cast<std::uint16_t>(starts[number] + kRows[number].size());
    }
    return starts;
}();

constexpr std::u16string_view textOf(std::size_t number) {
    const std::size_t start = kStarts[number];
    return {kUnits.data() + start, kStarts[number + 1] - start};
}

// Open addressing with a load below 0.4: most look-ups see one slot.
struct Slot {
    std::uint16_t check = 0;   // what the place does not tell of the hash
    std::uint16_t length = 0;  // 0 is a free slot
    std::uint16_t start = 0;
    std::uint16_t number = 0;
};
constexpr std::size_t kSlots = 4096;
constexpr std::size_t kSlotMask = kSlots - 1;

constexpr std::uint16_t checkOf(std::uint32_t hash) {
    return static_cast<std::uint16_t>(hash >> 16U);
}

constexpr std::array<Slot, kSlots> kIndex = [] {
    std::array<Slot, kSlots> index{};
    for (std::size_t number = 1; number < kCount; ++number) {
        const std::u16string_view text = textOf(number);
        const std::uint32_t hash = internal::builtinNameHash(text);
        std::size_t at = hash & kSlotMask;
        while (index[at].length != 0) {
            at = (at + 1) & kSlotMask;
        }
        index[at] = {checkOf(hash), static_cast<std::uint16_t>(text.size()), kStarts[number],
                     static_cast<std::uint16_t>(number)};
    }
    return index;
}();

constinit std::atomic<bool> s_forgotten{false};

// The strings, in raw storage, so that no destructor runs while other static objects may still
// print names. They are made by blocks of about a page of memory.
constexpr std::size_t kBlock = 64;
alignas(kBlock) constinit std::array<std::byte, kCount * sizeof(UnicodeString)> s_storage{};
constinit std::array<std::atomic<bool>, kCount / kBlock + 1> s_isMade{};
constinit std::mutex s_making;

UnicodeString* stringAt(std::size_t number) {
    return reinterpret_cast<UnicodeString*>(s_storage.data()) + number;
}

void makeStrings(std::size_t block) {
    const std::lock_guard guard(s_making);
    if (s_isMade[block].load(std::memory_order_relaxed)) {
        return;
    }
    const std::size_t end = std::min(kCount, (block + 1) * kBlock);
    for (std::size_t number = block * kBlock; number < end; ++number) {
        const std::u16string_view text = textOf(number);
        std::construct_at(stringAt(number), false, text.data(), static_cast<int32_t>(text.size()));
    }
    s_isMade[block].store(true, std::memory_order_release);
}

}  // namespace

namespace internal {

ZRNameEnum findBuiltinName(std::u16string_view text) {
    const std::uint32_t hash = builtinNameHash(text);
    const std::uint16_t check = checkOf(hash);
    for (std::size_t at = hash & kSlotMask; kIndex[at].length != 0; at = (at + 1) & kSlotMask) {
        const Slot& slot = kIndex[at];
        if (slot.check == check && slot.length == text.size()
            && equalUnits(kUnits.data() + slot.start, text.data(), text.size())) {
            return s_forgotten.load(std::memory_order_relaxed)
                       ? ZRN_EMPTY
                       : static_cast<ZRNameEnum>(slot.number);
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
    const auto index = static_cast<std::size_t>(number);
    if (!s_isMade[index / kBlock].load(std::memory_order_acquire)) {
        makeStrings(index / kBlock);
    }
    return *stringAt(index);
}

}  // namespace ZroCommon
