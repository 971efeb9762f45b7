#pragma once

#include <string_view>

#include "zro/values/ZRValueUnitType.h"

namespace ZroCommon::internal {

/// A unit as it is read.
struct UnitWord {
    std::u16string_view text;  // in lower case
    ZRValueUnitType unit;
};

/// The unit of that name in any case; null when there is none. The percent sign is the unit of a
/// number as well.
const UnitWord* findUnitWord(std::u16string_view word);

}  // namespace ZroCommon::internal
