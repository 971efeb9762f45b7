#include <limits>

#include "tests/support/Test.h"
#include "zro/foundation/ZRCStr.h"
#include "zro/foundation/ZREmptyString.h"
#include "zro/foundation/ZRMessage.h"
#include "zro/foundation/internal/AppendNumber.h"
#include "zro/foundation/internal/SaturatingInt.h"

namespace ZroCommon::testing {
namespace {

TEST(ZREmptyString, IsEmptyAndNotBogus) {
    EXPECT_TRUE(ZREmptyString::EMPTY_VALUE.isEmpty());
    EXPECT_FALSE(ZREmptyString::EMPTY_VALUE.isBogus());
    EXPECT_TRUE(ZRBogusString::BOGUS_VALUE.isBogus());
    EXPECT_TRUE(ZRBogusString(ZRBogusString::BOGUS_VALUE).isBogus());
}

// A static object of a client, made before main.
const bool s_wasReadyEarly =
    !ZREmptyString::EMPTY_VALUE.isBogus() && ZRBogusString::BOGUS_VALUE.isBogus();

TEST(ZREmptyString, IsReadyForStaticObjects) {
    EXPECT_TRUE(s_wasReadyEarly);
}

TEST(ZRCStr, HandsOutANarrowText) {
    ZRCStr plain(text("tmp/\u00E4"));
    EXPECT_EQ(std::string(plain.c_str()), "tmp/\u00E4");
    plain = text("b");
    EXPECT_EQ(std::string(plain), "b");
    EXPECT_STREQ(ZRCStr().c_str(), "");
    const ZRUtfStr wide(text("\U0001F600"));
    EXPECT_STREQ(wide.c_str(), "\U0001F600");
    const ZRCStr& base = wide;
    EXPECT_STREQ(base.c_str(), "\U0001F600");
}

TEST(ZRMessage, PutsArgumentsIntoThePattern) {
    EXPECT_EQ(utf8(ZRMessage(u"{1} before {0}", u"a", u"b").toString()), "b before a");
    EXPECT_EQ(utf8(ZRMessage(u"'{0}' {3}", u"a", u"", u"", u"d")), "{0} d");
}

TEST(ZRMessage, APatternOutOfOrderThrowsNothing) {
    EXPECT_EQ(utf8(ZRMessage(u"{0", u"a").toString()), "");
}

TEST(AppendNumber, PrintsWithoutALocale) {
    UnicodeString all;
    internal::appendNumber(all, std::numeric_limits<std::int64_t>::min()).append(u' ');
    internal::appendNumber(all, 1'234'567);
    EXPECT_EQ(utf8(all), "-9223372036854775808 1234567");
}

TEST(SaturatingInt, StopsAtTheEndsOfTheRange) {
    constexpr int kMax = std::numeric_limits<int>::max();
    constexpr int kMin = std::numeric_limits<int>::min();
    EXPECT_EQ(internal::saturatingInt(2147483646.9), kMax - 1);
    EXPECT_EQ(internal::saturatingInt(2147483648.0), kMax);
    EXPECT_EQ(internal::saturatingInt(-2147483647.9), kMin + 1);
    EXPECT_EQ(internal::saturatingInt(-1e300), kMin);
    EXPECT_EQ(internal::saturatingInt(-0.9), 0);
    EXPECT_EQ(internal::saturatingInt(std::numeric_limits<double>::quiet_NaN()), 0);
}

}  // namespace
}  // namespace ZroCommon::testing
