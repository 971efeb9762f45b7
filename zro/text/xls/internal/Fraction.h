#pragma once

#include <cstdint>

namespace ZroCommon::internal {

struct Fraction {
    double numerator = 0;  ///< an integer
    std::int16_t denominator = 1;
};

/// The fraction of a format with a literal denominator (`?/8`): the nearest one, a tie up.
Fraction fractionOver(std::uint16_t denominator, double magnitude);

/// The fraction of a format with placeholders (`??/??`).
///
/// Numerators are tried upward from 1, each with the denominator next to it, and one wins over the
/// winner so far when its error, relative to the denominator, is smaller by 1e-8; both stay below
/// ten to the power of `digits`. A denominator wraps at 16 bits. The work does not grow with
/// `digits`.
Fraction fractionWithin(int digits, double magnitude);

}  // namespace ZroCommon::internal
