#pragma once

#include <map>

#include "zro/foundation/ZRPtr.h"
#include "zro/foundation/ZRRCObject.h"
#include "zro/values/ZRNamedValue.h"

namespace ZroCommon {

/// The named items behind a compound value, one a name, in the order of the names' numbers: the
/// empty name first, then builtin names, then others as they were interned.
///
/// The item of the empty name is the default item. Maps are shared by the values that hold them;
/// one that holds itself, directly or in a circle, never dies. One thread at a time.
class ZRO_API ZRNamedValueMap : public ZRRCObject {
public:
    ZRNamedValueMap();
    ~ZRNamedValueMap() override;

    static unsigned int getStaticTypeID() { return 0xE7D947B0U; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    /// Null items count too.
    int getCount() const { return static_cast<int>(m_items.size()); }

    /// The item, or a null value that bears the name.
    ZRNamedValue getNamedItem(ZRName name) const;
    /// The item itself, until it is removed; null when there is none.
    const ZRNamedValue* findNamedItem(ZRName name) const;
    /// The item at a position, found by walking there; outside 0 to the count a null value with the
    /// empty name.
    ZRNamedValue item(int index) const;

    /// Adds the item, or replaces the value of the one with that name.
    void setNamedItem(const ZRNamedValue& item);
    void setNamedItem(ZRName name, const ZRValue& value);

    void removeNamedItem(ZRName name);
    /// Removes the item only if it equals the value.
    void removeNamedItem(ZRName name, const ZRValue& value);

    /// A new map with copies of the items; objects and maps in them are shared.
    [[nodiscard]] ZRPtr<ZRNamedValueMap> clone() const;

private:
    friend class ZRNamedValueMapIterator;

    // A tree, not a sorted vector: input may set many items in any order.
    std::map<ZRNameEnum, ZRNamedValue> m_items;
};

/// Walks over the items of a map in both directions. It must not outlive the map, and the map must
/// not be changed while it is in use. Beyond either end stands a null item.
class ZRO_API ZRNamedValueMapIterator {
public:
    /// Stands before the first item. A null map has no items.
    explicit ZRNamedValueMapIterator(const ZRNamedValueMap* map);

    bool hasNext() const { return m_current != m_end; }
    const ZRNamedValue& next();
    bool hasPrevious() const { return m_current != m_begin; }
    const ZRNamedValue& previous();
    void setToStart() { m_current = m_begin; }
    void setToEnd() { m_current = m_end; }

private:
    using Position = std::map<ZRNameEnum, ZRNamedValue>::const_iterator;

    Position m_begin;
    Position m_current;
    Position m_end;
};

}  // namespace ZroCommon
