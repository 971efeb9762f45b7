#pragma once

#include "zro/containers/zip/ZRZipEntry.h"
#include "zro/containers/zip/internal/PartFacts.h"
#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The part with the relationships of the whole package.
constexpr const char16_t* kPackageRelationships = u"_rels/.rels";

/// The name of the part with the relationships of another: "a/_rels/b.xml.rels" for "a/b.xml".
UnicodeString relationshipPartOf(const UnicodeString& partName);

/// Reads the relationships of the package, whose targets stay as they are written.
SharedRelationships readRelationships(ZRZipFileEntry& part);

/// Reads the relationships of a part. Targets inside the package become names of entries.
SharedRelationships readRelationships(ZRZipFileEntry& part, const UnicodeString& ofPartName);

}  // namespace ZroCommon::internal
