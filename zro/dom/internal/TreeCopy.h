#pragma once

#include "zro/dom/ZRNode.h"

namespace ZroCommon::internal {

/// Appends copies of all descendants of `source` to `target`, each made by `cloneNode(false)`. What
/// has no copy is left out with all below it; texts and attributes are copied without what is below
/// them. Depth does not matter.
void appendClones(ZRNode& source, ZRNode& target);

}  // namespace ZroCommon::internal
