#include "tools/zro/ResourceGate.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "zro/uri/ZRUri.h"

#include "tools/zro/Input.h"

namespace zro {

using ZroCommon::ZRUri;

ResourceGate::ResourceGate(External allowed)
    : m_allowed(allowed), m_previous(ZRUri::setUriReferenceResolver(this)) {}

ResourceGate::~ResourceGate() {
    ZRUri::setUriReferenceResolver(m_previous);
}

void ResourceGate::expectDocument(std::function<void(std::uint64_t)> count) {
    m_count = std::move(count);
    m_documentExpected = true;
}

std::unique_ptr<std::istream> ResourceGate::openFreely(const ZRUri& uri) {
    const bool before = std::exchange(m_open, true);
    m_failure.remove();
    std::unique_ptr<std::istream> stream(uri.getStream(nullptr, &m_failure));
    m_open = before;
    return stream;
}

std::vector<UnicodeString> ResourceGate::takeDenied() {
    return std::exchange(m_denied, {});
}

// Null sends the library on its own way; the caller owns the result.
std::istream* ResourceGate::getStream(const UnicodeString& uri) {
    if (m_open) {
        return nullptr;
    }
    if (m_documentExpected) {
        m_documentExpected = false;
        auto source = openFreely(ZRUri(uri, ZroCommon::URISTR_GUESS));  // normalised already
        return source ? new OwningStream<CountingBuffer>(std::move(source), m_count) : nullptr;
    }
    if (isAllowed(uri)) {
        return nullptr;
    }
    remember(uri);
    return new std::istringstream("<!---->");
}

bool ResourceGate::isAllowed(const UnicodeString& uri) const {
    switch (m_allowed) {
    case External::None: return false;
    case External::Local: return isLocal(uri);
    case External::Remote: return true;
    }
    return false;
}

void ResourceGate::remember(const UnicodeString& uri) {
    if (std::find(m_denied.begin(), m_denied.end(), uri) == m_denied.end()) {
        m_denied.push_back(uri);
    }
}

}  // namespace zro
