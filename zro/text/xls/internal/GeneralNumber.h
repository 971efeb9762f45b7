#pragma once

#include "zro/text/xls/internal/DecimalString.h"

namespace ZroCommon::internal {

/// A number as mantissa (1 to 9 ahead of its point, with its sign) and power of ten.
struct ScaledNumber {
    double mantissa = 0;
    int exponent = 0;
};

/// Takes a finite number other than 0 apart.
ScaledNumber scaleToOneDigit(double number);

/// Writes a number as the format `General` shows it in so many columns.
/// \return false when it does not fit, and "#" characters stand for it
bool writeGeneral(double number, int width, DecimalString& text);

}  // namespace ZroCommon::internal
