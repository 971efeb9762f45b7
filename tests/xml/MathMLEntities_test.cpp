#include "zro/xml/internal/MathMLEntities.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "tests/support/Test.h"
#include "tests/support/Threads.h"
#include "zro/foundation/ZREmptyString.h"
#include "zro/vocabulary/ZRNameTable.h"
#include "zro/xml/ZRXmlParser.h"

namespace ZroCommon::internal {
namespace {

UnicodeString entity(const char16_t* name) {
    return mathMLEntity(ZRName(UnicodeString(name)));
}

TEST(MathMLEntities, KnowsThePublishedSet) {
    const testing::Rows<const char16_t*, const char16_t*> cases = {
        {u"block", u"\u2588"}, {u"alpha", u"\u03B1"},   {u"ThickSpace", u"\u2009\u200A\u200A"},
        {u"NewLine", u"\n"},   {u"zigrarr", u"\u21DD"}, {u"plus", u"+"},
        {u"amp", u"&"},        {u"lt", u"<"},           {u"quot", u"\""}};
    for (const auto& [name, value] : cases) {
        EXPECT_EQ(entity(name), UnicodeString(value)) << "for: " << testing::utf8(name);
    }
    EXPECT_EQ(mathMLEntities().size(), 2086U);
    EXPECT_EQ(&ZRXmlParser::getMathMLEntity(ZRName(u"alpha")), &mathMLEntity(ZRName(u"alpha")));
}

// On purpose: nothing expands these texts, so they reach the document as they are.
TEST(MathMLEntities, PlaneOneAlphabetsAndNvltStayUnexpanded) {
    EXPECT_EQ(entity(u"Afr"), UnicodeString(u"%plane1D;504;"));
    EXPECT_EQ(entity(u"zscr"), UnicodeString(u"%plane1D;4CF;"));
    EXPECT_EQ(entity(u"nvlt"), UnicodeString(u"&#x0003C;\u20D2"));
    EXPECT_EQ(entity(u"nvgt"), UnicodeString(u">\u20D2"));
    const auto all = mathMLEntities();
    EXPECT_EQ(std::count_if(all.begin(), all.end(),
                            [](const auto& each) { return each.value.startsWith(u"%plane1D;"); }),
              133);
}

TEST(MathMLEntities, OtherNamesHaveTheEmptyText) {
    EXPECT_EQ(&mathMLEntity(ZRN_EMPTY), &ZREmptyString::EMPTY_VALUE);
    EXPECT_EQ(&mathMLEntity(ZRN_block_container), &ZREmptyString::EMPTY_VALUE);
    EXPECT_TRUE(mathMLEntity(ZRName(u"no-such-entity")).isEmpty());
}

TEST(MathMLEntities, AnyThreadMayBeTheFirstToAsk) {
    std::array<const UnicodeString*, 4> found{};
    testing::inThreads(static_cast<int>(found.size()), [&found](int thread) {
        found[static_cast<std::size_t>(thread)] = &mathMLEntity(ZRName(u"alpha"));
    });
    for (const UnicodeString* value : found) {
        EXPECT_EQ(value, found[0]);
        EXPECT_EQ(*value, UnicodeString(u"\u03B1"));
    }
}

TEST(MathMLEntities, TheirNumbersOutliveOtherHoldersOfTheNameTable) {
    const ZRName alpha(u"alpha");
    const UnicodeString* value = &mathMLEntity(alpha);
    ZRNameTable::addRefSharedNameTable();
    ZRNameTable::releaseSharedNameTable();
    EXPECT_EQ(ZRName(u"alpha"), alpha);
    EXPECT_EQ(&mathMLEntity(alpha), value);
}

}  // namespace
}  // namespace ZroCommon::internal
