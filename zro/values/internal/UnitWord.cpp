#include "zro/values/internal/UnitWord.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kLongest = 4;

// Up to four units in lower case as one number; 0 for what no unit holds.
constexpr std::uint64_t packed(std::u16string_view word) {
    if (word.size() > kLongest) {
        return 0;
    }
    std::uint64_t number = 0;
    for (char16_t c : word) {
        if (c == 0x212A) {
            c = u'k';  // the Kelvin sign, which is a K to Unicode
        } else if (c >= u'A' && c <= u'Z') {
            c = static_cast<char16_t>(c | 0x20);
        }
        number = number << 16U | c;
    }
    return number;
}

// The frequent ones first.
constexpr auto kWords = std::to_array(
    {UnitWord{u"pt", ZRValueUnitPt}, UnitWord{u"%", ZRValueUnitPercent},
     UnitWord{u"em", ZRValueUnitEm}, UnitWord{u"mm", ZRValueUnitMm}, UnitWord{u"in", ZRValueUnitIn},
     UnitWord{u"cm", ZRValueUnitCm}, UnitWord{u"px", ZRValueUnitPx}, UnitWord{u"pc", ZRValueUnitPc},
     UnitWord{u"ex", ZRValueUnitEx}, UnitWord{u"deg", ZRValueUnitDeg},
     UnitWord{u"rad", ZRValueUnitRad}, UnitWord{u"grad", ZRValueUnitGrad},
     UnitWord{u"s", ZRValueUnitS}, UnitWord{u"ms", ZRValueUnitMs}, UnitWord{u"hz", ZRValueUnitHz},
     UnitWord{u"khz", ZRValueUnitKHz}, UnitWord{u"twip", ZRValueUnitTwip}});

constexpr auto kPacked = [] {
    std::array<std::uint64_t, kWords.size()> numbers{};
    for (std::size_t index = 0; index < kWords.size(); ++index) {
        numbers[index] = packed(kWords[index].text);
    }
    return numbers;
}();

}  // namespace

const UnitWord* findUnitWord(std::u16string_view word) {
    const auto* const found = std::find(kPacked.begin(), kPacked.end(), packed(word));
    return found == kPacked.end() ? nullptr
                                  : &kWords[static_cast<std::size_t>(found - kPacked.begin())];
}

}  // namespace ZroCommon::internal
