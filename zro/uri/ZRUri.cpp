#include "zro/uri/ZRUri.h"

#include <algorithm>
#include <string_view>

#include <unicode/locid.h>

#include "zro/uri/internal/UriResolve.h"
#include "zro/uri/internal/UriText.h"

namespace ZroCommon {

using internal::viewOf;

namespace {

constexpr std::u16string_view kFileScheme = u"file:";

// The index of the dot of the extension, or the length when there is none.
int32_t extensionStart(const UnicodeString& uri) {
    const int32_t dot = uri.lastIndexOf(u'.');
    return dot > uri.lastIndexOf(u'/') ? dot : uri.length();
}

}  // namespace

std::atomic<ZRUriReferenceResolver*> ZRUri::s_resolver{nullptr};

ZRUriReferenceResolver::~ZRUriReferenceResolver() = default;

ZRUri::ZRUri(const UnicodeString& str, URISTRTYPE type) {
    const internal::ClassifiedUri uri = internal::classifyUri(str, type);
    m_uri = internal::normalizeUri(uri.text, uri.kind);
}

ZRUri::ZRUri(const ZRUri& base, const UnicodeString& str, URISTRTYPE type) {
    const internal::ClassifiedUri uri = internal::classifyUri(str, type);
    m_uri = internal::resolveUri(base.m_uri, uri.text, uri.kind);
}

ZRUri::~ZRUri() = default;

bool ZRUri::isAbsolute() const {
    return internal::schemeLength(viewOf(m_uri)) != 0;
}

UnicodeString ZRUri::getScheme() const {
    return {m_uri, 0, static_cast<int32_t>(internal::schemeLength(viewOf(m_uri)))};
}

bool ZRUri::isFile() const {
    return internal::startsWithIgnoringCase(viewOf(m_uri), kFileScheme) || !isAbsolute();
}

bool ZRUri::isJarScheme() const {
    return internal::startsWithIgnoringCase(viewOf(m_uri), u"jar:");
}

bool ZRUri::isDataScheme() const {
    return internal::startsWithIgnoringCase(viewOf(m_uri), u"data:");
}

UnicodeString ZRUri::getLocalPath() const {
    return internal::localPathOf(m_uri);
}

UnicodeString ZRUri::getBaseString() const {
    const int32_t slash = m_uri.lastIndexOf(u'/');
    return slash < 0 ? UnicodeString(u"./")
                     : internal::localPathOf(UnicodeString(m_uri, 0, slash + 1));
}

UnicodeString ZRUri::getFileName() const {
    if (!internal::startsWithIgnoringCase(viewOf(m_uri), kFileScheme)) {
        return {m_uri, m_uri.lastIndexOf(u'/') + 1};
    }
    // On purpose: "file:/a/b" has a local path without backslashes, and so all of it is the name.
    UnicodeString path = getLocalPath();
    return {path, path.lastIndexOf(u'\\') + 1};
}

UnicodeString ZRUri::getExtension() const {
    return isDataScheme() ? UnicodeString() : UnicodeString(m_uri, extensionStart(m_uri));
}

UnicodeString ZRUri::getRelativeUri(const UnicodeString& base) {
    const std::u16string_view whole = viewOf(m_uri);
    const std::size_t nameStart = whole.rfind(u'/') + 1;
    if (nameStart == 0 || base.isEmpty()) {
        return {};
    }
    const std::u16string_view baseDir = viewOf(base).substr(0, viewOf(base).rfind(u'/') + 1);
    const std::u16string_view dir = whole.substr(0, nameStart);
    const auto differs =
        std::mismatch(dir.begin(), dir.end(), baseDir.begin(), baseDir.end()).first;
    const auto common = static_cast<std::size_t>(differs - dir.begin());
    std::size_t shared = nameStart;
    while (shared > common) {
        // The "/" at the end of the part before the last segment.
        shared = dir.substr(0, shared - 1).rfind(u'/') + 1;
        if (shared == 0) {
            return {};
        }
    }
    UnicodeString relative;
    const auto below = baseDir.substr(shared);
    for (auto levels = std::count(below.begin(), below.end(), u'/'); levels > 0; --levels) {
        relative.append(u"../", 3);
    }
    return relative.append(m_uri, static_cast<int32_t>(shared), INT32_MAX);
}

bool ZRUri::isSameFile(const ZRUri& other) const {
    if (!isFile() || !other.isFile()) {
        return false;
    }
    const icu::Locale& root = icu::Locale::getRoot();
    return getLocalPath().toLower(root) == other.getLocalPath().toLower(root);
}

UnicodeString ZRUri::removeFragment() {
    const int32_t hash = m_uri.indexOf(u'#');
    if (hash < 0) {
        return {};
    }
    UnicodeString fragment(m_uri, hash);
    m_uri.truncate(hash);
    return fragment;
}

UnicodeString ZRUri::setExtension(const UnicodeString* extension) {
    if (viewOf(m_uri).ends_with(u'/')) {
        return {};
    }
    const int32_t start = extensionStart(m_uri);
    UnicodeString old(m_uri, start);
    const UnicodeString added = extension != nullptr ? *extension : UnicodeString();
    m_uri.truncate(start);
    m_uri.append(added);
    return old;
}

UnicodeString ZRUri::toDirectory() {
    return toDirectory(m_uri, u'/');
}

UnicodeString ZRUri::toDirectory(UnicodeString& path, char16_t separator) {
    if (!viewOf(path).ends_with(separator)) {
        path.append(separator);
    }
    return path;
}

UnicodeString ZRUri::unescape(const UnicodeString& text) {
    return internal::unescapeUri(text);
}

ZRUriReferenceResolver* ZRUri::setUriReferenceResolver(ZRUriReferenceResolver* resolver) {
    return s_resolver.exchange(resolver, std::memory_order_acq_rel);
}

ZRUriReferenceResolver* ZRUri::getUriReferenceResolver() {
    return s_resolver.load(std::memory_order_acquire);
}

}  // namespace ZroCommon
