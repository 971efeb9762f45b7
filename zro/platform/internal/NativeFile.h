#pragma once

#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The name under which the operating system knows a local path, in UTF-8: the only road from a
/// text to a system call. None when there can be no such file here; callers then behave as for a
/// file that is not there.
///
/// "\\tmp\a.xml" and "\\localhost\tmp\a.xml", which is how the path of a `file:///tmp/a.xml`
/// reads, give "/tmp/a.xml". A path with a drive letter gives none. Everything else stays: a
/// backslash is an ordinary character of a file name here.
std::optional<std::string> nativeFileName(const UnicodeString& path);

/// True when something is there, also a directory.
bool fileExists(const UnicodeString& path);

/// True when there is a directory. \param name  what `nativeFileName` gave
bool isDirectory(const std::string& name);

/// Opens for reading in binary mode. Directories are refused. The stream throws
/// `std::ios_base::failure` from its buffer on a read error, as a file stream does.
/// \return null when it cannot be opened
std::unique_ptr<std::istream> openInputFile(const UnicodeString& path);

/// Creates or empties a file for writing in binary mode. \return null when it cannot be opened
std::unique_ptr<std::ostream> openOutputFile(const UnicodeString& path);

}  // namespace ZroCommon::internal
