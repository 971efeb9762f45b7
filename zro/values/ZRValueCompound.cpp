// The operations of compound values, which hold a map of named items.

#include "zro/values/ZRValue.h"

#include "zro/values/ZRNamedValueMap.h"

namespace ZroCommon {

void ZRValue::makeCompound() {
    if (isCompound()) {
        return;
    }
    ZRPtr<ZRNamedValueMap> items(new ZRNamedValueMap);
    if (!isNull()) {
        items->setNamedItem(ZRN_EMPTY, *this);
    }
    // On purpose: the reference on an object that was held until now is not given up.
    if (m_holding == Holding::String) {
        freePayload();
    }
    m_payload.map = items.detach();
    m_holding = Holding::Map;
    m_type = ZRValueTypeMap;
    m_unit = ZRValueUnitNone;
}

void ZRValue::setNamedItem(ZRName name, const ZRValue& value) {
    setNamedItem(ZRNamedValue(value, name));  // a copy: `value` may be this one
}

void ZRValue::setNamedItem(const ZRNamedValue& item) {
    if (isCompound()) {
        map()->setNamedItem(item);
        return;
    }
    const ZRName name = item.getName();  // ahead of the change, since `item` may be this value
    const ZRValue value = item.getValue();
    makeCompound();
    map()->setNamedItem(name, value);
}

ZRValue ZRValue::getNamedItem(ZRName name) const {
    if (isCompound()) {
        return map()->getNamedItem(name);
    }
    return name.isEmpty() ? *this : ZRValue();
}

void ZRValue::removeNamedItem(ZRName name) {
    if (isCompound()) {
        map()->removeNamedItem(name);
    }
}

}  // namespace ZroCommon
