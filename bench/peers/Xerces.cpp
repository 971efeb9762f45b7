// Xerces-C: its DOM, without validation.

#include <memory>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include "bench/peers/Contenders.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

namespace xml = XERCES_CPP_NAMESPACE;

std::uint64_t length(const XMLCh* text) {
    return xml::XMLString::stringLen(text);
}

void takeElement(const xml::DOMNode& element, Tally& tally) {
    ++tally.elements;
    keep(element.getLocalName());
    keep(element.getNamespaceURI());
    const xml::DOMNamedNodeMap* attributes = element.getAttributes();
    const XMLSize_t count = attributes->getLength();
    for (XMLSize_t index = 0; index < count; ++index) {
        const xml::DOMNode* attribute = attributes->item(index);
        keep(attribute->getLocalName());
        keep(attribute->getNamespaceURI());
        tally.units += length(attribute->getNodeValue());
    }
    tally.attributes += count;
}

void takeNode(const xml::DOMNode& node, Tally& tally) {
    switch (node.getNodeType()) {
    case xml::DOMNode::ELEMENT_NODE: takeElement(node, tally); break;
    case xml::DOMNode::TEXT_NODE:
    case xml::DOMNode::CDATA_SECTION_NODE: tally.units += length(node.getNodeValue()); break;
    default: break;
    }
}

const xml::DOMNode* following(const xml::DOMNode* node, const xml::DOMNode* root) {
    if (const xml::DOMNode* child = node->getFirstChild()) {
        return child;
    }
    while (node != root && node->getNextSibling() == nullptr) {
        node = node->getParentNode();
    }
    return node == root ? nullptr : node->getNextSibling();
}

Tally runTree(std::string_view document, const std::function<void()>& onLoaded) {
    const xml::MemBufInputSource source(reinterpret_cast<const XMLByte*>(document.data()),
                                        document.size(), "memory");
    xml::XercesDOMParser parser;
    parser.setDoNamespaces(true);
    parser.setValidationScheme(xml::XercesDOMParser::Val_Never);
    parser.setCreateEntityReferenceNodes(false);
    parser.parse(source);
    onLoaded();
    Tally tally;
    const xml::DOMNode* root = parser.getDocument()->getDocumentElement();
    for (const xml::DOMNode* node = root; node != nullptr; node = following(node, root)) {
        takeNode(*node, tally);
    }
    return tally;
}

}  // namespace

void addXerces(Contenders& contenders) {
    xml::XMLPlatformUtils::Initialize();
    // A tree of 100 MB takes it many minutes to free: the time grows as the square of the size.
    constexpr std::size_t kLargest = 32'000'000;
    contenders.tree.push_back({"xerces", Form::Utf16, runTree, kLargest});
}

}  // namespace ZroCommon::bench
