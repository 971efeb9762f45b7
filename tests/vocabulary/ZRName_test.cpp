#include "zro/vocabulary/ZRName.h"

#include <type_traits>

#include "tests/support/Test.h"
#include "zro/foundation/internal/AppendNumber.h"
#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon::testing {
namespace {

static_assert(std::is_trivially_copyable_v<ZRName> && sizeof(ZRName) == 4);

// An id with the number that comes so many after the last one of the shared table.
UnicodeString idAfterLast(const char16_t* prefix, int count) {
    UnicodeString id(prefix);
    return internal::appendNumber(id, ZRNameTable::getSharedNameTable()->getNameLast() + count);
}

TEST(ZRName, BuiltinNamesHaveFixedNumbers) {
    const Rows<const char16_t*, int> cases = {{u"", 0},
                                              {u"ANSI_X3.4", 1},
                                              {u"#CMYK", 179},
                                              {u"#RGB", 182},
                                              {u"fit", 611},
                                              {u"fitv", 617},
                                              {u"xyz", 1562},
                                              {u"xyz-top", 1565},
                                              {u"zoom", 1582},
                                              {u"above", 188},
                                              {u"yav", 257},
                                              {u"azimuth", 258},
                                              {u"#SEPARATION", 183},
                                              {u"ISO-8859-1", 82},
                                              {u"field-muiltiline", 588}};
    for (const auto& [text, number] : cases) {
        const ZRName name(text);
        EXPECT_EQ(int{name}, number) << utf8(text);
        EXPECT_TRUE(name.isBuiltin() && name.isEmpty() == (number == 0)) << utf8(text);
        EXPECT_EQ(utf8(name.toString()), utf8(text));
    }
    EXPECT_EQ(ZRName(), ZRN_EMPTY);
}

TEST(ZRName, TextsAreExact) {
    EXPECT_NE(ZRName(u"Auto"), ZRN_auto);
    EXPECT_NE(ZRName(u"auto "), ZRN_auto);
    EXPECT_EQ(ZRName(u"Auto"), ZRName(u"Auto"));
    const UnicodeString withNul(u"a\0b", 3);
    EXPECT_EQ(ZRName(withNul).toString(), withNul);
    EXPECT_NE(ZRName(withNul), ZRName(u"a"));
}

TEST(ZRName, NumbersAreNotChecked) {
    for (const int number : {-1, 0x7FFFFFFF}) {
        const ZRName name(static_cast<ZRNameEnum>(number));
        EXPECT_EQ(int{name}, number);
        EXPECT_EQ(utf8(name.toString()), "");
        EXPECT_FALSE(name.isBuiltin());
    }
}

TEST(ZRName, GeneratesIdsFromTheNextNumber) {
    const UnicodeString plain = idAfterLast(u"N-", 1);
    EXPECT_EQ(ZRName::generateID(u"").toString(), plain);
    const UnicodeString prefixed = idAfterLast(u"x-", 1);
    EXPECT_EQ(ZRName::generateID(u"x").toString(), prefixed);
}

// On purpose: nobody looks whether the text is new.
TEST(ZRName, AGeneratedIdMayExistAlready) {
    const ZRName existing(idAfterLast(u"dup-", 2));
    EXPECT_EQ(ZRName::generateID(u"dup"), existing);
}

}  // namespace
}  // namespace ZroCommon::testing
