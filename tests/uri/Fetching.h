#pragma once

#include <memory>
#include <string>

#include "tests/support/Streams.h"
#include "tests/support/Text.h"
#include "zro/uri/ZRUri.h"

namespace ZroCommon::testing {

inline ZRUri uri(const UnicodeString& text) {
    return {text, URISTR_PATH_OR_URI_CSS};
}

/// What is at a URI; "nothing" when it cannot be opened.
inline std::string contentOf(const ZRUri& resource) {
    const std::unique_ptr<std::istream> stream(resource.getStream(nullptr));
    return stream ? restOf(*stream) : "nothing";
}

/// What stands in the texts "type" and "error" when opening a URI had the chance to set them.
inline std::string textsOf(const ZRUri& resource) {
    UnicodeString type(u"type");
    UnicodeString error(u"error");
    const std::unique_ptr<std::istream> stream(resource.getStream(&type, &error));
    return utf8(type) + " " + utf8(error);
}

}  // namespace ZroCommon::testing
