#pragma once

#include <unordered_map>

#include "zro/foundation/Text.h"
#include "zro/vocabulary/ZRName.h"
#include "zro/vocabulary/internal/NameHash.h"

namespace ZroCommon::internal {

/// The entities of a document: general and parameter ones, each by value or by system identifier.
///
/// Declarations are first come, first served: one that names a known entity of its kind is dropped.
/// The five predefined entities are always known, with values that become character data when they
/// are read again.
class EntityTable {
public:
    enum class Kind : unsigned char { General, Parameter };

    /// Back to the predefined entities. On purpose: values that were put in their place by `define`
    /// stay as long as no other general entity is defined by value.
    void reset();

    /// Back to a new table.
    void forgetAll();

    /// The replacement text, or null when there is none by value.
    const UnicodeString* value(Kind kind, ZRName name) const;
    /// The system identifier as declared, or null when there is none.
    const UnicodeString* systemId(Kind kind, ZRName name) const;
    bool knows(Kind kind, ZRName name) const;

    /// Sets or overwrites a general entity.
    void define(ZRName name, const UnicodeString& value);
    void declareValue(Kind kind, ZRName name, const UnicodeString& value);
    void declareExternal(Kind kind, ZRName name, const UnicodeString& systemId);

    /// Adds the MathML 2 entities that are not known.
    void addMathML() { m_hasMathML = true; }
    /// Adds what another table knows and this one does not.
    void merge(const EntityTable& other);

private:
    using Map = std::unordered_map<ZRNameEnum, UnicodeString, NameNumberHash>;

    // The two maps of one kind; a name is in one of them at most.
    struct Space {
        Map values;
        Map external;
    };

    Space& space(Kind kind) { return kind == Kind::General ? m_general : m_parameter; }
    const Space& space(Kind kind) const { return kind == Kind::General ? m_general : m_parameter; }
    void mergeSpace(Kind kind, const EntityTable& other);

    // Predefined entities are here only when they were overwritten.
    Space m_general;
    Space m_parameter;
    bool m_hasMathML = false;  // behind the general maps
};

}  // namespace ZroCommon::internal
