#include "zro/dom/internal/AttrIndex.h"

#include <memory>
#include <new>

#include "zro/dom/ZRAttr.h"

namespace ZroCommon::internal {

void AttrIndex::append(ZRAttr& attr) {
    insert(attr, m_end++);
}

void AttrIndex::insert(ZRAttr& attr, Position position) {
    forgetOrder();
    const ZRNameEnum local = attr.m_localName;
    m_byName.emplace(Name{local, attr.m_namespaceUri, position}, &attr);
    m_byLocalName.emplace(std::pair{local, position}, &attr);
}

AttrIndex::Position AttrIndex::take(const ZRAttr& attr) {
    forgetOrder();
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

ZRAttr* const* AttrIndex::order(ZRAttr& first, std::size_t count) const {
    ZRAttr** known = m_order.load(std::memory_order_acquire);
    if (known != nullptr) {
        return known;
    }
    std::unique_ptr<ZRAttr*[]> made(new (std::nothrow) ZRAttr*[count]);
    if (made == nullptr) {
        return nullptr;
    }
    std::size_t place = 0;
    for (ZRAttr* attr = &first; attr != nullptr; attr = attr->m_nextAttribute) {
        made[place++] = attr;
    }
    const bool isFirst = m_order.compare_exchange_strong(known, made.get());
    return isFirst ? made.release() : known;
}

void AttrIndex::forgetOrder() {
    const std::unique_ptr<ZRAttr*[]> order(m_order.exchange(nullptr));
}

}  // namespace ZroCommon::internal
