#pragma once

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// Appends a number as C's "%g" prints it in the C locale, whatever the locale: six digits at most.
/// NaN is "nan" whatever its sign.
UnicodeString& appendReal(UnicodeString& text, double number);

}  // namespace ZroCommon::internal
