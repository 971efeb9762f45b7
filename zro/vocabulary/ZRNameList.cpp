#include "zro/vocabulary/ZRNameList.h"

#include <algorithm>
#include <utility>

namespace ZroCommon {

ZRNameList::ZRNameList(const ZRNameEnum* items, int count)
    : m_items(items), m_count(items == nullptr ? 0 : std::max(count, 0)) {}

ZRNameList::ZRNameList(const ZRNameEnum* items) : m_items(items) {
    while (items != nullptr && items[m_count] != ZRN_EMPTY) {
        ++m_count;
    }
}

int ZRNameList::indexOf(ZRName name) const {
    const ZRNameEnum* const end = m_items + m_count;
    const ZRNameEnum* const found = std::find(m_items, end, static_cast<ZRNameEnum>(name));
    return found == end ? -1 : static_cast<int>(found - m_items);
}

ZRNameListInstance::ZRNameListInstance(int count)
    : ZRNameListInstance(
        std::make_unique<ZRNameEnum[]>(static_cast<std::size_t>(std::max(count, 0))),
        std::max(count, 0)) {}

ZRNameListInstance::ZRNameListInstance(std::unique_ptr<ZRNameEnum[]> items, int count)
    : ZRNameList(items.get(), count), m_ownItems(std::move(items)), m_ownCount(count) {}

void ZRNameListInstance::setItem(ZRName name, int index) {
    if (index >= 0 && index < m_ownCount) {
        m_ownItems[static_cast<std::size_t>(index)] = name;
    }
}

}  // namespace ZroCommon
