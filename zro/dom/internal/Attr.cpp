#include "zro/dom/internal/Attr.h"

#include <typeinfo>

#include "zro/xml/internal/AttributeList.h"

namespace ZroCommon::internal {

ZRName namespaceOfAttribute(ZRName namespaceUri, ZRName prefix) {
    if (prefix == ZRN_xmlns) {
        return ZRN_ns_xmlns;
    }
    return prefix == ZRN_xml ? ZRName(ZRN_ns_xml) : namespaceUri;
}

const Attr* asPlainAttr(const ZRAttr& attr) {
    const auto& type = typeid(attr);  // both share the type ID of ZRAttr
    return type == typeid(AttrNS) || type == typeid(Attr) ? static_cast<const Attr*>(&attr)
                                                          : nullptr;
}

Attr* asPlainAttr(ZRAttr& attr) {
    return const_cast<Attr*>(asPlainAttr(const_cast<const ZRAttr&>(attr)));
}

ZRPtr<ZRNode> Attr::cloneNode(bool /*deep*/) {
    ZRPtr<Attr> copy(new Attr(getOwnerDocument(), getLocalName()));
    copy->copyValueOf(*this);
    return copy;
}

ZRPtr<ZRNode> AttrNS::cloneNode(bool /*deep*/) {
    ZRPtr<AttrNS> copy(
        new AttrNS(getOwnerDocument(), getNamespaceUri(), getPrefix(), getLocalName()));
    copy->copyValueOf(*this);
    return copy;
}

AttrNS::AttrNS(ZRDocument* ownerDocument, const Attribute& read, std::u16string_view value)
    : Attr(ownerDocument, read.namespaceUri, read.name, value), m_prefix(read.prefix) {
    startRefCount(1);
}

ZRPtr<ZRAttr> AttrNS::make(ZRDocument* ownerDocument, const Attribute& read,
                           std::u16string_view value) {
    return ZRPtr<ZRAttr>::adopt(new AttrNS(ownerDocument, read, value));
}

}  // namespace ZroCommon::internal
