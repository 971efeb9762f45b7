#pragma once

#include "zro/foundation/Export.h"

namespace ZroCommon {

class ZRNode;

/// Finds nodes that lie under themselves. The tree lets any node be put under any node: a node that
/// goes under its own descendant forms a ring with it, cut off from the document, which no walk
/// over it leaves and no document releases.
class ZRO_API ZRTreeCheck {
public:
    /// The first node above `node`, itself included, that is its own ancestor; null when the way up
    /// ends, and so each walk over the subtree of `node`. Takes time in proportion to the depth and
    /// loads nothing. Null for null.
    static const ZRNode* findCycle(const ZRNode* node);

    /// With true, a library built without NDEBUG ends the program by `assert` where an edit of a
    /// tree would make a cycle. Each edit then takes time in proportion to the depth. Off at the
    /// start; for the whole process and from any thread.
    static void setAssertions(bool on);
    static bool areAssertionsOn();
};

}  // namespace ZroCommon
