// Without memory a change is not made, or is made whole.
#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

#include "tests/dom/Trees.h"

namespace {

int s_allocationsLeft = -1;  // below 0 for any number

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    if (s_allocationsLeft == 0) {
        throw std::bad_alloc();
    }
    s_allocationsLeft -= s_allocationsLeft > 0 ? 1 : 0;
    return std::malloc(size != 0 ? size : 1);
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace ZroCommon::testing {
namespace {

TEST(AttrNodeMap, FindsWhatItHoldsAfterAReplacementWithoutMemory) {
    const ZRName name = u"n1"_name;
    for (int allocations = 0; allocations < 4; ++allocations) {
        const Document document = newDocument();
        const ZRPtr<ZRElement> e = element(document, u"e");
        for (int i = 0; i < 30; ++i) {
            e->setAttribute(UnicodeString(u"n").append(static_cast<char16_t>(u'0' + i)),
                            ZRValue(i));
        }
        const ZRPtr<ZRAttr> attr = document->createAttribute(name);
        s_allocationsLeft = allocations;
        try {
            e->setAttributeNode(attr);
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(attr->getOwnerElement(), nullptr) << allocations;
        }
        s_allocationsLeft = -1;
        ZRAttr* held = e->getAttributeNode(name);
        ASSERT_NE(held, nullptr) << allocations;
        EXPECT_EQ(held, e->getAttributes()->item(1)) << allocations;
        EXPECT_EQ(held, e->getAttributeNodeNS(ZRName(), name)) << allocations;
    }
}

}  // namespace
}  // namespace ZroCommon::testing
