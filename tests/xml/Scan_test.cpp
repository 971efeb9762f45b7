#include "zro/xml/internal/Scan.h"

#include <random>

#include "tests/support/Test.h"

namespace ZroCommon::internal {
namespace {

// A text of any length around a step, over the characters that matter and their neighbours.
std::u16string randomText(std::mt19937& random) {
    static constexpr std::u16string_view kUnits =
        u"abzAZ09_-.:/;@[`{^,\n\r\t <&>'\"]\u0080\u00E9\u2028\uFFFF\xD83D\xDE00\u0161\uFF0D\u012E";
    std::u16string text(random() % 41, u'a');
    for (char16_t& unit : text) {
        if (random() % 7 == 0) {
            unit = kUnits[random() % kUnits.size()];
        }
    }
    return text;
}

TEST(Scan, VectorAndScalarFormsAgree) {
    std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same on every run
    LineCount fast{3, 7};
    LineCount slow{3, 7};
    for (int round = 0; round < 20000; ++round) {
        const std::u16string text = randomText(random);
        const char16_t* at = text.data();
        const char16_t* end = at + text.size();
        ASSERT_EQ((findAny<u'<', u'&', u']', 0xFFFF>(at, end)),
                  (scalar::findAny<u'<', u'&', u']', 0xFFFF>(at, end)));
        ASSERT_EQ((findAnyOr<u'&', u'\n'>(at, end, u'"')),
                  (scalar::findAnyOr<u'&', u'\n'>(at, end, u'"')));
        ASSERT_EQ(findQNameEnd(at, end), scalar::findQNameEnd(at, end));
        countLines(at, end, fast);
        scalar::countLines(at, end, slow);
        ASSERT_EQ(fast.lines, slow.lines);
        ASSERT_EQ(fast.characters, slow.characters);
    }
}

TEST(Scan, LongTextsAreCountedToTheEnd) {
    std::u16string text(300'000, u'\n');
    text.append(300'000, u'\xD83D');
    for (const std::size_t start : {0U, 1U, 299'999U, 300'000U, 300'003U}) {
        LineCount count;
        countLines(text.data() + start, text.data() + text.size(), count);
        EXPECT_EQ(count.lines, start < 300'000 ? 300'000 - start : 0);
        EXPECT_EQ(count.characters, 0U);
    }
}

TEST(Scan, VectorAndScalarComparisonsAgree) {
    std::u16string text = u"an attribute's name of some length";
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const std::u16string same = text.substr(0, length);
        ASSERT_TRUE(isSameText(text.data(), same.data(), length));
        for (std::size_t at = 0; at < length; ++at) {
            std::u16string other = same;
            other[at] ^= 0x100;
            ASSERT_FALSE(isSameText(text.data(), other.data(), length)) << at << " of " << length;
        }
    }
}

TEST(Scan, EveryUnitIsClassedAlikeInEveryLane) {
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        std::u16string text(8, u'a');
        text[unit % 8] = static_cast<char16_t>(unit);
        ASSERT_EQ(findQNameEnd(text.data(), text.data() + 8),
                  scalar::findQNameEnd(text.data(), text.data() + 8))
            << unit;
    }
}

}  // namespace
}  // namespace ZroCommon::internal
