#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tests/dom/Trees.h"

namespace ZroCommon::testing {
namespace {

ZRName numbered(const char16_t* stem, std::size_t number) {
    UnicodeString text(stem);
    return text.append(static_cast<char16_t>(u'A' + number));
}

/// The first attribute in the order of the map that fits, as a walk finds it.
template <class Fits>
ZRNode* firstOf(ZRNamedNodeMap& map, Fits fits) {
    ZRNode* node = map.getFirstNode();
    while (node != nullptr && !fits(*node)) {
        node = map.getNextNode(node);
    }
    return node;
}

void expectSearchesLikeAWalk(ZRNamedNodeMap& map, std::size_t names) {
    int place = 0;
    for (ZRNode* node = map.getFirstNode(); node != nullptr; node = map.getNextNode(node)) {
        EXPECT_EQ(map.item(place++), node);
    }
    EXPECT_EQ(map.getLength(), place);
    for (std::size_t i = 0; i < names; ++i) {
        const ZRName local = numbered(u"n", i);
        EXPECT_EQ(map.getNamedItem(local),
                  firstOf(map, [&](ZRNode& node) { return node.getLocalName() == local; }));
        const ZRName uri = numbered(u"u", i % 3);
        EXPECT_EQ(map.getNamedItemNS(uri, local), firstOf(map, [&](ZRNode& node) {
                      return node.getLocalName() == local && node.getNamespaceUri() == uri;
                  }));
    }
}

// Every other 300 steps attributes only go, so that large maps become small and large again.
TEST(AttrNodeMap, LargeMapsAnswerLikeAWalk) {
    constexpr std::size_t kNames = 24;
    std::mt19937 random(7);
    const Document document = newDocument();
    const ZRPtr<ZRElement> e = element(document, u"e");
    ZRNamedNodeMap& map = *e->getAttributes();
    std::vector<ZRPtr<ZRAttr>> removed;
    for (int step = 0; step < 3300; ++step) {
        const ZRName local = numbered(u"n", random() % kNames);
        const ZRName uri = numbered(u"u", random() % 3);
        const ZRPtr<ZRAttr> attr = document->createAttributeNS(uri, ZRName(), local);
        switch (step / 300 % 2 == 0 ? random() % 6 : 4) {
        case 0:
        case 1: e->setAttributeEx(uri, ZRName(), local, u"1"); break;
        case 2: map.setNamedItem(attr); break;
        case 3: map.setNamedItemNS(attr); break;
        case 4: map.removeNamedItemNS(uri, local); break;
        default:  // a node of the map once more, as one that may take another's place
            if (ZRNode* node = map.item(static_cast<int>(random() % kNames))) {
                map.setNamedItem(node);
            }
        }
        if (step % 50 == 0) {
            expectSearchesLikeAWalk(map, kNames);
        }
    }
    EXPECT_GT(map.getLength(), 16);
}

}  // namespace
}  // namespace ZroCommon::testing
