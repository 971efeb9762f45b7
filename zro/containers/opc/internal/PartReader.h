#pragma once

#include <functional>

#include "zro/containers/zip/ZRZipEntry.h"
#include "zro/xml/ZRXmlParser.h"

namespace ZroCommon::internal {

/// Looks at a start tag. \return whether to read on
using StartTagReader = std::function<bool(const ZRXmlParser& parser)>;

/// Shows the start tags of a part that describes others, one after the other.
///
/// Such a part has no business to refer to a DTD: nothing outside of it is opened, what is outside
/// counts as empty, and reading ends where entities or compression make too much of its bytes. No
/// fault of the part is an error.
/// \return whether the document was read to its end
bool readStartTags(ZRZipFileEntry& part, const StartTagReader& read);

}  // namespace ZroCommon::internal
