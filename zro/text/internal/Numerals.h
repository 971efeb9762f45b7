#pragma once

#include <string_view>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

// Numbers in letters. All are above 0.

/// Counts without a zero: behind the last letter comes the first one twice.
/// \param letters  two or more
void appendBijective(UnicodeString& text, int number, std::u16string_view letters);

/// A Roman numeral.
/// \param letters  one, five, ten, fifty and so on; ends with the sign of the highest decade, which
///                 has no five
/// \param hasSmall  whether 1 to 12 have one character each, from the first letter on
void appendRoman(UnicodeString& text, int number, std::u16string_view letters, bool hasSmall);
/// The largest number that is written with these letters.
int largestRoman(std::u16string_view letters);

/// One letter for each digit, none for a 0; highest decade first.
/// \param letters  of the ones, then the tens and so on, nine for each decade; what lies beyond
///                 the last is not written
void appendAdditive(UnicodeString& text, int number, std::u16string_view letters);

/// Hebrew letters, with `thousands` behind the numeral of the thousands.
void appendHebrew(UnicodeString& text, int number, const UnicodeString& thousands);

/// The cycle of sixty: a heavenly stem with an earthly branch.
void appendSexagenary(UnicodeString& text, int number);

constexpr std::u16string_view kHeavenlyStems = u"甲乙丙丁戊己庚辛壬癸";
/// On purpose: the eleventh is U+620D, one beyond the usual character.
constexpr std::u16string_view kEarthlyBranches = u"子丑寅卯辰巳午未申酉戍亥";
static_assert(kEarthlyBranches[10] == 0x620D);

}  // namespace ZroCommon::internal
