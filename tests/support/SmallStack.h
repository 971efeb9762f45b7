#pragma once

#include <cstddef>
#include <pthread.h>
#include <stdexcept>
#include <type_traits>

namespace ZroCommon::testing {

/// Runs `action` in a thread with 256 KiB of stack, where recursion over the input shows at once.
template <class Action>
void onSmallStack(Action&& action) {
    constexpr std::size_t kStack = std::size_t{256} * 1024;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStack);
    const auto run = [](void* argument) -> void* {
        (*static_cast<std::remove_reference_t<Action>*>(argument))();
        return nullptr;
    };
    pthread_t thread{};
    if (pthread_create(&thread, &attributes, run, &action) != 0) {
        throw std::runtime_error("cannot start a thread");
    }
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

}  // namespace ZroCommon::testing
