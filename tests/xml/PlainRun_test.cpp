#include "zro/xml/internal/PlainRun.h"

#include <random>

#include "tests/support/Test.h"
#include "zro/foundation/Text.h"

namespace ZroCommon::internal {
namespace {

std::u16string randomText(std::mt19937& random, std::size_t length) {
    constexpr char16_t kRare[] = {u'&', u'<', u'>',   u'"',   u'\'', 0x7F,
                                  0x80, 0xFF, 0x3042, 0xFFFF, 0};
    std::u16string text;
    while (text.size() < length) {
        const bool isRare = random() % 24 == 0;
        text += isRare ? kRare[random() % std::size(kRare)]
                       : static_cast<char16_t>(u' ' + random() % 64);
    }
    return text;
}

template <Escape kEscape>
void expectTwinsAgreeIn(const std::u16string& text) {
    std::string vector(text.size(), '?');
    std::string plain(text.size(), '?');
    const std::size_t length = copyPlainRun<kEscape>(text.data(), text.size(), vector.data());
    ASSERT_EQ(length, scalar::copyPlainRun<kEscape>(text.data(), text.size(), plain.data()));
    ASSERT_EQ(vector.substr(0, length), plain.substr(0, length));
    ASSERT_TRUE(length == text.size() || !isPlain<kEscape>(text[length]));
}

void expectTwinsAgree(const std::u16string& text) {
    expectTwinsAgreeIn<Escape::None>(text);
    expectTwinsAgreeIn<Escape::Text>(text);
    expectTwinsAgreeIn<Escape::Attribute>(text);
}

TEST(PlainRun, TheVectorFormAgreesWithItsScalarTwin) {
    std::mt19937 random(7);  // NOLINT(cert-msc51-cpp): the same on every run
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        std::u16string text(11, u'a');
        text[9] = text[3] = static_cast<char16_t>(unit);
        expectTwinsAgree(text);
        expectTwinsAgree(unit % 16 == 0 ? randomText(random, random() % 40) : u"");
        ASSERT_FALSE(::testing::Test::HasFatalFailure()) << "at unit " << unit;
    }
}

// Against ICU; where there are no vector registers, nothing is written here.
TEST(PlainRun, WritesRunsOfThreeBytesUpToAnyOtherUnit) {
    constexpr char16_t kUnits[] = {0x800, 0xFFF, 0x1000, 0x3042, 0xD7FF, 0xE000, 0xFFFF};
    for (const char16_t stop : {u'a', u'\u0080', u'\u07FF', char16_t{0xD800}, char16_t{0xDFFF}}) {
        for (std::size_t at = 0; at < 40; ++at) {
            std::u16string text;
            while (text.size() < 40) {
                text += text.size() == at ? stop : kUnits[text.size() % std::size(kUnits)];
            }
            std::string bytes(100, '?');  // too few for all
            const std::size_t run = copyThreeByteRun(text.data(), text.size(), bytes.data(), 98);
            ASSERT_TRUE(run <= at && run * 3 <= 98) << "stop at " << at;
            std::string expected;
            UnicodeString(text.data(), static_cast<int32_t>(run)).toUTF8String(expected);
            EXPECT_EQ(bytes.substr(0, 3 * run), expected) << "stop at " << at;
            EXPECT_EQ(bytes.substr(98), "??") << "stop at " << at;
        }
    }
}

}  // namespace
}  // namespace ZroCommon::internal
