#include "zro/platform/internal/NativeFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "zro/platform/internal/InputFile.h"

namespace ZroCommon::internal {
namespace {

bool isLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool startsWithDrive(const UnicodeString& path) {
    return path.length() >= 2 && path[1] == u':' && isLetter(path[0]);
}

// Neither a name that ends early nor one that two texts would share.
bool canBeEncoded(const UnicodeString& path) {
    for (int32_t i = 0; i < path.length(); i = path.moveIndex32(i, 1)) {
        const UChar32 character = path.char32At(i);
        if (character == 0 || (character >= 0xD800 && character <= 0xDFFF)) {
            return false;
        }
    }
    return true;
}

// "\\host\a" or "//a" to one slash at the start, with no "localhost" behind it.
void makeRooted(std::string& name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    name.erase(0, std::min(name.find_first_not_of('/'), name.size()) - 1);
    constexpr std::string_view kThisHost = "/localhost";
    if (name == kThisHost || name.starts_with("/localhost/")) {
        name.erase(0, kThisHost.size());
        if (name.empty()) {
            name = '/';
        }
    }
}

int openToRead(const std::string& name) {
    for (;;) {
        const int number = open(name.c_str(), O_RDONLY | O_CLOEXEC);
        if (number >= 0 || errno != EINTR) {
            return number;
        }
    }
}

}  // namespace

std::optional<std::string> nativeFileName(const UnicodeString& path) {
    const bool isNetworkPath = path.startsWith(u"\\\\", 2);
    if ((!isNetworkPath && startsWithDrive(path)) || !canBeEncoded(path)) {
        return std::nullopt;
    }
    std::string name;
    path.toUTF8String(name);
    if (isNetworkPath) {
        makeRooted(name);
    }
    return name;
}

bool fileExists(const UnicodeString& path) {
    const auto name = nativeFileName(path);
    return name && access(name->c_str(), F_OK) == 0;
}

bool isDirectory(const std::string& name) {
    struct stat status {};
    return stat(name.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::unique_ptr<std::istream> openInputFile(const UnicodeString& path) {
    const auto name = nativeFileName(path);
    if (!name) {
        return nullptr;
    }
    FileDescriptor file(openToRead(*name));
    struct stat status {};
    if (!file.isOpen() || fstat(file.get(), &status) != 0 || S_ISDIR(status.st_mode)) {
        return nullptr;
    }
    return std::make_unique<InputFile>(std::move(file), S_ISREG(status.st_mode));
}

std::unique_ptr<std::ostream> openOutputFile(const UnicodeString& path) {
    const auto name = nativeFileName(path);
    if (!name) {
        return nullptr;
    }
    auto file =
        std::make_unique<std::ofstream>(*name, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!file->is_open()) {
        return nullptr;
    }
    return file;
}

}  // namespace ZroCommon::internal
