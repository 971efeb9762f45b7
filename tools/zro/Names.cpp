#include "tools/zro/Names.h"

#include "tools/zro/Text.h"

namespace zro {

using ZroCommon::ZRName;

std::string qualifiedName(ZRName prefix, ZRName localName) {
    const std::string local = toUtf8(localName.toString());
    return prefix.isEmpty() ? local : toUtf8(prefix.toString()) + ":" + local;
}

std::string expandedName(ZRName namespaceUri, ZRName prefix, ZRName localName) {
    const std::string name = qualifiedName(prefix, localName);
    return namespaceUri.isEmpty() ? name : "{" + printable(namespaceUri.toString()) + "}" + name;
}

}  // namespace zro
