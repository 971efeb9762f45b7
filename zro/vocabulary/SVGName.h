#pragma once

#include "zro/foundation/Export.h"

namespace ZroCommon {

/// A name of the SVG vocabulary: a number in a numbering of its own, beside that of `ZRName`.
class ZRO_API SVGName {
public:
    /// Forgets the names: no text is one of them any more. Part of the library's `cleanup`.
    static void cleanup();
};

}  // namespace ZroCommon
