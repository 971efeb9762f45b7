#pragma once

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// Loads a dynamic library. \param path  a path, or a bare name that the system looks up
/// \return a handle for `closeLibrary`, or null
void* openLibrary(const UnicodeString& path);

/// The address of a symbol, or null.
void* findSymbol(void* library, const char* name);

/// Gives the library back; null is ignored.
void closeLibrary(void* library);

}  // namespace ZroCommon::internal
