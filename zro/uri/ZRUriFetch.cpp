// How a ZRUri becomes a readable stream.
#include <new>

#include "zro/platform/internal/NativeFile.h"
#include "zro/uri/internal/OpenResource.h"

namespace ZroCommon {
namespace {

// Null when there is no resolver, and whatever it throws; but a lack of memory passes.
std::istream* askResolver(const UnicodeString& uri) {
    ZRUriReferenceResolver* const resolver = ZRUri::getUriReferenceResolver();
    if (resolver == nullptr) {
        return nullptr;
    }
    try {
        return resolver->getStream(uri);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        return nullptr;
    }
}

std::unique_ptr<std::istream> openFile(const ZRUri& uri) {
    try {
        return internal::openInputFile(uri.getLocalPath());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        return nullptr;
    }
}

}  // namespace

std::unique_ptr<std::istream> internal::openResource(const ZRUri& uri,
                                                     UnicodeString* /*contentType*/,
                                                     UnicodeString* errorMessage) {
    if (std::unique_ptr<std::istream> served(askResolver(uri.toString())); served != nullptr) {
        return served;
    }
    if (uri.isFile()) {
        return openFile(uri);
    }
    if (!uri.isJarScheme() && errorMessage != nullptr) {
        errorMessage->setTo(u"Cannot access the Internet: 2EE4");
    }
    return nullptr;
}

// Fetching answers with null whatever goes wrong.

std::istream* ZRUri::getStreamFromResolver() const {
    try {
        return askResolver(m_uri);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::istream* ZRUri::getStream(UnicodeString* contentType, UnicodeString* errorMessage) const {
    try {
        return internal::openResource(*this, contentType, errorMessage).release();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::istream* ZRUri::getStream(UnicodeString* contentType) const {
    return getStream(contentType, nullptr);
}

}  // namespace ZroCommon
