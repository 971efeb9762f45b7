#pragma once

#include <system_error>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The folder for temporary files, with a "/" at its end. It comes from the environment, which has
/// no lock of its own: the caller holds the library's.
UnicodeString temporaryFolder();

/// The number of this process.
unsigned processNumber();

/// Makes a file of that name, empty and for this user alone, unless anything has the name already,
/// a link to nowhere too. \return `std::errc::file_exists` then, and no error when it was made
std::error_code makeNewFile(const UnicodeString& path);

/// Removes a file. \return no error also when it is gone already
std::error_code removeFile(const UnicodeString& path);

}  // namespace ZroCommon::internal
