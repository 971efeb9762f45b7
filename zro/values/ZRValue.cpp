#include "zro/values/ZRValue.h"

#include <memory>
#include <new>

#include "zro/foundation/ZREmptyString.h"
#include "zro/values/ZRNamedValueMap.h"

namespace ZroCommon {

constinit const ZRValue ZRValue::NULL_VALUE;
constinit const ZRNamedValue ZRNamedValue::NULL_VALUE;

namespace {

// ICU's own `new` gives null without memory, and a text that is too large for it turns bogus.
std::unique_ptr<UnicodeString> copyOf(const UnicodeString& text) {
    auto copy = std::make_unique<UnicodeString>(text);
    if (copy == nullptr || (copy->isBogus() && !text.isBogus())) {
        throw std::bad_alloc();
    }
    return copy;
}

}  // namespace

ZRValue::ZRValue(const UnicodeString& text, ZRValueUnitType unit)
    : m_payload{.string = copyOf(text).release()},
      m_type(ZRValueTypeString),
      m_unit(static_cast<std::uint8_t>(unit & 31)),
      m_holding(Holding::String) {}

ZRValue::ZRValue(ZRRCObject* object) {
    if (object != nullptr) {
        object->addRef();
        m_payload.object = object;
        m_holding = Holding::Object;
        m_type = ZRValueTypeRCObject;
    }
}

ZRValue::ZRValue(ZRNamedValueMap* map) {
    if (map != nullptr) {
        map->addRef();
        m_payload.map = map;
        m_holding = Holding::Map;
        m_type = ZRValueTypeMap;
    }
}

// After the words of another value were taken over: a text of our own, or a reference more.
void ZRValue::ownPayload() {
    if (m_holding == Holding::String) {
        m_payload.string = copyOf(*m_payload.string).release();
    } else {
        object()->addRef();
    }
}

void ZRValue::freePayload() {
    if (m_holding == Holding::String) {
        delete m_payload.string;
    } else {
        object()->release();
    }
    m_holding = Holding::Plain;
    m_payload.word = 0;
}

ZRValue& ZRValue::becomeNull() {
    releasePayload();
    m_type = ZRValueTypeNull;
    m_unit = ZRValueUnitNone;
    return *this;
}

void ZRValue::setValueType(ZRValueType type) {
    m_type = static_cast<std::uint8_t>(type & 7);
    if (m_type == ZRValueTypeMap && m_holding == Holding::Object
        && m_payload.object->isA(ZRNamedValueMap::getStaticTypeID())) {
        m_payload.map = static_cast<ZRNamedValueMap*>(m_payload.object);
        m_holding = Holding::Map;
    }
}

const UnicodeString& ZRValue::text() const {
    if (isName()) {
        return ZRName(nameOf(word())).toString();
    }
    if (isString() && m_holding == Holding::String) {
        return *m_payload.string;
    }
    return ZREmptyString::EMPTY_VALUE;
}

ZRRCObject* ZRValue::object() const {
    switch (m_holding) {
    case Holding::Object: return m_payload.object;
    case Holding::Map: return m_payload.map;
    default: return nullptr;
    }
}

ZRName ZRValue::toZRName() const {
    return {*this};
}

UnicodeString ZRValue::getStringValue() const {
    return text();
}

bool ZRValue::isEmpty() const {
    if (isName()) {
        return word() == ZRN_EMPTY;
    }
    return isNull() || (isString() && text().isEmpty());
}

bool ZRValue::isTrue() const {
    return isName() && (word() == ZRN_true || word() == ZRN_yes);
}

bool ZRValue::isFalse() const {
    return isName() && (word() == ZRN_false || word() == ZRN_no);
}

}  // namespace ZroCommon
