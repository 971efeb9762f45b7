#include "bench/support/SmallStack.h"

#include <exception>
#include <pthread.h>
#include <stdexcept>

namespace ZroCommon::bench {
namespace {

struct Call {
    const std::function<void()>* action;
    std::exception_ptr error;
};

void* runCall(void* argument) {
    Call& call = *static_cast<Call*>(argument);
    try {
        (*call.action)();
    } catch (...) {
        call.error = std::current_exception();
    }
    return nullptr;
}

}  // namespace

void onSmallStack(const std::function<void()>& action) {
    constexpr std::size_t kStack = 0x40000;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStack);
    Call call{&action, nullptr};
    pthread_t thread{};
    const int status = pthread_create(&thread, &attributes, runCall, &call);
    pthread_attr_destroy(&attributes);
    if (status != 0) {
        throw std::runtime_error("cannot start a thread");
    }
    pthread_join(thread, nullptr);
    if (call.error) {
        std::rethrow_exception(call.error);
    }
}

}  // namespace ZroCommon::bench
