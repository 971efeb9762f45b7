#include "zro/platform/internal/ModulePath.h"

#include <cstdlib>
#include <dlfcn.h>
#include <link.h>
#include <string_view>

namespace ZroCommon::internal {

std::optional<UnicodeString> moduleDirectory(const char* module) {
    void* handle = dlopen(module, RTLD_LAZY | RTLD_NOLOAD);
    if (handle == nullptr) {
        return std::nullopt;
    }
    std::optional<UnicodeString> directory;
    const link_map* entry = nullptr;
    if (dlinfo(handle, RTLD_DI_LINKMAP, static_cast<void*>(&entry)) == 0) {
        const std::string_view path(entry->l_name);
        const std::size_t slash = path.rfind('/');
        if (slash != std::string_view::npos) {
            directory = UnicodeString::fromUTF8(path.substr(0, slash + 1));
        }
    }
    dlclose(handle);
    return directory;
}

std::optional<UnicodeString> environmentValue(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe)
    if (value == nullptr) {
        return std::nullopt;
    }
    return UnicodeString::fromUTF8(value);
}

}  // namespace ZroCommon::internal
