#pragma once

#include <string_view>
#include <vector>

#include "bench/peers/Contenders.h"

namespace ZroCommon::bench {

/// The calls of a writer that write the document again, its comments left out.
std::vector<WriteEvent> recordEvents(std::string_view document);

}  // namespace ZroCommon::bench
