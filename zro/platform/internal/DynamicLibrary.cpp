#include "zro/platform/internal/DynamicLibrary.h"

#include <dlfcn.h>

#include "zro/platform/internal/NativeFile.h"

namespace ZroCommon::internal {

void* openLibrary(const UnicodeString& path) {
    const auto name = nativeFileName(path);
    if (!name || name->empty()) {
        return nullptr;  // to the system the empty name is the program itself
    }
    return dlopen(name->c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* findSymbol(void* library, const char* name) {
    if (library == nullptr || name == nullptr) {
        return nullptr;  // a null handle would search the whole program
    }
    return dlsym(library, name);
}

void closeLibrary(void* library) {
    if (library != nullptr) {
        dlclose(library);
    }
}

}  // namespace ZroCommon::internal
