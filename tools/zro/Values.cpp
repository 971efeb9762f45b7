#include "tools/zro/Values.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "zro/values/ZRNamedValueMap.h"

#include "tools/zro/Text.h"

namespace zro {

using ZroCommon::ZRNamedValueMapIterator;
using ZroCommon::ZRValue;
using ZroCommon::ZRValueUnitType;
using Json = nlohmann::ordered_json;

namespace {

// By the library's numbers of units.
constexpr std::array<const char*, 32> kUnits = {
    "none", "number", "percent", "em",  "ex",   "px", "cm", "mm",   "in",  "pt",        "pc",
    "11",   "12",     "deg",     "rad", "grad", "ms", "s",  "Hz",   "kHz", "character", "literal",
    "uri",  "name",   "color",   "25",  "26",   "27", "28", "twip", "pt2", "pt3"};

Json itemsOf(const ZRValue& value) {
    Json items = Json::object();
    ZRNamedValueMapIterator iterator(value.getNamedValueMap());
    while (iterator.hasNext()) {
        const auto& item = iterator.next();
        const auto name = item.getName();
        items[name.isEmpty() ? "." : toUtf8(name.toString())] = jsonOf(item.getValue());
    }
    return items;
}

Json payloadOf(const ZRValue& value) {
    if (value.isInteger()) {
        return value.getIntegerValue();
    }
    if (value.isReal()) {
        return value.getRealValue(ZroCommon::ZRValueUnitNone);
    }
    return value.isCompound() ? itemsOf(value) : Json(toUtf8(value.getStringValue()));
}

std::string keyOf(std::string_view label) {
    std::string key;
    bool isStart = false;
    for (const char character : label) {
        if (character != ' ') {
            key += isStart ? static_cast<char>(character - 'a' + 'A') : character;
        }
        isStart = character == ' ';
    }
    return key;
}

std::string shown(const Json& value) {
    if (!value.is_string()) {
        return value.dump();
    }
    const std::string text = printable(fromUtf8(value.get<std::string>()));
    return text.empty() ? "-" : text;
}

}  // namespace

const char* typeName(const ZRValue& value) {
    switch (value.getValueType()) {
    case ZroCommon::ZRValueTypeNull: return "null";
    case ZroCommon::ZRValueTypeInteger: return "integer";
    case ZroCommon::ZRValueTypeReal: return "real";
    case ZroCommon::ZRValueTypeName: return "name";
    case ZroCommon::ZRValueTypeString: return "string";
    case ZroCommon::ZRValueTypeMap: return "map";
    default: return "object";
    }
}

const char* unitName(const ZRValue& value) {
    return value.isUnknownString() ? "unknown"
                                   : kUnits[static_cast<std::size_t>(value.getUnitType())];
}

ZRValueUnitType unitOf(const std::string& name) {
    const auto* const found = std::find(kUnits.begin(), kUnits.end(), std::string_view(name));
    return found == kUnits.end() ? ZroCommon::ZRValueUnitNone
                                 : static_cast<ZRValueUnitType>(found - kUnits.begin());
}

Json jsonOf(const ZRValue& value) {
    Json object;
    object["type"] = typeName(value);
    object["unit"] = unitName(value);
    if (!value.isNull()) {
        object["payload"] = payloadOf(value);
        object["text"] = toUtf8(value.toString());
    }
    return object;
}

Json rowsOf(const ZRValue& value) {
    Json object = jsonOf(value);
    if (value.isCompound()) {
        for (Json& item : object["payload"]) {
            item = item.value("text", "");
        }
    }
    return object;
}

Json withKeys(const Json& rows) {
    Json object = Json::object();
    for (const auto& [label, value] : rows.items()) {
        object[keyOf(label)] = value;
    }
    return object;
}

void printLine(Session& session, const Json& object) {
    session.out() << object.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
}

std::string rowLabel(const Session& session, const std::string& name) {
    constexpr std::size_t kWidth = 12;
    return session.outStyle().faint(leftAligned(name, kWidth) + " ");
}

void printRows(Session& session, const Json& object, std::size_t indent) {
    for (const auto& [name, value] : object.items()) {
        session.out() << std::string(indent, ' ') << rowLabel(session, printable(fromUtf8(name)));
        if (value.is_object()) {
            session.out() << "\n";
            printRows(session, value, indent + 2);
        } else {
            session.out() << shown(value) << "\n";
        }
    }
}

}  // namespace zro
