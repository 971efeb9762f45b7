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

bool isPropertyName(ZRName name) {
    const UnicodeString& text = name.toString();
    const int32_t dot = text.indexOf(u'.');
    return name.isBuiltin()
           || (dot > 0 && ZRName(UnicodeString(text, 0, dot)).isBuiltin()
               && ZRName(UnicodeString(text, dot + 1)).isBuiltin());
}

}  // namespace zro
