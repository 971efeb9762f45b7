#pragma once

#include <cstddef>
#include <functional>
#include <type_traits>

namespace ZroCommon::bench {

/// Runs the action in a child process and copies what it left in `result`.
/// \throws std::runtime_error  when the child fails
void inFreshProcess(const std::function<void()>& action, void* result, std::size_t size);

/// What `action` answers with, in a child process that shares no later state with this one.
template <class Result, class Action>
Result inFreshProcess(Action&& action) {
    static_assert(std::is_trivially_copyable_v<Result>);
    Result result{};
    inFreshProcess([&] { result = action(); }, &result, sizeof(result));
    return result;
}

}  // namespace ZroCommon::bench
