#pragma once

#include <memory>

#include "zro/foundation/Text.h"
#include "zro/platform/internal/CodeConverter.h"

namespace ZroCommon::internal {

/// Where tables of conversion are looked for, for the whole process. Set before streams are in use.
void setConversionTables(const UnicodeString& path);

/// The conversion of a reading stream: some names stand for a larger set than they say.
/// \return null when the name is not known, or null
std::unique_ptr<CodeConverter> openReadingConversion(const char* encoding);

/// The conversion of a writing stream, under the name as it is.
std::unique_ptr<CodeConverter> openWritingConversion(const char* encoding,
                                                     const WriterOptions& options);

}  // namespace ZroCommon::internal
