#include "zro/platform/http/internal/CurlLibrary.h"

#include "zro/platform/internal/DynamicLibrary.h"

// libcurl's headers put macros that check types over these names.
#undef curl_easy_setopt
#undef curl_easy_getinfo

namespace ZroCommon::internal {
namespace {

template <typename Function>
bool find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(findSymbol(library, name));
    return function != nullptr;
}

void* openCurl() {
    for (const char16_t* name : {u"libcurl.so.4", u"libcurl-gnutls.so.4"}) {
        if (void* library = openLibrary(name)) {
            return library;
        }
    }
    return nullptr;
}

}  // namespace

bool CurlLibrary::load() {
    void* const library = openCurl();
    const bool isWhole = library != nullptr && find(library, "curl_global_init", globalInit)
                         && find(library, "curl_easy_init", easyInit)
                         && find(library, "curl_easy_setopt", easySetopt)
                         && find(library, "curl_easy_getinfo", easyGetinfo)
                         && find(library, "curl_easy_pause", easyPause)
                         && find(library, "curl_easy_cleanup", easyCleanup)
                         && find(library, "curl_multi_init", multiInit)
                         && find(library, "curl_multi_add_handle", multiAddHandle)
                         && find(library, "curl_multi_remove_handle", multiRemoveHandle)
                         && find(library, "curl_multi_perform", multiPerform)
                         && find(library, "curl_multi_poll", multiPoll)
                         && find(library, "curl_multi_info_read", multiInfoRead)
                         && find(library, "curl_multi_cleanup", multiCleanup)
                         && find(library, "curl_slist_append", slistAppend)
                         && find(library, "curl_slist_free_all", slistFreeAll);
    if (!isWhole) {
        closeLibrary(library);
        return false;
    }
    return globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK;
}

const CurlLibrary* CurlLibrary::get() {
    static const CurlLibrary* const s_library = []() -> const CurlLibrary* {
        static CurlLibrary s_functions;
        return s_functions.load() ? &s_functions : nullptr;
    }();
    return s_library;
}

}  // namespace ZroCommon::internal
