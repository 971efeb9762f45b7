#include "zro/xml/internal/NamespaceManager.h"

#include <algorithm>

#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon::internal {
namespace {

// Above this many prefixes or URIs, scopes or declarations, a reset gives memory back.
constexpr std::size_t kOrdinarySize = 1024;

// Room for so many scopes and declarations is made at once.
constexpr std::size_t kOrdinaryDepth = 16;

constexpr std::size_t kBaseDeclarations = 2;  // of `xml` and `xmlns`

bool byPrefix(const NamespaceMap::Entry& left, const NamespaceMap::Entry& right) {
    return left.prefix < right.prefix;
}

}  // namespace

const NamespaceMap::Entry* NamespaceMap::find(ZRName prefix) const {
    const auto at = std::lower_bound(m_entries.begin(), m_entries.end(),
                                     Entry{.prefix = prefix, .uri = ZRN_EMPTY}, byPrefix);
    return at != m_entries.end() && at->prefix == prefix ? &*at : nullptr;
}

ZRName NamespaceMap::lookup(ZRName prefix) const {
    const Entry* entry = find(prefix);
    return entry == nullptr ? ZRN_EMPTY : entry->uri;
}

ZRName NamespaceMap::findPrefix(ZRName uri) const {
    const auto at = std::find_if(m_entries.begin(), m_entries.end(),
                                 [uri](const Entry& entry) { return entry.uri == uri; });
    return at == m_entries.end() ? ZRN_EMPTY : at->prefix;
}

ZRName NamespaceMap::prefix(int index) const {
    const auto at = static_cast<std::size_t>(index);  // a negative index becomes a huge one
    return at < m_entries.size() ? m_entries[at].prefix : ZRN_EMPTY;
}

ZRName NamespaceMap::uri(int index) const {
    const auto at = static_cast<std::size_t>(index);
    return at < m_entries.size() ? m_entries[at].uri : ZRN_EMPTY;
}

NamespaceManager::NamespaceManager() {
    m_scopes.reserve(kOrdinaryDepth);
    m_declarations.reserve(kOrdinaryDepth);
    m_scopes.push_back({ZRN_EMPTY, ZRN_EMPTY, ZRN_EMPTY, 0, 0});
    declareBase();
    wake();  // last, so that nothing can throw behind it
}

NamespaceManager::~NamespaceManager() {
    releaseNames();
}

void NamespaceManager::declareBase() {
    declare(ZRN_xml, ZRN_ns_xml);
    declare(ZRN_xmlns, ZRN_ns_xmlns);
}

void NamespaceManager::wake() {
    ZRNameTable::addRefSharedNameTable();
    m_holdsNames = true;
}

void NamespaceManager::releaseNames() {
    if (m_holdsNames) {
        m_holdsNames = false;
        ZRNameTable::releaseSharedNameTable();
    }
}

void NamespaceManager::rest() {
    releaseNames();
    reset();
    if (m_declarations.size() > kBaseDeclarations) {
        m_declarations.clear();
        giveMemoryBack();
        declareBase();
    }
}

void NamespaceManager::reset() {
    while (depth() > 0) {
        popScope();
    }
    const std::size_t largest = std::max(
        {m_bindings.size(), m_lastOfUri.size(), m_scopes.capacity(), m_declarations.capacity()});
    if (largest > kOrdinarySize) {
        giveMemoryBack();
    }
}

void NamespaceManager::giveMemoryBack() {
    std::vector<Declaration> base;
    base.swap(m_declarations);
    m_bindings.clear();
    m_lastOfUri.clear();
    m_scopes.back().declared = 0;
    for (const Declaration& declaration : base) {
        declare(declaration.prefix, declaration.uri);
    }
    m_scopes.shrink_to_fit();
    m_undo.shrink_to_fit();
    forgetSorted();
}

void NamespaceManager::setElement(ZRName prefix, ZRName namespaceUri, ZRName localName) {
    if (!namespaceUri.isEmpty() && lookup(prefix) != namespaceUri) {
        touch(prefix).uri = namespaceUri;
    }
    setBoundElement(prefix, namespaceUri, localName);
}

