#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "zro/foundation/ZRRCObject.h"
#include "zro/vocabulary/ZRName.h"
#include "zro/xml/internal/NameHashMap.h"

namespace ZroCommon::internal {

/// The namespace declarations of one scope in ascending order of the prefix's number. A view: it
/// holds until the scopes change.
class NamespaceMap {
public:
    struct Entry {
        ZRNameEnum prefix = ZRN_EMPTY;
        ZRNameEnum uri = ZRN_EMPTY;
    };

    NamespaceMap() = default;
    explicit NamespaceMap(std::span<const Entry> entries) : m_entries(entries) {}

    std::size_t size() const { return m_entries.size(); }
    bool isEmpty() const { return m_entries.empty(); }
    bool contains(ZRName prefix) const { return find(prefix) != nullptr; }

    /// The URI declared for the prefix; 0 when there is no entry or when the entry says 0.
    ZRName lookup(ZRName prefix) const;
    /// The lowest prefix declared for the URI, or the empty one.
    ZRName findPrefix(ZRName uri) const;
    ZRName defaultNamespace() const { return lookup(ZRN_EMPTY); }

    /// The i-th prefix and its URI; 0 outside 0 to `size() - 1`.
    ZRName prefix(int index) const;
    ZRName uri(int index) const;

    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

private:
    const Entry* find(ZRName prefix) const;

    std::span<const Entry> m_entries;
};

/// The namespace scopes of the open elements, over a base scope that binds `xml` and `xmlns`.
///
/// A scope holds the declarations made on its element and, once known, the element's own names.
/// What a prefix means is defined by a walk from the innermost scope outwards: the element's own
/// prefix answers before the declarations of its scope; a declaration of 0 undeclares nothing, but
/// for the empty prefix, where it ends the default namespace. No walk takes place: the answer is
/// kept for each prefix and restored when a scope ends, so opening, closing and looking up cost the
/// same at any depth, and an element without declarations allocates nothing.
///
/// It holds a reference on the shared name table, which keeps the numbers of its names good.
class NamespaceManager final : public ZRRCObject {
public:
    NamespaceManager();

    unsigned int getTypeID() const override { return ZRRCObject::getStaticTypeID(); }
    UnicodeString getTypeName() const override { return u"NamespaceManager"; }

    /// As new, but without the reference on the name table until `wake`. Memory is kept, unless it
    /// is much.
    void rest();
    void wake();

    /// Ends all scopes but the base. What was declared in the base scope stays.
    void reset();

    /// The number of scopes above the base.
    int depth() const { return static_cast<int>(m_scopes.size()) - 1; }

    void pushScope() {
        m_scopes.push_back({ZRN_EMPTY, ZRN_EMPTY, ZRN_EMPTY, m_declarations.size(), m_undo.size()});
    }

    /// Ends the innermost scope; the base scope never ends.
    void popScope() {
        if (depth() == 0) {
            return;
        }
        if (m_undo.size() != m_scopes.back().firstUndo) {
            undoBindings();
        }
        if (m_declarations.size() != m_scopes.back().firstDeclaration) {
            dropDeclarations();
        }
        m_scopes.pop_back();
    }

    /// Stores the names of the innermost scope's element, once a scope. From now on its prefix
    /// means its namespace in this scope, whatever is declared, unless the namespace is 0.
    void setElement(ZRName prefix, ZRName namespaceUri, ZRName localName);

    /// The same with the namespace that the prefix means now.
    void setBoundElement(ZRName prefix, ZRName namespaceUri, ZRName localName) {
        Scope& scope = m_scopes.back();
        scope.prefix = prefix;
        scope.namespaceUri = namespaceUri;
        scope.localName = localName;
    }

    /// The innermost scope's element; 0 each until `setElement`.
    ZRName elementPrefix() const { return m_scopes.back().prefix; }
    ZRName elementNamespace() const { return m_scopes.back().namespaceUri; }
    ZRName elementName() const { return m_scopes.back().localName; }

    /// Declares a prefix in the innermost scope; a later declaration of the same prefix there takes
    /// the place of the earlier one.
    /// \return false when the prefix means that URI already: then nothing is recorded.
    bool declare(ZRName prefix, ZRName namespaceUri);

    /// What the prefix means now; 0 when nothing.
    ZRName lookup(ZRName prefix) const {
        const Binding* binding = m_bindings.find(prefix);
        return binding == nullptr ? ZRN_EMPTY : binding->uri;
    }

    /// A prefix that means the URI now: of the innermost scope that declares one, the lowest
    /// number. The empty prefix when there is none, or when it is the empty one.
    ZRName findPrefix(ZRName namespaceUri) const;

    /// How many prefixes were declared in the scope of this depth (0 is the base); 0 for a depth
    /// that does not exist.
    int declarationCount(int depth) const;

    /// The declarations of the innermost scope.
    NamespaceMap declarations() const;

protected:
    ~NamespaceManager() override;

private:
    static constexpr std::uint32_t kNoScope = ~0U;
    static constexpr std::size_t kNone = ~std::size_t{0};

    struct Scope {
        ZRNameEnum prefix;
        ZRNameEnum namespaceUri;
        ZRNameEnum localName;
        std::size_t firstDeclaration;
        std::size_t firstUndo;
        std::uint32_t declared = 0;  // distinct prefixes
    };

    /// What one prefix means, and how it came to that.
    struct Binding {
        ZRNameEnum uri = ZRN_EMPTY;
        ZRNameEnum outerUri = ZRN_EMPTY;  // what it meant outside of the scope `scope`
        std::uint32_t scope = kNoScope;   // the innermost scope that touched it
        std::size_t declaration = kNone;  // the last declaration of it
    };

    struct Undo {
        ZRNameEnum prefix = ZRN_EMPTY;
        Binding binding;
    };

    struct Declaration {
        ZRNameEnum prefix;
        ZRNameEnum uri;
        std::uint32_t scope;
        bool isReplaced;       // by a later one of its scope
        std::size_t previous;  // the declaration before this one with the same URI, or kNone
    };

    Binding& touch(ZRNameEnum prefix);
    std::size_t addDeclaration(ZRNameEnum prefix, ZRNameEnum namespaceUri);
    void undoBindings();
    void dropDeclarations();
    void giveMemoryBack();
    void declareBase();
    void releaseNames();
    void sortDeclarations(std::size_t first) const;
    void forgetSorted() const { m_sortedFrom = kNone; }

    std::uint32_t top() const { return static_cast<std::uint32_t>(m_scopes.size() - 1); }

    bool m_holdsNames = false;
    std::vector<Scope> m_scopes;
    std::vector<Declaration> m_declarations;  // of all scopes, in order, replaced ones included
    std::vector<Undo> m_undo;                 // bindings as they were before a scope touched them
    NameHashMap<Binding> m_bindings;          // by prefix
    NameHashMap<std::size_t> m_lastOfUri;     // the last declaration of each URI, plus 1

    // The declarations from m_sortedFrom on, in order of prefixes; made on demand.
    mutable std::vector<NamespaceMap::Entry> m_sorted;
    mutable std::size_t m_sortedFrom = kNone;
};

}  // namespace ZroCommon::internal
