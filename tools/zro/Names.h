#pragma once

#include <string>

#include "zro/vocabulary/ZRName.h"

namespace zro {

/// "prefix:local" as UTF-8.
std::string qualifiedName(ZroCommon::ZRName prefix, ZroCommon::ZRName localName);

/// "{uri}prefix:local"; without a namespace as `qualifiedName`.
std::string expandedName(ZroCommon::ZRName namespaceUri, ZroCommon::ZRName prefix,
                         ZroCommon::ZRName localName);

/// Whether the library knows the name as that of a property, or of a component of one:
/// "space-before", "space-before.optimum".
bool isPropertyName(ZroCommon::ZRName name);

}  // namespace zro
