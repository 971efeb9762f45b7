#include "zro/dom/internal/PlainBuilder.h"

#include <typeinfo>

#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRTextNode.h"
#include "zro/dom/internal/Element.h"
#include "zro/xml/internal/XmlParserImpl.h"

namespace ZroCommon::internal {

XmlParserImpl* PlainBuilder::parserFor(const ZRDocument& document, ZRXmlParser& parser) {
    const bool isPlain = typeid(document) == typeid(ZRDocument)
                         && parser.getTypeID() == XmlParserImpl::getStaticTypeID();
    return isPlain ? static_cast<XmlParserImpl*>(&parser) : nullptr;
}

bool PlainBuilder::isPlain(const ZRNode& node, const ZRDocument& document) {
    return &node == &document
           || (typeid(node) == typeid(ElementNS) && node.m_ownerDocument == &document);
}

ZRNode* PlainBuilder::parentOf(const ZRNode& node) {
    ZRNode* parent = node.m_parent;
    return parent == nullptr || !parent->getFlag(ZRNode::kComplemental)
               ? parent
               : parent->getParentNodeUncomplemental();
}

ZRPtr<ZRNode> PlainBuilder::addElement(ZRDocument& document, ZRNode& parent,
                                       const XmlParserImpl& parser) {
    const ParserState& state = parser.state();
    const NamespaceManager& names = *state.namespaces;
    ZRPtr<ElementNS> element = ElementNS::make(document, names.elementNamespace(),
                                               names.elementPrefix(), names.elementName());
    element->setFlag(ZRNode::kLoading, true);
    element->setSourceLineNumber(state.reader.line());
    element->setSourceColumnNumber(state.reader.column());
    if (state.attributes.size() != 0) {
        element->takeAttributes(state.attributes);
    }
    return append(parent, *element.detach());
}

ZRPtr<ZRNode> PlainBuilder::addText(ZRDocument& document, ZRNode& parent,
                                    const XmlParserImpl& parser) {
    return append(parent, *new ZRTextNode(parser.state().eventText(), document));
}

/// \param child  a new one, without a parent
ZRPtr<ZRNode> PlainBuilder::append(ZRNode& parent, ZRNode& child) {
    child.startRefCount(2);
    parent.linkBefore(child, nullptr);
    return ZRPtr<ZRNode>::adopt(&child);
}

}  // namespace ZroCommon::internal
