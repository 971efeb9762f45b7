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
#include <span>

#include "zro/foundation/ZREmptyString.h"
#include "zro/foundation/internal/PackedTexts.h"
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
constexpr internal::PackedTexts<kRows> kTexts;
constexpr std::size_t kCount = kTexts.kCount;
static_assert(kCount == ZRN_LAST_BUILTIN + 1U, "the builtin names are numbered 1 to 1582");

struct Slot {
    std::uint16_t length = 0;
    std::uint16_t start = 0;
    std::uint16_t number = 0;  // 0 in a free slot
    std::uint16_t unused = 0;
};

// A perfect hash, so that a look-up sees one slot and never has to guess whether to go on: one part
// of a name's hash chooses a displacement, and that turns another part into a place which no other
// name has.
class Index {
public:
    static constexpr std::size_t kSlots = 2048;

    constexpr Index();

    // The one slot where the name of this hash can be.
    constexpr const Slot& slotOf(std::uint32_t hash) const {
        return m_slots[place(hash, m_displacements[bucketOf(hash)])];
    }
    constexpr bool isWhole() const { return m_isWhole; }

private:
    static constexpr std::size_t kBuckets = 512;
    static constexpr unsigned kDisplacements = 256;

    static constexpr std::size_t bucketOf(std::uint32_t hash) {
        return hash >> 16U & (kBuckets - 1);
    }
    static constexpr std::size_t place(std::uint32_t hash, unsigned displacement) {
        return (hash ^ displacement) & (kSlots - 1);
    }
    constexpr bool fill(std::span<const std::uint16_t> numbers, unsigned displacement);
    constexpr void settle(std::size_t bucket, std::span<const std::uint16_t> numbers);

    std::array<std::uint8_t, kBuckets> m_displacements{};
    std::array<Slot, kSlots> m_slots{};
    bool m_isWhole = true;
};

constexpr std::uint32_t hashOf(std::size_t number) {
    return internal::builtinNameHash(kTexts[number]);
}

// Puts names into their places under a displacement, unless one of those is taken.
constexpr bool Index::fill(std::span<const std::uint16_t> numbers, unsigned displacement) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::uint16_t number = numbers[i];
        Slot& slot = m_slots[place(hashOf(number), displacement)];
        if (slot.number != 0) {
            while (i-- > 0) {
                m_slots[place(hashOf(numbers[i]), displacement)] = {};
            }
            return false;
        }
        slot = {kTexts.length(number), kTexts.start(number), number};
    }
    return true;
}

// Gives all names of a bucket their places, under the first displacement that can.
constexpr void Index::settle(std::size_t bucket, std::span<const std::uint16_t> numbers) {
    unsigned displacement = 0;
    while (displacement < kDisplacements && !fill(numbers, displacement)) {
        ++displacement;
    }
    m_isWhole = m_isWhole && displacement < kDisplacements;
    m_displacements[bucket] = static_cast<std::uint8_t>(displacement);
}

// Full buckets first, while most places are free.
constexpr Index::Index() {
    constexpr std::size_t kMost = 16;
    std::array<std::array<std::uint16_t, kMost>, kBuckets> buckets{};
    std::array<std::uint8_t, kBuckets> counts{};
    for (std::size_t number = 1; number < kCount; ++number) {
        const std::size_t bucket = bucketOf(hashOf(number));
        buckets[bucket].at(counts[bucket]++) = static_cast<std::uint16_t>(number);
    }
    for (std::size_t count = kMost; count > 0; --count) {
        for (std::size_t bucket = 0; bucket < kBuckets; ++bucket) {
            if (counts[bucket] == count) {
                settle(bucket, std::span(buckets[bucket]).first(count));
            }
        }
    }
}

constexpr Index kIndex;
static_assert(kIndex.isWhole(), "other constants in the hash give each name a place");

// Whether the text of a slot is this one, of the same length. Texts differ in length all the time,
// so this takes few branches on it.
bool isTextOf(const Slot& slot, std::u16string_view text, const internal::NameWindows& windows) {
    const char16_t* const own = kTexts.units() + slot.start;
    if (text.size() <= internal::NameWindows::kWhole) {
        return internal::NameWindows({own, text.size()}).equal(windows);
    }
    return internal::equalUnits(own, text.data(), text.size());
}

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
        const std::u16string_view text = kTexts[number];
        std::construct_at(stringAt(number), false, text.data(), static_cast<int32_t>(text.size()));
    }
    s_isMade[block].store(true, std::memory_order_release);
}

}  // namespace

namespace internal {

ZRNameEnum findBuiltinName(std::u16string_view text) {
    const NameWindows windows(text);
    const Slot& slot = kIndex.slotOf(builtinNameHash(windows, text.size()));
    if (slot.length != text.size() || !isTextOf(slot, text, windows)
        || s_forgotten.load(std::memory_order_relaxed)) {
        return ZRN_EMPTY;
    }
    return static_cast<ZRNameEnum>(slot.number);
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
