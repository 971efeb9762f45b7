// A document that is loaded whole and one that is pulled node by node: both give one tree and one
// error. The first byte seeds the choice of accessors, and says whether the second document is of
// another class, whose nodes virtual members make.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

#include "zro/dom/ZRDocument.h"
#include "zro/foundation/ZRError.h"
#include "zro/xml/ZRXmlUtil.h"

#include "fuzz/ParserDriver.h"

namespace ZroCommon::fuzzing {
namespace {

class OtherDocument : public ZRDocument {};

/// A document whose text lives as long.
struct Input {
    Input(std::string_view text, bool isOther)
        : stream(std::string(text)), document(isOther ? new OtherDocument : new ZRDocument) {
        const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
        parser->setLimits(smallLimits());
        document->setParser(parser);
    }

    std::istringstream stream;
    ZRPtr<ZRDocument> document;
};

/// The code of the error that ends the action, 0 for none.
template <class Action>
unsigned short codeOf(Action action) {
    try {
        action();
    } catch (const ZRError& error) {
        return error.getErrorCode();
    }
    return 0;
}

void pullOn(ZRDocument& document, ZRNode& node, unsigned choice) {
    switch (choice % 5) {
    case 0: node.getFirstChild(); break;
    case 1: node.hasChildNodes(); break;
    case 2: node.getNextSibling(); break;
    case 3: node.getLastChild(); break;
    default: break;
    }
    if (document.getLastLoadingNode() == &node) {
        document.loadNextNode();
    }
}

unsigned short pullAll(Input& input, unsigned seed) {
    std::minstd_rand random(seed + 1);
    return codeOf([&] {
        input.document->setPullMode(true);
        input.document->load(input.stream);
        while (ZRNode* node = input.document->getLastLoadingNode()) {
            pullOn(*input.document, *node, static_cast<unsigned>(random()));
        }
    });
}

bool haveSameAttributes(ZRNode& left, ZRNode& right) {
    if (left.hasAttributes() != right.hasAttributes()) {
        return false;
    }
    if (!left.hasAttributes()) {
        return true;
    }
    ZRNamedNodeMap& mine = *left.getAttributes();
    ZRNamedNodeMap& other = *right.getAttributes();
    const ZRNode* a = mine.getFirstNode();
    const ZRNode* b = other.getFirstNode();
    while (a != nullptr && b != nullptr && a->getLocalName() == b->getLocalName()
           && a->getNamespaceUri() == b->getNamespaceUri() && a->getText() == b->getText()) {
        a = mine.getNextNode(const_cast<ZRNode*>(a));
        b = other.getNextNode(const_cast<ZRNode*>(b));
    }
    return a == nullptr && b == nullptr;
}

bool areAlike(ZRNode& left, ZRNode& right) {
    return left.getNodeType() == right.getNodeType() && left.getNodeName() == right.getNodeName()
           && left.getNamespaceUri() == right.getNamespaceUri() && left.getText() == right.getText()
           && left.getSourceLineNumber() == right.getSourceLineNumber()
           && haveSameAttributes(left, right);
}

/// The next node in document order, by the links.
ZRNode* after(ZRNode* node) {
    if (ZRNode* child = node->getFirstChildFast()) {
        return child;
    }
    while (node != nullptr && node->getNextSiblingFast() == nullptr) {
        node = node->getParentNodeFast();
    }
    return node != nullptr ? node->getNextSiblingFast() : nullptr;
}

bool areSameTrees(ZRNode& left, ZRNode& right) {
    ZRNode* a = &left;
    ZRNode* b = &right;
    while (a != nullptr && b != nullptr && areAlike(*a, *b)
           && a->getNodeDepth() == b->getNodeDepth()) {
        a = after(a);
        b = after(b);
    }
    return a == nullptr && b == nullptr;
}

}  // namespace
}  // namespace ZroCommon::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ZroCommon::fuzzing;  // NOLINT(google-build-using-namespace)
    if (size < 1) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const Sandbox sandbox;
    Input whole(text, false);
    Input pulled(text, data[0] % 2 != 0);
    const auto error = codeOf([&] { whole.document->load(whole.stream); });
    if (pullAll(pulled, data[0]) != error || !areSameTrees(*whole.document, *pulled.document)) {
        std::abort();
    }
    return 0;
}
