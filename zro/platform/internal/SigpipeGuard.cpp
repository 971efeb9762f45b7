#include "zro/platform/internal/SigpipeGuard.h"

#include <cerrno>
#include <ctime>
#include <pthread.h>

namespace ZroCommon::internal {
namespace {

bool isPending() {
    sigset_t pending;
    sigemptyset(&pending);
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}

}  // namespace

SigpipeGuard::SigpipeGuard() : m_wasPending(isPending()) {
    sigemptyset(&m_pipe);
    sigaddset(&m_pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
}

SigpipeGuard::~SigpipeGuard() {
    if (!m_wasPending && isPending()) {
        constexpr timespec kNow{};
        while (sigtimedwait(&m_pipe, nullptr, &kNow) < 0 && errno == EINTR) {
        }
    }
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

}  // namespace ZroCommon::internal
