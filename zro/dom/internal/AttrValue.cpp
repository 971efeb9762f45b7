#include "zro/dom/internal/AttrValue.h"

#include <algorithm>
#include <memory>
#include <new>

#include "zro/dom/internal/NodeSlab.h"

namespace ZroCommon::internal {

void AttrValue::clear() noexcept {
    if (m_kind == Kind::Value) {
        std::destroy_at(&m_storage.value);
    } else if (m_kind == Kind::BlockText) {
        freeNodeMemory(m_storage.block.units, m_storage.block.length * sizeof(char16_t));
    }
    new (&m_storage.value) ZRValue;
    m_kind = Kind::Value;
}

void AttrValue::set(const ZRValue& value) {
    if (value.isString()) {
        set(value.getStringValue(), value.getUnitType());
        return;
    }
    const ZRValue copy = value;  // first: the value may be reached through the old one
    clear();
    m_storage.value = copy;
}

void AttrValue::set(const UnicodeString& text, ZRValueUnitType unit) {
    if (text.isBogus()) {
        const ZRValue bogus(text, unit);
        clear();
        m_storage.value = bogus;
        return;
    }
    const auto length = static_cast<std::size_t>(text.length());
    if (length > kInlineUnits) {
        auto* units = static_cast<char16_t*>(allocateNodeMemory(length * sizeof(char16_t)));
        std::copy_n(text.getBuffer(), length, units);
        clear();
        m_storage.block = {units, length};
        m_kind = Kind::BlockText;
    } else {
        clear();
        m_storage.units = {};
        std::copy_n(text.getBuffer(), length, m_storage.units.data());
        m_inlineLength = static_cast<std::uint8_t>(length);
        m_kind = Kind::InlineText;
    }
    m_unit = static_cast<std::uint8_t>(unit);
}

ZRValue AttrValue::get() const {
    return isText() ? ZRValue(text(), static_cast<ZRValueUnitType>(m_unit)) : m_storage.value;
}

UnicodeString AttrValue::text() const {
    switch (m_kind) {
    case Kind::InlineText: return {m_storage.units.data(), m_inlineLength};
    case Kind::BlockText:
        return {m_storage.block.units, static_cast<int32_t>(m_storage.block.length)};
    case Kind::Value: break;
    }
    return m_storage.value.toString();
}

}  // namespace ZroCommon::internal
