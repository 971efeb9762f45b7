// Loads a document and prints its elements as an outline, with the text that each one begins with.
//
//     load_and_walk letter.fo
#include <iostream>
#include <string>

#include <zro/ZroCommon.h>

namespace zro = ZroCommon;

namespace {

std::string utf8(const zro::UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

/// The first words of what stands directly inside an element.
zro::UnicodeString beginningOf(zro::ZRNode& element) {
    for (zro::ZRNode* child = element.getFirstChild(); child != nullptr;
         child = child->getNextSibling()) {
        zro::UnicodeString text = child->isText() ? child->getText().trim() : zro::UnicodeString();
        if (!text.isEmpty()) {
            return text.truncate(30) ? text + u"..." : text;
        }
    }
    return {};
}

void printOutline(zro::ZRDocument& document) {
    zro::ZRTreeIterator walk(&document, zro::ZRTreeIterator::PRE_ORDER);
    while (zro::ZRNode* node = walk.nextNode()) {
        if (!node->isElementNode()) {
            continue;
        }
        const auto indent = static_cast<std::size_t>(node->getNodeDepth()) * 2;
        std::cout << std::string(indent, ' ') << utf8(node->getNodeName().toString()) << "  "
                  << utf8(beginningOf(*node)) << "\n";
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: load_and_walk DOCUMENT\n";
        return 2;
    }
    try {
        const zro::ZRPtr<zro::ZRDocument> document = new zro::ZRDocument;
        document->load(zro::UnicodeString::fromUTF8(arguments[1]));
        printOutline(*document);
    } catch (const zro::ZRError& error) {
        std::cerr << utf8(error.getMessage()) << "\n";
        return 1;
    }
    return 0;
}
