// Without memory a change is not made, or is made whole.
#include <new>

#include <gtest/gtest.h>

#include "tests/dom/Trees.h"
#include "tests/support/Memory.h"

namespace ZroCommon::testing {
namespace {

TEST(AttrNodeMap, FindsWhatItHoldsAfterAReplacementWithoutMemory) {
    const ZRName name = u"n1"_name;
    for (int news = 0; news < 4; ++news) {
        const Document document = newDocument();
        const ZRPtr<ZRElement> e = element(document, u"e");
        for (int i = 0; i < 30; ++i) {
            e->setAttribute(UnicodeString(u"n").append(static_cast<char16_t>(u'0' + i)),
                            ZRValue(i));
        }
        const ZRPtr<ZRAttr> attr = document->createAttribute(name);
        letNewsSucceed(news);
        try {
            e->setAttributeNode(attr);
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(attr->getOwnerElement(), nullptr) << news;
        }
        letNewsSucceed(-1);
        ZRAttr* held = e->getAttributeNode(name);
        ASSERT_NE(held, nullptr) << news;
        EXPECT_EQ(held, e->getAttributes()->item(1)) << news;
        EXPECT_EQ(held, e->getAttributeNodeNS(ZRName(), name)) << news;
    }
}

}  // namespace
}  // namespace ZroCommon::testing