bool NamespaceManager::declare(ZRName prefix, ZRName namespaceUri) {
    if (lookup(prefix) == namespaceUri) {
        return false;
    }
    Binding& binding = touch(prefix);
    const std::size_t added = addDeclaration(prefix, namespaceUri);
    Scope& scope = m_scopes.back();
    if (binding.declaration != kNone && m_declarations[binding.declaration].scope == top()) {
        m_declarations[binding.declaration].isReplaced = true;
    } else {
        ++scope.declared;
    }
    binding.declaration = added;
    if (prefix == scope.prefix && scope.namespaceUri != ZRN_EMPTY) {
        return true;  // the element's own prefix goes before its declarations
    }
    // On purpose: an empty URI ends the default namespace, but leaves any other prefix as it was.
    const bool changesNothing = namespaceUri.isEmpty() && !prefix.isEmpty();
    binding.uri = changesNothing ? binding.outerUri : ZRNameEnum{namespaceUri};
    return true;
}

NamespaceManager::Binding& NamespaceManager::touch(ZRNameEnum prefix) {
    Binding& binding = m_bindings.at(prefix);
    if (binding.scope != top()) {
        if (depth() > 0) {
            m_undo.push_back({prefix, binding});
        }
        binding.outerUri = binding.uri;
        binding.scope = top();
    }
    return binding;
}

std::size_t NamespaceManager::addDeclaration(ZRNameEnum prefix, ZRNameEnum namespaceUri) {
    std::size_t& last = m_lastOfUri.at(namespaceUri);
    m_declarations.push_back({prefix, namespaceUri, top(), false, last - 1});
    last = m_declarations.size();
    forgetSorted();
    return last - 1;
}

void NamespaceManager::undoBindings() {
    const std::size_t first = m_scopes.back().firstUndo;
    for (std::size_t i = m_undo.size(); i > first; --i) {
        m_bindings.at(m_undo[i - 1].prefix) = m_undo[i - 1].binding;
    }
    m_undo.erase(m_undo.begin() + static_cast<std::ptrdiff_t>(first), m_undo.end());
}

void NamespaceManager::dropDeclarations() {
    const std::size_t first = m_scopes.back().firstDeclaration;
    for (std::size_t i = m_declarations.size(); i > first; --i) {
        m_lastOfUri.at(m_declarations[i - 1].uri) = m_declarations[i - 1].previous + 1;
    }
    m_declarations.erase(m_declarations.begin() + static_cast<std::ptrdiff_t>(first),
                         m_declarations.end());
    forgetSorted();
}

ZRName NamespaceManager::findPrefix(ZRName namespaceUri) const {
    const std::size_t* last = m_lastOfUri.find(namespaceUri);
    if (last == nullptr || namespaceUri.isEmpty()) {
        return ZRN_EMPTY;
    }
    const Declaration* found = nullptr;
    for (std::size_t i = *last - 1; i != kNone; i = m_declarations[i].previous) {
        const Declaration& candidate = m_declarations[i];
        if (found != nullptr && candidate.scope != found->scope) {
            break;
        }
        const bool isLower = found == nullptr || candidate.prefix < found->prefix;
        if (isLower && !candidate.isReplaced && lookup(candidate.prefix) == namespaceUri) {
            found = &candidate;
        }
    }
    return found == nullptr ? ZRN_EMPTY : found->prefix;
}

int NamespaceManager::declarationCount(int depth) const {
    const auto at = static_cast<std::size_t>(depth);  // a negative depth becomes a huge one
    return at < m_scopes.size() ? static_cast<int>(m_scopes[at].declared) : 0;
}

NamespaceMap NamespaceManager::declarations() const {
    const std::size_t first = m_scopes.back().firstDeclaration;
    if (first == m_declarations.size()) {
        return {};
    }
    if (m_sortedFrom != first) {
        sortDeclarations(first);
    }
    return NamespaceMap(m_sorted);
}

void NamespaceManager::sortDeclarations(std::size_t first) const {
    m_sorted.clear();
    for (std::size_t i = first; i < m_declarations.size(); ++i) {
        if (!m_declarations[i].isReplaced) {
            m_sorted.push_back({m_declarations[i].prefix, m_declarations[i].uri});
        }
    }
    std::sort(m_sorted.begin(), m_sorted.end(), byPrefix);
    m_sortedFrom = first;
}

}  // namespace ZroCommon::internal
