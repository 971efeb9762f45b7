#include "zro/dom/internal/AttrValue.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "zro/dom/internal/NodeSlab.h"

namespace ZroCommon::internal {

/// Leaves nothing in the storage that has to be freed.
void AttrValue::clearStorage() noexcept {
    if (m_kind == Kind::Value) {
        std::destroy_at(&m_storage.value);
    } else if (m_kind == Kind::BlockText) {
        freeNodeMemory(m_storage.block.units, m_storage.block.length * sizeof(char16_t));
    }
    m_kind = Kind::InlineText;
    m_inlineLength = 0;
}

void AttrValue::set(const ZRValue& value) {
    if (value.isString()) {
        set(value.getStringValue(), value.getUnitType());
        return;
    }
    ZRValue copy = value;  // first: the value may be reached through the old one
    clear();
    new (&m_storage.value) ZRValue(std::move(copy));
    m_kind = Kind::Value;
}

void AttrValue::set(const UnicodeString& text, ZRValueUnitType unit) {
    if (text.isBogus()) {
        ZRValue bogus(text, unit);
        clear();
        new (&m_storage.value) ZRValue(std::move(bogus));
        m_kind = Kind::Value;
        return;
    }
    set(viewOf(text), unit);
}

void AttrValue::setBlock(std::u16string_view text) {
    auto* units = static_cast<char16_t*>(allocateNodeMemory(text.size() * sizeof(char16_t)));
    std::copy(text.begin(), text.end(), units);
    clear();
    m_storage.block = {units, text.size()};
    m_kind = Kind::BlockText;
}

ZRValue AttrValue::get() const {
    return isText() ? ZRValue(text(), static_cast<ZRValueUnitType>(m_unit)) : m_storage.value;
}

UnicodeString AttrValue::text() const {
    switch (m_kind) {
    case Kind::InlineText: return textOf({m_storage.units.data(), m_inlineLength});
    case Kind::BlockText: return textOf({m_storage.block.units, m_storage.block.length});
    case Kind::Value: break;
    }
    return m_storage.value.toString();
}

}  // namespace ZroCommon::internal
