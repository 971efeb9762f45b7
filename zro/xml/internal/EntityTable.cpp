#include "zro/xml/internal/EntityTable.h"

#include <algorithm>
#include <array>

#include "zro/xml/internal/MathMLEntities.h"

namespace ZroCommon::internal {
namespace {

struct Predefined {
    ZRNameEnum name;
    UnicodeString value;
};

// "<" and "&" stand as character references, so that they are data when they are read again.
const Predefined* findPredefined(ZRName name) {
    // Never destroyed, since parsers of other static objects may still run at the end.
    static const auto& s_predefined = *new std::array<Predefined, 5>{{
        {ZRN_lt, u"&#60;"},
        {ZRN_gt, u">"},
        {ZRN_amp, u"&#38;"},
        {ZRN_apos, u"'"},
        {ZRN_quot, u"\""},
    }};
    const auto* found = std::find_if(s_predefined.begin(), s_predefined.end(),
                                     [name](const Predefined& row) { return row.name == name; });
    return found == s_predefined.end() ? nullptr : found;
}

// Maps of more buckets give their memory back.
constexpr std::size_t kOrdinaryBuckets = 64;

template <class Map>
const UnicodeString* findIn(const Map& map, ZRName name) {
    if (map.empty()) {
        return nullptr;
    }
    const auto found = map.find(name);
    return found == map.end() ? nullptr : &found->second;
}

}  // namespace

void EntityTable::reset() {
    const auto isPredefined = [](const auto& entry) {
        return findPredefined(entry.first) != nullptr;
    };
    if (m_hasMathML
        || !std::all_of(m_general.values.begin(), m_general.values.end(), isPredefined)) {
        m_general.values.clear();
    }
    m_hasMathML = false;
    m_general.external.clear();
    m_parameter.values.clear();
    m_parameter.external.clear();
}

void EntityTable::forgetAll() {
    for (Map* map :
         {&m_general.values, &m_general.external, &m_parameter.values, &m_parameter.external}) {
        if (!map->empty() || map->bucket_count() > kOrdinaryBuckets) {
            *map = Map();
        }
    }
    m_hasMathML = false;
}

const UnicodeString* EntityTable::value(Kind kind, ZRName name) const {
    if (const UnicodeString* value = findIn(space(kind).values, name)) {
        return value;
    }
    if (kind == Kind::Parameter) {
        return nullptr;
    }
    if (const Predefined* predefined = findPredefined(name)) {
        return &predefined->value;
    }
    if (!m_hasMathML || findIn(m_general.external, name) != nullptr) {
        return nullptr;
    }
    const UnicodeString& value = mathMLEntity(name);
    return value.isEmpty() ? nullptr : &value;
}

const UnicodeString* EntityTable::systemId(Kind kind, ZRName name) const {
    return findIn(space(kind).external, name);
}

bool EntityTable::knows(Kind kind, ZRName name) const {
    return value(kind, name) != nullptr || systemId(kind, name) != nullptr;
}

void EntityTable::define(ZRName name, const UnicodeString& value) {
    m_general.values.insert_or_assign(name, value);
}

void EntityTable::declareValue(Kind kind, ZRName name, const UnicodeString& value) {
    if (!knows(kind, name)) {
        space(kind).values.emplace(name, value);
    }
}

void EntityTable::declareExternal(Kind kind, ZRName name, const UnicodeString& systemId) {
    if (!knows(kind, name)) {
        space(kind).external.emplace(name, systemId);
    }
}

void EntityTable::merge(const EntityTable& other) {
    mergeSpace(Kind::General, other);
    mergeSpace(Kind::Parameter, other);
    m_hasMathML = m_hasMathML || other.m_hasMathML;
}

void EntityTable::mergeSpace(Kind kind, const EntityTable& other) {
    for (const auto& [name, value] : other.space(kind).values) {
        declareValue(kind, name, value);
    }
    for (const auto& [name, systemId] : other.space(kind).external) {
        declareExternal(kind, name, systemId);
    }
}

}  // namespace ZroCommon::internal
