#pragma once

#include <optional>
#include <string>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// A URI as it goes into a request: without its fragment, in UTF-8, and what no request line may
/// have percent-encoded. A "%" stays as it is.
/// \return nothing when the scheme is neither "http" nor "https", in any case
std::optional<std::string> httpUrlOf(const UnicodeString& uri);

}  // namespace ZroCommon::internal
