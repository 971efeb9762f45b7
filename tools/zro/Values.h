#pragma once

#include <nlohmann/json.hpp>

#include "zro/values/ZRValue.h"

#include "tools/zro/Session.h"

namespace zro {

/// "real", "integer", "name", "string", "map", "object" or "null".
const char* typeName(const ZroCommon::ZRValue& value);

/// "pt", "percent", "name" and so on; for a string "unknown" or "literal".
const char* unitName(const ZroCommon::ZRValue& value);

/// The unit of that name, `ZRValueUnitNone` when there is none.
ZroCommon::ZRValueUnitType unitOf(const std::string& name);

/// All about a value: "type", "unit", "payload" and "text", as it prints.
nlohmann::ordered_json jsonOf(const ZroCommon::ZRValue& value);

/// The same for people: of the items of a map their texts alone.
nlohmann::ordered_json rowsOf(const ZroCommon::ZRValue& value);

/// What is labelled for people, keyed for programs: "file name" is "fileName".
nlohmann::ordered_json withKeys(const nlohmann::ordered_json& rows);

/// One object on one line.
void printLine(Session& session, const nlohmann::ordered_json& object);

/// What stands before a text of that name in a column of its own.
std::string rowLabel(const Session& session, const std::string& name);

/// The members of an object one below the other, each behind its name; objects within it indented.
void printRows(Session& session, const nlohmann::ordered_json& object, std::size_t indent = 0);

}  // namespace zro
