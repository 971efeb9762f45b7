#include "zro/containers/zip/internal/PartFacts.h"

namespace ZroCommon::internal {

const Relationships& relationshipsOf(const SharedRelationships& known) {
    static const Relationships none;
    return known == nullptr ? none : *known;
}

}  // namespace ZroCommon::internal
