#pragma once

#include "zro/foundation/Export.h"

namespace ZroCommon {

/// 403: version 4.3 of the library.
ZRO_API int getLibVersion();

/// Ends the global state of the library and of ICU, for a host that wants the memory back before
/// the process ends, the reserve for the nodes of trees included. Nothing of either may be used
/// afterwards, nor by other threads meanwhile.
ZRO_API void cleanup();

}  // namespace ZroCommon
