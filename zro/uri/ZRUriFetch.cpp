// How a ZRUri becomes a readable stream.
#include <array>
#include <new>
#include <string_view>
#include <utility>

#include "zro/containers/zip/internal/EntrySearch.h"
#include "zro/containers/zip/internal/PackageReader.h"
#include "zro/platform/internal/NativeFile.h"
#include "zro/streams/compression/ZRGzipStream.h"
#include "zro/uri/internal/OpenResource.h"
#include "zro/uri/internal/UriStream.h"
#include "zro/uri/internal/UriText.h"

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

// Where the texts of a fetch go; both may be null.
struct Outcome {
    UnicodeString* contentType;
    UnicodeString* errorMessage;
};

// Any URI but a "jar:" one.
std::unique_ptr<std::istream> openPlain(const ZRUri& uri, const Outcome& outcome) {
    if (std::unique_ptr<std::istream> served(askResolver(uri.toString())); served != nullptr) {
        return served;
    }
    return uri.isFile() ? openFile(uri)
                        : openAddress(uri.toString(), outcome.contentType, outcome.errorMessage);
}

constexpr std::u16string_view kJar = u"jar:";

bool isJar(std::u16string_view text) {
    return internal::startsWithIgnoringCase(text, kJar);
}

struct Package {
    std::unique_ptr<std::istream> stream;
    bool isFile = false;
};

// What stands between "jar:" and the first "!/". It may begin with "jar:" any number of times; as
// no "!/" is left, these say nothing more, but the resolver is asked each time.
Package openPackage(std::u16string_view outer, const Outcome& outcome) {
    for (bool isNested = false;; isNested = true) {
        const std::u16string_view inside = internal::trimmed(internal::unwrapped(outer));
        if (!isJar(inside)) {
            const ZRUri uri(internal::textOf(outer), URISTR_PATH_OR_URI_CSS);
            return {openPlain(uri, outcome), uri.isFile() && !isNested};
        }
        const UnicodeString uri(false, inside.data(), static_cast<int32_t>(inside.size()));
        if (std::unique_ptr<std::istream> served(askResolver(uri)); served != nullptr) {
            return {std::move(served), false};
        }
        outer = inside.substr(kJar.size());
    }
}

// Steps from package to package; each "!/" in the path is one more.
std::unique_ptr<std::istream> openEntry(std::unique_ptr<std::istream> package,
                                        std::u16string_view path) {
    while (package != nullptr && !path.empty()) {
        const std::size_t end = path.find(u"!/");
        package = internal::openFirstEntry(*package, internal::textOf(path.substr(0, end)));
        path = end == path.npos ? std::u16string_view() : path.substr(end + 2);
    }
    return package;
}

std::unique_ptr<std::istream> openJar(const UnicodeString& uri, const Outcome& outcome) {
    const std::u16string_view text = internal::viewOf(uri).substr(kJar.size());
    const std::size_t end = text.find(u"!/");
    auto [package, isFile] = openPackage(text.substr(0, end), outcome);
    if (package == nullptr || end == text.npos || end + 2 == text.size()) {
        return std::move(package);
    }
    // On purpose: a file has to be able to seek, though the search could do without, as it does
    // with anything else.
    if (isFile && internal::PackageReader(*package).position() < 0) {
        return nullptr;
    }
    auto entry = openEntry(std::move(package), text.substr(end + 2));
    if (entry != nullptr && outcome.contentType != nullptr) {
        outcome.contentType->remove();  // it was that of the package
    }
    return entry;
}

bool beginsAsGzip(std::istream& stream) {
    std::array<char, 2> bytes{};
    stream.read(bytes.data(), bytes.size());
    return stream.gcount() == 2 && bytes[0] == '\x1F' && bytes[1] == '\x8B';
}

}  // namespace

std::unique_ptr<std::istream> internal::openResource(const ZRUri& uri, UnicodeString* contentType,
                                                     UnicodeString* errorMessage) {
    const Outcome outcome{contentType, errorMessage};
    if (!uri.isJarScheme()) {
        return openPlain(uri, outcome);
    }
    if (std::unique_ptr<std::istream> served(askResolver(uri.toString())); served != nullptr) {
        return served;
    }
    return openJar(uri.toString(), outcome);
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

std::istream* ZRUri::getGzipStream() const {
    try {
        auto stream = std::make_unique<ZRGzipStream>(getLocalPath());
        return stream->is_open() ? stream.release() : nullptr;
    } catch (...) {
        return nullptr;
    }
}

std::istream* ZRUri::getGzipStream(std::istream& stream) {
    try {
        stream.seekg(0);
        return std::make_unique<ZRGzipStream>(stream).release();
    } catch (...) {
        return nullptr;
    }
}

bool ZRUri::isGzip() const {
    try {
        const std::unique_ptr<std::istream> stream(getStream(nullptr));
        return stream != nullptr && beginsAsGzip(*stream);
    } catch (...) {
        return false;
    }
}

bool ZRUri::isGzip(std::istream& stream) {
    try {
        stream.seekg(0);
        return beginsAsGzip(stream);
    } catch (...) {
        return false;
    }
}

}  // namespace ZroCommon
