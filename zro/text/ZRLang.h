#pragma once

#include "zro/foundation/Export.h"

namespace ZroCommon {

/// A language with its script and country.
class ZRO_API ZRLang {
public:
    /// Does nothing: languages hold no state of the process. Part of the library's `cleanup`.
    static void cleanup();
};

}  // namespace ZroCommon
