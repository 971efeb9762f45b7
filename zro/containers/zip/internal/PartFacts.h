#pragma once

#include <map>
#include <memory>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The relationships of a part or of a whole package. The first of a key stays.
struct Relationships {
    using Map = std::map<UnicodeString, UnicodeString>;

    Map ids;    ///< identifier to target
    Map types;  ///< type to target
    Map modes;  ///< target to mode, of those that name one

    bool isEmpty() const { return ids.empty() && types.empty(); }
};

using SharedRelationships = std::shared_ptr<const Relationships>;

/// The relationships, or none at all for null.
const Relationships& relationshipsOf(const SharedRelationships& known);

/// What a package says of one of its parts, and whether the part has said what it has to say: its
/// content cannot change, so reading it once is enough.
struct PartFacts {
    UnicodeString contentType;
    SharedRelationships relationships;

    SharedRelationships told;  ///< by this part about another; null when it was not read as such
    bool hasToldTypes = false;
};

}  // namespace ZroCommon::internal
