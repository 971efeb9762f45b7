#pragma once

#include <cstdlib>

namespace ZroCommon::testing {

/// Lets this process and its children reach nothing but this machine, whatever names a test meets:
/// all else goes to a proxy that nobody runs.
inline void denyNetwork() {
    for (const char* name : {"http_proxy", "https_proxy", "all_proxy"}) {
        setenv(name, "http://127.0.0.1:1", 1);
    }
    setenv("no_proxy", "127.0.0.1,localhost", 1);
}

}  // namespace ZroCommon::testing
