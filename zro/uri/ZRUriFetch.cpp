// How a ZRUri becomes a readable stream.
#include <new>

#include "zro/platform/internal/NativeFile.h"
#include "zro/uri/internal/OpenResource.h"
#include "zro/uri/internal/UriStream.h"

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

// Whatever is no file and no package entry; what cannot be opened by HTTP says so.
std::unique_ptr<std::istream> openAddress(const UnicodeString& uri, UnicodeString* contentType,
                                          UnicodeString* errorMessage) {
    auto stream = std::make_unique<internal::ZRUriStream>(uri);
    if (errorMessage != nullptr) {
        *errorMessage = stream->buffer().errorMessage();
    }
    if (!stream->buffer().isOpen()) {
        return nullptr;
    }
    if (contentType != nullptr) {
        *contentType = stream->buffer().contentType();
    }
    return stream;
}

}  // namespace

std::unique_ptr<std::istream> internal::openResource(const ZRUri& uri, UnicodeString* contentType,
                                                     UnicodeString* errorMessage) {
    if (std::unique_ptr<std::istream> served(askResolver(uri.toString())); served != nullptr) {
        return served;
    }
    if (uri.isFile()) {
        return openFile(uri);
    }
    if (uri.isJarScheme()) {
        return nullptr;
    }
    return openAddress(uri.toString(), contentType, errorMessage);
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
