#pragma once

#include <csignal>

namespace ZroCommon::internal {

/// Keeps SIGPIPE from this thread while it lives: a connection that the other side has closed
/// must not end the program, and its handling of signals is not ours to change.
class SigpipeGuard {
public:
    SigpipeGuard();
    SigpipeGuard(const SigpipeGuard&) = delete;
    SigpipeGuard& operator=(const SigpipeGuard&) = delete;
    ~SigpipeGuard();

private:
    sigset_t m_pipe{};
    sigset_t m_before{};
    bool m_wasPending;
};

}  // namespace ZroCommon::internal
