#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <sstream>

#include "tests/support/Test.h"
#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRDocumentFragment.h"
#include "zro/dom/ZRNodeIterator.h"
#include "zro/dom/ZRNodeList.h"
#include "zro/dom/ZRTextNode.h"
#include "zro/dom/ZRTreeIterator.h"

namespace ZroCommon::testing {

using Document = ZRPtr<ZRDocument>;

/// A name from its text.
inline ZRName operator""_name(const char16_t* text, std::size_t length) {
    return UnicodeString(text, static_cast<int32_t>(length));
}

inline Document newDocument() {
    return new ZRDocument;
}

/// A short form of one node: "p:a x=1 p:y=2" for an element, "'text'", "<?pi?>", "#document".
inline std::string label(ZRNode* node) {
    if (node == nullptr) {
        return "null";
    }
    switch (node->getNodeType()) {
    case ZRNodeTypeText: return "'" + utf8(node->getText()) + "'";
    case ZRNodeTypeProcessingInstruction: return "<?" + utf8(node->getText()) + "?>";
    case ZRNodeTypeAttribute:
        return utf8(node->getNodeName().toString()) + "=" + utf8(node->getText());
    default: break;
    }
    std::string text = utf8(node->getNodeName().toString());
    if (node->hasAttributes()) {
        ZRNodeIterator attributes(node->getAttributes());
        while (ZRNode* attr = attributes.nextNode()) {
            text += " " + label(attr);
        }
    }
    return text;
}

/// What stands in the tree, by its links alone: "a(b('text') c x=1)". Depth does not matter.
inline std::string dump(ZRNode* root) {
    std::string text = label(root);
    for (ZRNode* node = root; node != nullptr;) {
        if (ZRNode* child = node->getFirstChildFast()) {
            node = child;
            text += "(" + label(node);
            continue;
        }
        while (node != root && node->getNextSiblingFast() == nullptr) {
            node = node->getParentNodeFast();
            text += ")";
        }
        node = node != root ? node->getNextSiblingFast() : nullptr;
        text += node != nullptr ? " " + label(node) : "";
    }
    return text;
}

/// The names of the nodes of a list, in order.
inline std::string labels(ZRNodeIterable* list) {
    std::string text;
    ZRNodeIterator nodes(list);
    while (ZRNode* node = nodes.nextNode()) {
        text += (text.empty() ? "" : ", ") + label(node);
    }
    return text;
}

inline ZRPtr<ZRElement> element(const Document& document, const char16_t* name) {
    return document->createElementNS(ZRName(), ZRName(), ZRName(name));
}

inline ZRElement* addElement(const Document& document, ZRNode* parent, const char16_t* name) {
    const ZRPtr<ZRElement> node = element(document, name);
    parent->appendChild(node);
    return node;
}

inline ZRNode* addText(const Document& document, ZRNode* parent, const char16_t* data) {
    return parent->appendChild(document->createTextNode(data));
}

/// The document of a text.
inline Document loaded(const std::string& xml) {
    Document document = newDocument();
    std::istringstream input(xml);
    document->load(input);
    return document;
}

/// The children from the last to the first, by the links backwards.
inline std::string backwards(ZRNode* parent) {
    std::string text;
    for (ZRNode* node = parent->getLastChildFast(); node; node = node->getPreviousSibling()) {
        text += (text.empty() ? "" : " ") + label(node);
    }
    return text;
}

/// Holds edits to the errors that they end in, told as "03 newChild is null. ZRNode::appendChild".
/// \param after  is done behind each
inline void expectErrors(
    Rows<std::function<void()>, std::string> rows, const std::function<void()>& after = [] {}) {
    for (const auto& [edit, error] : rows) {
        const std::size_t place = error.rfind(' ');
        EXPECT_EQ(errorOf(edit), "0x08" + error.substr(0, 2)
                                     + " SYSTEM ERROR:" + error.substr(2, place - 1)
                                     + "[ZroCommon::" + error.substr(place + 1) + "]");
        after();
    }
}

/// An element r in a document.
struct RootedTree {
    Document document = newDocument();
    ZRElement* r = addElement(document, document, u"r");
};

/// r(a(b 't')), for tests to add to.
struct SmallTree : RootedTree {
    ZRNode* a = addElement(document, r, u"a");
    ZRNode* b = addElement(document, a, u"b");
    ZRNode* t = addText(document, a, u"t");
};

/// A chain of elements, each the only child of the one above. \return the lowest
inline ZRNode* addChain(const Document& document, ZRNode* parent, int depth) {
    const ZRName name(u"e");
    for (int i = 0; i < depth; ++i) {
        parent = parent->appendChild(document->createElementNS(ZRName(), ZRName(), name));
    }
    return parent;
}

}  // namespace ZroCommon::testing
