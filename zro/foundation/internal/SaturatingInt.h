#pragma once

#include <limits>

namespace ZroCommon::internal {

/// The number without its fraction, as far as an `int` reaches; NaN gives 0. A plain cast of what
/// does not fit is undefined.
constexpr int saturatingInt(double number) {
    constexpr double kMin = std::numeric_limits<int>::min();
    constexpr double kMax = std::numeric_limits<int>::max();
    if (number >= kMax) {
        return std::numeric_limits<int>::max();
    }
    if (number <= kMin) {
        return std::numeric_limits<int>::min();
    }
    return number == number ? static_cast<int>(number) : 0;
}

}  // namespace ZroCommon::internal
