#pragma once

#include <span>

#include "zro/foundation/Text.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon::internal {

/// One entity of the MathML 2 set.
struct MathMLEntity {
    ZRNameEnum name = ZRN_EMPTY;
    UnicodeString value;
};

/// All 2086 entities, in the order of the row file. The first use of this or of `mathMLEntity`
/// interns their names and holds a reference on the shared name table from then on, so that the
/// numbers stay good. Any thread; the entries live as long as the process.
std::span<const MathMLEntity> mathMLEntities();

/// The value of an entity; empty for a name that is none. The reference stays good as long as the
/// process lives.
const UnicodeString& mathMLEntity(ZRName name);

}  // namespace ZroCommon::internal
