#pragma once

#include <functional>

namespace ZroCommon::bench {

/// Runs the action on a thread with a stack of 256 KiB, where recursion over input shows at once,
/// and waits for it.
/// \throws what the action throws
void onSmallStack(const std::function<void()>& action);

}  // namespace ZroCommon::bench
