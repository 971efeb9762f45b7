#include "bench/support/FreshProcess.h"

#include <exception>
#include <iostream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace ZroCommon::bench {
namespace {

[[noreturn]] void runChild(const std::function<void()>& action, const void* result,
                           std::size_t size, int pipe) {
    try {
        action();
        const ssize_t written = write(pipe, result, size);
        _exit(written == static_cast<ssize_t>(size) ? 0 : 1);
    } catch (const std::exception& error) {
        std::cerr << error.what() << std::endl;
    }
    _exit(1);
}

}  // namespace

void inFreshProcess(const std::function<void()>& action, void* result, std::size_t size) {
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0) {
        throw std::runtime_error("cannot make a pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        runChild(action, result, size, ends[1]);
    }
    close(ends[1]);
    const ssize_t count = child < 0 ? -1 : read(ends[0], result, size);
    close(ends[0]);
    if (child > 0) {
        waitpid(child, nullptr, 0);
    }
    if (count != static_cast<ssize_t>(size)) {
        throw std::runtime_error("a child process failed");
    }
}

}  // namespace ZroCommon::bench
