#include "zro/foundation/ZRResourceLimits.h"

#include <mutex>

namespace ZroCommon {
namespace {

constinit std::mutex s_lock;
constinit ZRResourceLimits s_current;  // under the lock

}  // namespace

ZRResourceLimits ZRResourceLimits::getCurrent() {
    const std::lock_guard guard(s_lock);
    return s_current;
}

void ZRResourceLimits::setCurrent(const ZRResourceLimits& limits) {
    const std::lock_guard guard(s_lock);
    s_current = limits;
}

}  // namespace ZroCommon
