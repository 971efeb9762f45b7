#pragma once

#include "zro/foundation/Export.h"

namespace ZroCommon {

/// Static helpers over texts and numbers. Nothing is held but what is built on first need and freed
/// by `cleanup`.
class ZRO_API ZRUtil {
public:
    /// Frees what was built on first need. Part of the library's `cleanup`.
    static void cleanup();

    /// Does nothing: something for a client to call, so that its linker keeps the library.
    static void checkLink();
};

}  // namespace ZroCommon
