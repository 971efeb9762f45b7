#pragma once

#include <functional>
#include <map>

#include "zro/containers/zip/ZRZipEntry.h"
#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// Media types by the extension of a part's name, its dot included.
using DefaultTypes = std::map<UnicodeString, UnicodeString>;

/// What to do with the media type of one part, told by its name without a leading "/".
using OverrideTaker = std::function<void(const UnicodeString& name, const UnicodeString& type)>;

/// Reads "[Content_Types].xml". At the first thing that does not belong there reading ends, and the
/// defaults are lost.
/// \return whether it was read to its end
bool readContentTypes(ZRZipFileEntry& part, DefaultTypes& defaults, const OverrideTaker& take);

}  // namespace ZroCommon::internal
