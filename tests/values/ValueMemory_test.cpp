// Values that are numbers, names or plain colours take no memory of their own, from the text to
// the text.

#include <new>
#include <string>

#include "tests/support/Memory.h"
#include "tests/support/Test.h"
#include "zro/foundation/ZREmptyString.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon::testing {
namespace {

// What a text costs as a value, in copies, comparisons and as a text again.
long allocationsOf(const UnicodeString& source, ZRValue (*read)(const UnicodeString&)) {
    const long before = allocations();
    const ZRValue value = read(source);
    ZRValue copy(value);
    ZRValue other(1);
    other = copy;
    copy.normalizeUnit();
    const bool isItself = value == other && !(other < value);
    const bool hasText = !copy.toString().isEmpty();
    const long taken = allocations() - before;
    EXPECT_TRUE(isItself && hasText) << utf8(source);
    return taken;
}

ZRValue readColor(const UnicodeString& source) {
    return ZRValue::parseColor(source, true);
}

TEST(ValueMemory, NumbersNamesAndPlainColorsTakeNone) {
    lendTextsMemory();
    ZRName(UnicodeString(u"no-builtin-name"));  // takes its place in the table of names
    for (const char* source : {"0", "-12", "12.375pt", "3000000000", "50%", "-.5em", "auto",
                               "no-builtin-name", "#F00", "#FF0000"}) {
        EXPECT_EQ(allocationsOf(text(source), ZRValue::parse), 0) << source;
    }
    for (const char* source : {"red", "#F00", "rgb(1,2,3)", "rgb( 50% 0 , 7.5 )"}) {
        EXPECT_EQ(allocationsOf(text(source), readColor), 0) << source;
    }
    EXPECT_GE(allocationsOf(u"'a string and the memory for its units'", ZRValue::parse), 2)
        << "what takes memory is counted";
}

// Without an object for the text, and with one but no room for its units.
TEST(ValueMemory, TextsThatGetNoneAreNeitherLostNorNull) {
    const std::u16string units(100, u'x');
    const UnicodeString lent(false, units.data(), 100);  // a copy needs room of its own
    const ZRValue value(lent);
    const UnicodeString literal = u"'" + lent + u"'";
    for (const std::size_t largest : {std::size_t{0}, sizeof(UnicodeString)}) {
        lendTextsMemory(largest);
        EXPECT_THROW(ZRValue{lent}, std::bad_alloc);
        EXPECT_THROW(ZRName{lent}, std::bad_alloc);
        EXPECT_THROW(ZRValue::parse(literal), std::bad_alloc);
    }
    lendTextsMemory(0);
    EXPECT_THROW(ZRValue{value}, std::bad_alloc);
    lendTextsMemory();
    EXPECT_EQ(ZRName(lent).toString(), lent);
    EXPECT_TRUE(ZRValue(ZRBogusString::BOGUS_VALUE).isEmpty()) << "a text without a value is one";
}

}  // namespace
}  // namespace ZroCommon::testing
