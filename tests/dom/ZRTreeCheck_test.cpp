#include "zro/dom/ZRTreeCheck.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "tests/dom/Trees.h"

namespace ZroCommon::testing {
namespace {

/// A chain of elements, each under the one before, with the first put under one of them.
class Ring {
public:
    Ring(std::size_t length, std::size_t top, std::size_t bottom) {
        for (std::size_t i = 0; i < length; ++i) {
            chain.push_back(element(m_document, u"e"));
            if (i != 0) {
                chain[i - 1]->appendChild(chain[i]);
            }
        }
        chain[bottom]->appendChild(chain[top]);
    }
    ~Ring() {  // a ring is released by nobody else
        for (const auto& node : chain) {
            node->removeAllChildNodes();
        }
    }
    Ring(const Ring&) = delete;
    Ring& operator=(const Ring&) = delete;

private:
    Document m_document = newDocument();

public:
    std::vector<ZRPtr<ZRElement>> chain;
};

TEST(ZRTreeCheck, WhatTreesHaveIsNoCycle) {
    const Document document = newDocument();
    ZRElement* root = addElement(document, document, u"r");
    ZRElement* below = addElement(document, root, u"a");
    for (const ZRNode* node :
         {static_cast<const ZRNode*>(nullptr), static_cast<const ZRNode*>(root),
          static_cast<const ZRNode*>(below)}) {
        EXPECT_EQ(ZRTreeCheck::findCycle(node), nullptr);
    }
}

TEST(ZRTreeCheck, FindsWhereTheWayUpEntersACycle) {
    for (const std::size_t length : {2U, 3U, 7U, 40U}) {
        for (std::size_t bottom = 0; bottom < length; ++bottom) {
            const Ring ring(length, 0, bottom);
            for (std::size_t i = 0; i < length; ++i) {
                EXPECT_EQ(ZRTreeCheck::findCycle(ring.chain[i].get()),
                          ring.chain[std::min(i, bottom)].get())
                    << length << " elements, from " << i << ", bottom " << bottom;
            }
        }
    }
}

#ifndef NDEBUG
TEST(ZRTreeCheckDeathTest, AssertionsEndTheProgramAtTheEditThatMakesACycle) {
    const Document document = newDocument();
    ZRElement* root = addElement(document, document, u"r");
    ZRElement* a = addElement(document, root, u"a");
    ZRElement* b = addElement(document, a, u"b");
    const auto misuse = [&](auto edit) {
        ZRTreeCheck::setAssertions(true);
        root->appendChild(b);  // a move that is none
        a->appendChild(b);
        edit();
    };
    EXPECT_DEATH(misuse([&] { b->appendChild(a); }), "findCycle");
    EXPECT_DEATH(misuse([&] { b->insertBefore(a, addElement(document, b, u"c")); }), "findCycle");
    EXPECT_DEATH(misuse([&] { b->replaceChild(a, addElement(document, b, u"c")); }), "findCycle");
}
#endif

}  // namespace
}  // namespace ZroCommon::testing
