#include "zro/values/ZRValue.h"

#include <unordered_set>
#include <vector>

#include "zro/foundation/internal/AppendNumber.h"
#include "zro/foundation/internal/PrintReal.h"
#include "zro/values/ZRColor.h"
#include "zro/values/ZRNamedValueMap.h"
#include "zro/values/internal/Units.h"

namespace ZroCommon {
namespace {

void appendNumeric(UnicodeString& text, const ZRValue& value) {
    if (value.isCharacter()) {
        text.append(static_cast<UChar32>(value.getIntegerValue()));
        return;
    }
    if (value.isInteger()) {
        internal::appendNumber(text, value.getIntegerValue());
    } else {
        internal::appendReal(text, value.getRealValue(ZRValueUnitNone));
    }
    const std::u16string_view unit =
        internal::kUnitTexts[static_cast<std::size_t>(value.getUnitType())];
    text.append(unit.data(), static_cast<int32_t>(unit.size()));
}

bool isPlainMap(const ZRValue& value) {
    return value.isCompound() && !value.isColor();
}

// Everything but plain maps.
void appendSimple(UnicodeString& text, const ZRValue& value) {
    if (value.isColor()) {
        text.append(value.getColorValue().toString(false));
        return;
    }
    switch (value.getValueType()) {
    case ZRValueTypeInteger:
    case ZRValueTypeReal: appendNumeric(text, value); return;
    case ZRValueTypeName: text.append(value.getNameValue().toString()); return;
    case ZRValueTypeString: text.append(value.getStringValue()); return;
    case ZRValueTypeRCObject:
        if (const ZRRCObject* object = value.getRCObject()) {
            text.append(u"##").append(object->getTypeName());
        }
        return;
    default: return;
    }
}

// Prints maps within maps without recursion. A map that lies within itself is empty there.
class MapPrinter {
public:
    UnicodeString print(const ZRNamedValueMap* map) {
        open(map);
        while (!m_open.empty()) {
            if (m_open.back().items.hasNext()) {
                printItem(m_open.back().items.next());
            } else {
                close();
            }
        }
        return m_text;
    }

private:
    struct Level {
        const ZRNamedValueMap* map;
        ZRNamedValueMapIterator items;
        bool isFirst = true;
    };

    void open(const ZRNamedValueMap* map) {
        if (m_within.insert(map).second) {
            m_open.push_back({map, ZRNamedValueMapIterator(map)});
            m_text.append(u'{');
        }
    }

    void close() {
        m_text.append(u'}');
        m_within.erase(m_open.back().map);
        m_open.pop_back();
    }

    void printItem(const ZRNamedValue& item) {
        if (item.isNull()) {
            return;
        }
        if (!m_open.back().isFirst) {
            m_text.append(u"; ");
        }
        m_open.back().isFirst = false;
        const ZRName name = item.getName();
        m_text.append(name.isEmpty() ? UnicodeString(u'.') : name.toString()).append(u": ");
        if (isPlainMap(item)) {
            open(item.getNamedValueMap());
        } else {
            appendSimple(m_text, item);
        }
    }

    UnicodeString m_text;
    std::vector<Level> m_open;
    std::unordered_set<const ZRNamedValueMap*> m_within;
};

}  // namespace

UnicodeString ZRValue::toString() const {
    if (isPlainMap(*this)) {
        return MapPrinter().print(map());
    }
    UnicodeString text;
    appendSimple(text, *this);
    return text;
}

}  // namespace ZroCommon
