#include "zro/containers/zip/internal/PartFacts.h"

namespace ZroCommon::internal {

const Relationships& relationshipsOf(const SharedRelationships& known) {
    static const Relationships s_none;
    return known == nullptr ? s_none : *known;
}

}  // namespace ZroCommon::internal
