#include "zro/vocabulary/ZRName.h"

#include <type_traits>
#include <utility>

#include "tests/support/Test.h"
#include "zro/foundation/internal/AppendNumber.h"
#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon::testing {
namespace {

static_assert(std::is_trivially_copyable_v<ZRName> && sizeof(ZRName) == 4);

// The text that `generateID` is to make now.
std::string nextId(const char* prefix) {
    UnicodeString text(prefix);
    internal::appendNumber(text, ZRNameTable::getSharedNameTable()->getNameLast() + 1);
    return utf8(text);
}

TEST(ZRName, TheEmptyNameIsBuiltinNumberZero) {
    const ZRName name{UnicodeString()};
    EXPECT_EQ(name, ZRN_EMPTY);
    EXPECT_EQ(name, ZRName());
    EXPECT_TRUE(name.isEmpty());
    EXPECT_TRUE(name.isBuiltin());
    EXPECT_EQ(utf8(name.toString()), "");
}

TEST(ZRName, BuiltinNamesHaveFixedNumbers) {
    const Rows<const char16_t*, int> cases = {
        {u"ANSI_X3.4", 1},  {u"#CMYK", 179}, {u"#RGB", 182}, {u"#SEPARATION", 183},
        {u"fit", 611},      {u"fitv", 617},  {u"xyz", 1562}, {u"xyz-top", 1565},
        {u"zoom", 1582},    {u"above", 188}, {u"yav", 257},  {u"azimuth", 258},
        {u"ISO-8859-1", 82}};
    for (const auto& [text, number] : cases) {
        EXPECT_EQ(int{ZRName(text)}, number) << utf8(text);
        EXPECT_TRUE(ZRName(text).isBuiltin());
    }
    EXPECT_EQ(int{ZRName(u"field-muiltiline")}, 588);
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
    for (const auto& [prefix, start] : {std::pair(u"", "N-"), std::pair(u"x", "x-")}) {
        const std::string expected = nextId(start);
        EXPECT_EQ(utf8(ZRName::generateID(prefix).toString()), expected);
    }
}

// On purpose: nobody looks whether the text is new.
TEST(ZRName, AGeneratedIdMayExistAlready) {
    const int last = ZRNameTable::getSharedNameTable()->getNameLast();
    UnicodeString taken(u"dup-");
    internal::appendNumber(taken, last + 2);
    const ZRName existing(taken);
    EXPECT_EQ(ZRName::generateID(u"dup"), existing);
}

}  // namespace
}  // namespace ZroCommon::testing
