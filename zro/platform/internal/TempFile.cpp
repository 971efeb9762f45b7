#include "zro/platform/internal/TempFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "zro/platform/internal/InputFile.h"
#include "zro/platform/internal/ModulePath.h"
#include "zro/platform/internal/NativeFile.h"

namespace ZroCommon::internal {
namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::error_code noSuchName() {
    return std::make_error_code(std::errc::no_such_file_or_directory);
}

}  // namespace

UnicodeString temporaryFolder() {
    UnicodeString folder = environmentValue("TMPDIR").value_or(UnicodeString());
    if (folder.isEmpty()) {
        folder = UnicodeString(u"/tmp");
    }
    if (!folder.endsWith(u'/')) {
        folder.append(u'/');
    }
    return folder;
}

unsigned processNumber() {
    return static_cast<unsigned>(getpid());
}

std::error_code makeNewFile(const UnicodeString& path) {
    const auto name = nativeFileName(path);
    if (!name) {
        return noSuchName();
    }
    constexpr int kFlags = O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW | O_CLOEXEC;
    int number = -1;
    do {
        number = open(name->c_str(), kFlags, S_IRUSR | S_IWUSR);
    } while (number < 0 && errno == EINTR);
    if (number < 0) {
        return lastError();
    }
    const FileDescriptor closing(number);
    return {};
}

std::error_code removeFile(const UnicodeString& path) {
    const auto name = nativeFileName(path);
    if (!name || unlink(name->c_str()) == 0 || errno == ENOENT || errno == ENOTDIR) {
        return {};
    }
    return lastError();
}

}  // namespace ZroCommon::internal
