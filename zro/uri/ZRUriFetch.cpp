// How a ZRUri becomes a readable stream.
#include "zro/uri/ZRUri.h"

#include <istream>

#include "zro/platform/internal/NativeFile.h"

namespace ZroCommon {
namespace {

std::istream* failWith(UnicodeString* errorMessage, const char16_t* text) {
    if (errorMessage != nullptr) {
        errorMessage->setTo(text);
    }
    return nullptr;
}

}  // namespace

std::istream* ZRUri::getStreamFromResolver() const {
    ZRUriReferenceResolver* resolver = getUriReferenceResolver();
    if (resolver == nullptr) {
        return nullptr;
    }
    try {
        return resolver->getStream(m_uri);
    } catch (...) {
        return nullptr;  // whatever an application throws, fetching answers with null
    }
}

std::istream* ZRUri::getStream(UnicodeString* /*contentType*/, UnicodeString* errorMessage) const {
    if (std::istream* served = getStreamFromResolver()) {
        return served;
    }
    try {
        if (isFile()) {
            return internal::openInputFile(getLocalPath()).release();
        }
    } catch (...) {
        return nullptr;
    }
    if (isJarScheme()) {
        return nullptr;
    }
    return failWith(errorMessage, u"Cannot access the Internet: 2EE4");
}

std::istream* ZRUri::getStream(UnicodeString* contentType) const {
    return getStream(contentType, nullptr);
}

}  // namespace ZroCommon
