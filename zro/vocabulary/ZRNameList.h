#pragma once

#include <memory>

#include "zro/foundation/Export.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

/// A list of names that lie in an array of somebody else, who keeps them alive.
///
/// A value around a pointer: copies share the array.
class ZRO_API ZRNameList {
public:
    ZRNameList() = default;
    /// \param count  0 is taken for a null pointer, and for what is below
    ZRNameList(const ZRNameEnum* items, int count);
    /// \param items  up to an empty name, which is not counted; null is an empty list
    explicit ZRNameList(const ZRNameEnum* items);

    int getCount() const { return m_count; }
    /// The empty name outside of the list.
    ZRName getItem(int index) const {
        return index >= 0 && index < m_count ? ZRName(m_items[index]) : ZRName();
    }
    /// The first place of a name, or -1.
    int indexOf(ZRName name) const;
    bool hasItem(ZRName name) const { return indexOf(name) >= 0; }

private:
    const ZRNameEnum* m_items = nullptr;
    int m_count = 0;
};

/// A list with an array of its own, to be filled.
///
/// Assignment makes it show the array of the other list, which has to outlive its use; `setItem`
/// goes on writing to its own.
class ZRO_API ZRNameListInstance : public ZRNameList {
public:
    /// `count` empty names; none for a number below 0.
    explicit ZRNameListInstance(int count);
    ZRNameListInstance(const ZRNameListInstance&) = delete;
    ~ZRNameListInstance() = default;
    ZRNameListInstance& operator=(const ZRNameListInstance& other) {
        ZRNameList::operator=(other);
        return *this;
    }

    /// Ignored outside of the list.
    void setItem(ZRName name, int index);

private:
    explicit ZRNameListInstance(std::unique_ptr<ZRNameEnum[]> items, int count);

    std::unique_ptr<ZRNameEnum[]> m_ownItems;
    int m_ownCount;
};

}  // namespace ZroCommon
