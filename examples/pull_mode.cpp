// Reads a document of any size in little memory: in pull mode the tree is built while it is walked,
// and what has been walked over is removed again.
//
//     pull_mode report.fo
#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>

#include <zro/ZroCommon.h>

namespace zro = ZroCommon;

namespace {

std::string utf8(const zro::UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

struct Counts {
    std::size_t elements = 0;
    std::size_t characters = 0;
    std::size_t live = 0;  // nodes in the tree just now
    std::size_t mostLive = 0;
};

void enter(const zro::ZRNode& node, Counts& counts) {
    counts.mostLive = std::max(counts.mostLive, ++counts.live);
    if (node.isElementNode()) {
        ++counts.elements;
    } else {
        counts.characters += static_cast<std::size_t>(node.getText().countChar32());
    }
}

/// A text is visited once, an element before and behind its children. A node is finished at its
/// last visit; it can go as soon as the walk has moved on.
Counts readThrough(zro::ZRNode& root) {
    Counts counts;
    zro::ZRTreeIterator walk(&root, zro::ZRTreeIterator::PRE_AND_POST_ORDER);
    zro::ZRNode* node = walk.nextNode();
    while (node != nullptr) {
        const bool isFirstVisit = !node->isElementNode() || walk.atPreVisit();
        const bool isLastVisit = !node->isElementNode() || walk.atPostVisit();
        if (isFirstVisit) {
            enter(*node, counts);
        }
        zro::ZRNode* next = walk.nextNode();
        if (isLastVisit && node != &root) {
            node->getParentNode()->removeChild(node);
            --counts.live;
        }
        node = next;
    }
    return counts;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: pull_mode DOCUMENT\n";
        return 2;
    }
    try {
        const zro::ZRPtr<zro::ZRDocument> document = new zro::ZRDocument;
        document->setPullMode(true);
        document->load(zro::UnicodeString::fromUTF8(arguments[1]));
        zro::ZRElement* root = document->getDocumentElement();
        const Counts counts = root != nullptr ? readThrough(*root) : Counts();
        std::cout << counts.elements << " elements, " << counts.characters
                  << " characters of text, at most " << counts.mostLive << " nodes at a time\n";
    } catch (const zro::ZRError& error) {
        std::cerr << utf8(error.getMessage()) << "\n";
        return 1;
    }
    return 0;
}
