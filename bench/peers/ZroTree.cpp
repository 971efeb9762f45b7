// This library's tree, loaded at once, and in pull mode up to the root element.

#include <fstream>
#include <memory>

#include "zro/dom/ZRAttr.h"
#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRElement.h"
#include "zro/dom/ZRNodeList.h"
#include "zro/dom/ZRTextNode.h"

#include "bench/peers/Contenders.h"
#include "bench/support/MemoryBuffers.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

std::uint64_t length(const UnicodeString& text) {
    return static_cast<std::uint64_t>(text.length());
}

void takeElement(ZRNode& element, Tally& tally) {
    ++tally.elements;
    keep(element.getLocalName());
    keep(element.getNamespaceUri());
    ZRNamedNodeMap* attributes = element.getAttributes();
    if (attributes == nullptr) {
        return;
    }
    for (ZRNode* node = attributes->getFirstNode(); node != nullptr;
         node = attributes->getNextNode(node)) {
        ++tally.attributes;
        keep(node->getLocalName());
        keep(node->getNamespaceUri());
        tally.units += length(node->getText());
    }
}

ZRNode* following(ZRNode* node, const ZRNode* root) {
    if (ZRNode* child = node->getFirstChildFast()) {
        return child;
    }
    while (node != root && node->getNextSiblingFast() == nullptr) {
        node = node->getParentNodeFast();
    }
    return node == root ? nullptr : node->getNextSiblingFast();
}

Tally runTree(std::string_view bytes, const std::function<void()>& onLoaded) {
    ViewStream in(bytes);
    const ZRPtr<ZRDocument> document(new ZRDocument);
    document->load(in);
    document->setParser(nullptr);  // done with; the peers' parsers are gone by now as well
    onLoaded();
    Tally tally;
    ZRNode* root = document->getDocumentElement();
    for (ZRNode* node = root; node != nullptr; node = following(node, root)) {
        if (node->isElementNode()) {
            takeElement(*node, tally);
        } else {
            tally.units += length(node->getText());
        }
    }
    return tally;
}

template <class Stream, class Source>
std::function<void()> firstFrom(const Source& source) {
    auto in = std::make_shared<Stream>(source);
    auto document = std::make_shared<ZRPtr<ZRDocument>>();
    return [in, document] {
        *document = new ZRDocument;
        (*document)->setPullMode(true);
        (*document)->load(*in);
        keep((*document)->getDocumentElement());
    };
}

}  // namespace

void addZroTree(Contenders& contenders) {
    contenders.tree.push_back({"zro", Form::Utf16, runTree});
    contenders.first.push_back({"zro-tree memory", [](const FirstInput& input) {
                                    return firstFrom<ViewStream>(input.bytes);
                                }});
    contenders.first.push_back({"zro-tree file", [](const FirstInput& input) {
                                    return firstFrom<std::ifstream>(input.file);
                                }});
}

}  // namespace ZroCommon::bench
