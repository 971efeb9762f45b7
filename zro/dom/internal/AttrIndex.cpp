#include "zro/dom/internal/AttrIndex.h"

#include "zro/dom/ZRAttr.h"

namespace ZroCommon::internal {

void AttrIndex::append(ZRAttr& attr) {
    insert(attr, m_end++);
}

void AttrIndex::insert(ZRAttr& attr, Position position) {
    const ZRNameEnum local = attr.m_localName;
    m_byName.emplace(Name{local, attr.m_namespaceUri, position}, &attr);
    m_byLocalName.emplace(std::pair{local, position}, &attr);
}

AttrIndex::Position AttrIndex::take(const ZRAttr& attr) {
    const ZRNameEnum local = attr.m_localName;
    auto entry = m_byName.lower_bound(Name{local, attr.m_namespaceUri, 0});
    while (entry->second != &attr) {
        ++entry;  // of the same name, and nearly always there is but one
    }
    const Position position = std::get<Position>(entry->first);
    m_byName.erase(entry);
    m_byLocalName.erase({local, position});
    return position;
}

void AttrIndex::replace(const ZRAttr& old, ZRAttr& attr) {
    insert(attr, take(old));
}

void AttrIndex::remove(const ZRAttr& attr) {
    take(attr);
}

ZRAttr* AttrIndex::find(ZRName localName) const {
    const auto entry = m_byLocalName.lower_bound({localName, 0});
    return entry != m_byLocalName.end() && entry->first.first == localName ? entry->second
                                                                           : nullptr;
}

ZRAttr* AttrIndex::find(ZRName namespaceUri, ZRName localName) const {
    const auto entry = m_byName.lower_bound(Name{localName, namespaceUri, 0});
    if (entry == m_byName.end() || std::get<0>(entry->first) != localName
        || std::get<1>(entry->first) != namespaceUri) {
        return nullptr;
    }
    return entry->second;
}

}  // namespace ZroCommon::internal
