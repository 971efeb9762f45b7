#include "zro/values/ZRNamedValueMap.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ZroCommon {

ZRNamedValueMap::ZRNamedValueMap() = default;

// Maps within maps go one by one from a list, since each in the destructor of the one around it
// would take stack for every level. The list is made of the maps' own nodes.
namespace {

// The map that a value holds, as a map or as a plain object.
ZRNamedValueMap* mapIn(const ZRValue& value) {
    ZRRCObject* const object = value.getRCObject();
    return object != nullptr && object->isA(ZRNamedValueMap::getStaticTypeID())
               ? static_cast<ZRNamedValueMap*>(object)
               : nullptr;
}

}  // namespace

ZRNamedValueMap::~ZRNamedValueMap() {
    std::multimap<ZRNameEnum, ZRNamedValue> doomed;
    doomed.merge(m_items);
    while (!doomed.empty()) {
        const auto first = doomed.begin();
        const ZRValue item = std::move(first->second);
        doomed.erase(first);
        ZRNamedValueMap* const map = mapIn(item);
        // A count of 1 is the item's own reference. Giving it up and taking it back orders what
        // other owners did before they let go.
        if (map != nullptr && map->getRefCount() == 1 && map->removeRef() == 0) {
            doomed.merge(map->m_items);
            map->addRef();
        }
    }
}

unsigned int ZRNamedValueMap::getTypeID() const {
    return getStaticTypeID();
}

bool ZRNamedValueMap::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRRCObject::isA(typeID);
}

UnicodeString ZRNamedValueMap::getTypeName() const {
    return u"ZRNamedValueMap";
}

const ZRNamedValue* ZRNamedValueMap::findNamedItem(ZRName name) const {
    const auto found = m_items.find(name);
    return found != m_items.end() ? &found->second : nullptr;
}

ZRNamedValue ZRNamedValueMap::getNamedItem(ZRName name) const {
    const ZRNamedValue* item = findNamedItem(name);
    return item != nullptr ? *item : ZRNamedValue(ZRValue::NULL_VALUE, name);
}

ZRNamedValue ZRNamedValueMap::item(int index) const {
    if (index < 0 || index >= getCount()) {
        return ZRNamedValue::NULL_VALUE;
    }
    return std::next(m_items.begin(), index)->second;
}

void ZRNamedValueMap::setNamedItem(const ZRNamedValue& item) {
    m_items.insert_or_assign(item.getName(), item);
}

void ZRNamedValueMap::setNamedItem(ZRName name, const ZRValue& value) {
    setNamedItem(ZRNamedValue(value, name));
}

void ZRNamedValueMap::removeNamedItem(ZRName name) {
    m_items.erase(name);
}

void ZRNamedValueMap::removeNamedItem(ZRName name, const ZRValue& value) {
    const auto found = m_items.find(name);
    if (found != m_items.end() && found->second == value) {
        m_items.erase(found);
    }
}

ZRPtr<ZRNamedValueMap> ZRNamedValueMap::clone() const {
    ZRPtr<ZRNamedValueMap> copy(new ZRNamedValueMap);
    copy->m_items = m_items;
    return copy;
}

ZRNamedValueMapIterator::ZRNamedValueMapIterator(const ZRNamedValueMap* map) {
    if (map != nullptr) {
        m_begin = map->m_items.begin();
        m_end = map->m_items.end();
    }
    m_current = m_begin;
}

const ZRNamedValue& ZRNamedValueMapIterator::next() {
    return hasNext() ? (m_current++)->second : ZRNamedValue::NULL_VALUE;
}

const ZRNamedValue& ZRNamedValueMapIterator::previous() {
    return hasPrevious() ? (--m_current)->second : ZRNamedValue::NULL_VALUE;
}

}  // namespace ZroCommon
