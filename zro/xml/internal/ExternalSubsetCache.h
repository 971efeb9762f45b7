#pragma once

#include <memory>

#include "zro/foundation/Text.h"
#include "zro/xml/ZRLimits.h"
#include "zro/xml/internal/EntityTable.h"

namespace ZroCommon::internal {

/// The entities of an external subset, scanned once for the process however many documents cite it.
/// Any thread may ask; two that ask for a new one at a time both scan it, and one result is kept.
/// \param uri      the full URI, the key
/// \param baseUri  for a URI that is not absolute
/// \param limits   of the document that cites it
/// \throws ZRError  when the subset cannot be opened or scanned; that is not remembered
std::shared_ptr<const EntityTable>
externalSubset(const UnicodeString& uri, const UnicodeString& baseUri, const ZRLimits& limits);

/// Forgets all of them; tables in use stay with their users.
void forgetExternalSubsets();

}  // namespace ZroCommon::internal
