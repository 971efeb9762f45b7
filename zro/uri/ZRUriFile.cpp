// What a ZRUri does with the file system and with dynamic libraries.
#include "zro/uri/ZRUri.h"

#include <memory>
#include <ostream>
#include <string_view>

#include "zro/foundation/ZRLock.h"
#include "zro/platform/internal/DynamicLibrary.h"
#include "zro/platform/internal/ModulePath.h"
#include "zro/platform/internal/NativeFile.h"
#include "zro/uri/internal/UriText.h"

namespace ZroCommon {
namespace {

constexpr int32_t kLongestEnvironmentValue = 1023;

bool isGiven(const char* text) {
    return text != nullptr && *text != '\0';
}

ZRUri uriOf(const UnicodeString& text) {
    return {text, URISTR_PATH_OR_URI_CSS};
}

// Where the variable says, if there is such a file; else empty.
UnicodeString directoryFromEnvironment(const char* name) {
    const ZRMutex guard;
    const auto value = internal::environmentValue(name);
    if (!value || value->length() > kLongestEnvironmentValue) {
        return {};
    }
    const ZRUri uri = uriOf(*value);
    return uri.isFile() && uri.isFileExists() ? uri.getLocalPath() : UnicodeString();
}

bool endsInSeparator(const UnicodeString& directory) {
    const std::u16string_view view = internal::viewOf(directory);
    return view.ends_with(u'/') || view.ends_with(u'\\');
}

}  // namespace

std::ostream* ZRUri::createOStream(const UnicodeString& name) {
    try {
        const ZRUri uri = uriOf(name);
        const UnicodeString path = uri.getLocalPath();
        if (!uri.isFile() || path.isEmpty()) {
            return nullptr;
        }
        return internal::openOutputFile(path).release();
    } catch (...) {
        return nullptr;
    }
}

void ZRUri::releaseOStream(std::ostream* stream) {
    const std::unique_ptr<std::ostream> closing(stream);  // a file stream closes as it dies
}

bool ZRUri::isFileExists() const {
    return internal::fileExists(getLocalPath());
}

bool ZRUri::isFileExists(const char* path) {
    return path != nullptr && internal::fileExists(UnicodeString::fromUTF8(path));
}

bool ZRUri::isFileExists(const char16_t* path) {
    return path != nullptr && internal::fileExists(UnicodeString(path));
}

ZRUri ZRUri::getModuleUri(const char* module, const char* name, const char* envName) {
    UnicodeString directory;
    if (isGiven(envName)) {
        directory = directoryFromEnvironment(envName);
    }
    if (isGiven(module) && directory.isEmpty()) {
        directory = internal::moduleDirectory(module).value_or(UnicodeString());
    }
    const bool hasName = isGiven(name);
    if (directory.isEmpty()) {
        if (hasName && std::string_view(name).ends_with(".dll")) {
            return uriOf(UnicodeString::fromUTF8(name));
        }
        directory = UnicodeString(u"./");
    }
    const bool isClosed = endsInSeparator(directory);
    if (!hasName) {
        directory.truncate(directory.length() - (isClosed ? 1 : 0));
        return uriOf(directory);
    }
    if (!isClosed) {
        directory.append(u'/');
    }
    return {uriOf(directory), UnicodeString::fromUTF8(name), URISTR_PATH_OR_URI_CSS};
}

HINSTANCE ZRUri::loadLibrary() const {
    return internal::openLibrary(getLocalPath());
}

void* ZRUri::getProcAddress(HINSTANCE library, const char* name) {
    return internal::findSymbol(library, name);
}

void ZRUri::freeLibrary(HINSTANCE library) {
    internal::closeLibrary(library);
}

}  // namespace ZroCommon
