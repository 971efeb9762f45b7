#pragma once

#include <unicode/unistr.h>

namespace ZroCommon {

/// All text of the library: UTF-16 in ICU's string class. A unit is a `char16_t`.
using icu::UnicodeString;

}  // namespace ZroCommon
