#pragma once

#include <istream>
#include <memory>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The data of the first entry of a name, as `ZRZipFileEntry::getUncompressedStream` gives it, from
/// a package that need not be able to seek.
///
/// The walk goes no farther than to that entry and keeps nothing of those before it, so a package
/// inside a package takes no memory however much it expands to.
/// \return null when there is no such entry, or the stream is no package
/// \throws std::bad_alloc
std::unique_ptr<std::istream> openFirstEntry(std::istream& package, const UnicodeString& name);

}  // namespace ZroCommon::internal
