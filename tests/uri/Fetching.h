#pragma once

#include <istream>
#include <iterator>
#include <memory>
#include <string>

#include "zro/uri/ZRUri.h"

namespace ZroCommon::testing {

inline ZRUri uri(const UnicodeString& text) {
    return {text, URISTR_PATH_OR_URI_CSS};
}

/// What is at a URI; "nothing" when it cannot be opened.
inline std::string contentOf(const ZRUri& resource) {
    const std::unique_ptr<std::istream> stream(resource.getStream(nullptr));
    return stream ? std::string(std::istreambuf_iterator<char>(*stream), {}) : "nothing";
}

}  // namespace ZroCommon::testing
