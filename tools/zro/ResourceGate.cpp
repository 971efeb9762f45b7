#include "tools/zro/ResourceGate.h"

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

std::vector<MissingResource> ResourceGate::takeMissing() {
    m_missingUris.clear();
    return std::exchange(m_missing, {});
}

UnicodeString ResourceGate::takeFailure(const UnicodeString& uri) {
    if (m_missing.empty() || m_missing.back().uri != uri) {
        return {};
    }
    UnicodeString failure = std::move(m_missing.back().failure);
    m_missingUris.erase(uri);
    m_missing.pop_back();
    return failure;
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
        return openAllowed(uri);
    }
    remember({uri, true, {}});
    return new std::istringstream("<!---->");
}

// The library may pass over what does not open without a word, so it is tried here first. Null
// lets the library find that out for itself, as it depends on who asks what that means.
std::istream* ResourceGate::openAllowed(const UnicodeString& uri) {
    const ZRUri parsed(uri, ZroCommon::URISTR_GUESS);
    if (parsed.isFile() || m_missingUris.count(uri) != 0 || isPartOfLast(uri)) {
        return nullptr;
    }
    auto stream = openFreely(parsed);
    if (stream == nullptr) {
        remember({uri, false, m_failure});
    }
    return stream.release();
}

// The library asks for a package by itself when it has not got an entry as a whole.
bool ResourceGate::isPartOfLast(const UnicodeString& uri) const {
    return !m_missing.empty() && m_missing.back().uri.indexOf(uri) > 0;
}

bool ResourceGate::isAllowed(const UnicodeString& uri) const {
    switch (m_allowed) {
    case External::None: return false;
    case External::Local: return isLocal(uri);
    case External::Remote: return true;
    }
    return false;
}

void ResourceGate::remember(MissingResource missing) {
    if (m_missingUris.insert(missing.uri).second) {
        m_missing.push_back(std::move(missing));
    }
}

}  // namespace zro
