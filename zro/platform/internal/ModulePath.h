#pragma once

#include <optional>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The directory, with its "/" at the end, of a dynamic library that this process has loaded.
/// \param module  its name as the loader knows it, such as "libm.so.6"; nothing gets loaded
std::optional<UnicodeString> moduleDirectory(const char* module);

/// The value of an environment variable, read as UTF-8. The environment has no lock of its own: the
/// caller holds the library's.
std::optional<UnicodeString> environmentValue(const char* name);

}  // namespace ZroCommon::internal
