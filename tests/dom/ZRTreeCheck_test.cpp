#include "zro/dom/ZRTreeCheck.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "tests/dom/Trees.h"

namespace ZroCommon::testing {
namespace {

/// A chain of elements, each under the one before, with the first put under one of them.
struct Ring {
    Ring(std::size_t length, std::size_t bottom) {
        for (std::size_t i = 0; i < length; ++i) {
            chain.push_back(element(document, u"e"));
            if (i != 0) {
                chain[i - 1]->appendChild(chain[i]);
            }
        }
        chain[bottom]->appendChild(chain[0]);
    }
    ~Ring() { chain[0]->removeAllChildNodes(); }  // a ring is released by nobody else
    Ring(const Ring&) = delete;
    Ring& operator=(const Ring&) = delete;

    Document document = newDocument();
    std::vector<ZRPtr<ZRElement>> chain;
};

TEST(ZRTreeCheck, WhatTreesHaveIsNoCycle) {
    const SmallTree tree;
    for (const ZRNode* node : std::initializer_list<const ZRNode*>{nullptr, tree.t, tree.r}) {
        EXPECT_EQ(ZRTreeCheck::findCycle(node), nullptr);
    }
}

TEST(ZRTreeCheck, FindsWhereTheWayUpEntersACycle) {
    for (const std::size_t length : {2U, 3U, 7U, 40U}) {
        for (std::size_t bottom = 0; bottom < length; ++bottom) {
            const Ring ring(length, bottom);
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
    const SmallTree tree;
    const auto misuse = [&](auto edit) {
        ZRTreeCheck::setAssertions(true);
        tree.r->appendChild(tree.b);  // a move that is none
        tree.a->appendChild(tree.b);
        edit();
    };
    EXPECT_DEATH(misuse([&] { tree.b->appendChild(tree.a); }), "findCycle");
    EXPECT_DEATH(
        misuse([&] { tree.b->insertBefore(tree.a, addElement(tree.document, tree.b, u"c")); }),
        "findCycle");
    EXPECT_DEATH(
        misuse([&] { tree.b->replaceChild(tree.a, addElement(tree.document, tree.b, u"c")); }),
        "findCycle");
}
#endif

}  // namespace
}  // namespace ZroCommon::testing
