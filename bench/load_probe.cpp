// load_probe FIRST SECOND: loads a library and then, timed, another one; prints the nanoseconds of
// processor time that the second took. It links nothing that would do part of the work beforehand.

#include <cstdio>
#include <ctime>
#include <dlfcn.h>

namespace {

double now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3 || dlopen(argv[1], RTLD_LAZY) == nullptr) {
        return 2;
    }
    const double start = now();
    const void* library = dlopen(argv[2], RTLD_LAZY);
    const double end = now();
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    std::printf("%.0f\n", end - start);
    return 0;
}
