#include "zro/xml/internal/MathMLEntities.h"

#include <algorithm>

#include "tests/support/Test.h"
#include "tests/support/Threads.h"
#include "zro/foundation/ZREmptyString.h"
#include "zro/xml/ZRXmlParser.h"

namespace ZroCommon::internal {
namespace {

std::string entity(const std::string& name) {
    return testing::utf8(mathMLEntity(ZRName(testing::text(name))));
}

TEST(MathMLEntities, KnowsThePublishedSet) {
    testing::expectTexts(entity, {"block -> \u2588", "ThickSpace -> \u2009\u200A\u200A",
                                  "NewLine -> \n", "zigrarr -> \u21DD", "plus -> +", "amp -> &",
                                  "lt -> <", "quot -> \"", "no-such-entity -> "});
    EXPECT_EQ(mathMLEntities().size(), 2086U);
    EXPECT_EQ(&mathMLEntity(ZRN_block_container), &ZREmptyString::EMPTY_VALUE);
}

// On purpose: nothing expands these texts, so they reach the document as they are.
TEST(MathMLEntities, PlaneOneAlphabetsAndNvltStayUnexpanded) {
    testing::expectTexts(entity, {"Afr -> %plane1D;504;", "zscr -> %plane1D;4CF;",
                                  "nvlt -> &#x0003C;\u20D2", "nvgt -> >\u20D2"});
    const auto all = mathMLEntities();
    EXPECT_EQ(std::count_if(all.begin(), all.end(),
                            [](const auto& each) { return each.value.startsWith(u"%plane1D;"); }),
              133);
}

TEST(MathMLEntities, AnyThreadMayBeTheFirstToAsk) {
    const UnicodeString* found[4] = {};
    testing::inThreads(4, [&](int i) { found[i] = &mathMLEntity(ZRName(u"alpha")); });
    for (const UnicodeString* value : found) {
        EXPECT_EQ(value, &ZRXmlParser::getMathMLEntity(ZRName(u"alpha")));
        EXPECT_EQ(*value, UnicodeString(u"\u03B1"));
    }
}

}  // namespace
}  // namespace ZroCommon::internal
