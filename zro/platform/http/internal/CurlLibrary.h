#pragma once

#include <curl/curl.h>

namespace ZroCommon::internal {

/// The functions of libcurl, which is loaded when they are first asked for and then stays.
struct CurlLibrary {
    decltype(&curl_global_init) globalInit = nullptr;
    decltype(&curl_easy_init) easyInit = nullptr;
    decltype(&curl_easy_setopt) easySetopt = nullptr;
    decltype(&curl_easy_getinfo) easyGetinfo = nullptr;
    decltype(&curl_easy_pause) easyPause = nullptr;
    decltype(&curl_easy_cleanup) easyCleanup = nullptr;
    decltype(&curl_multi_init) multiInit = nullptr;
    decltype(&curl_multi_add_handle) multiAddHandle = nullptr;
    decltype(&curl_multi_remove_handle) multiRemoveHandle = nullptr;
    decltype(&curl_multi_perform) multiPerform = nullptr;
    decltype(&curl_multi_poll) multiPoll = nullptr;
    decltype(&curl_multi_info_read) multiInfoRead = nullptr;
    decltype(&curl_multi_cleanup) multiCleanup = nullptr;
    decltype(&curl_slist_append) slistAppend = nullptr;
    decltype(&curl_slist_free_all) slistFreeAll = nullptr;

    /// Null when libcurl is not installed, or too old to have all of these. From any thread.
    static const CurlLibrary* get();

private:
    bool load();
};

}  // namespace ZroCommon::internal
