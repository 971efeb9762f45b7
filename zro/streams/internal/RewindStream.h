#pragma once

#include "zro/streams/ZRStrStream.h"

namespace ZroCommon::internal {

/// Clears a failed state and reads from the first byte again: for entries of packages, whose one
/// stream goes to one reader after another. Seeking fails all the same.
void rewindStream(ZRStrStream& stream);

}  // namespace ZroCommon::internal
