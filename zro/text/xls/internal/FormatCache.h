#pragma once

#include "zro/text/xls/XlsFormat.h"

namespace ZroCommon::internal {

/// The compiled format, null for an invalid one.
///
/// Each thread remembers its last few formats, so that a column of cells compiles its format once.
/// Nobody can tell but by the clock. The result is good until this thread asks again, as a
/// callback may.
const FMT2* compiledFormat(const UnicodeString& format, bool isCurrentVersion);

}  // namespace ZroCommon::internal
