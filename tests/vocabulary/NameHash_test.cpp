#include "zro/vocabulary/internal/NameHash.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <vector>

#include "tests/support/Test.h"

namespace ZroCommon::internal {
namespace {

// Values of another implementation of SipHash-1-3, over the little-endian bytes of the text.
TEST(NameHash, IsSipHash) {
    for (const auto& [text, hash] : testing::Rows<std::u16string_view, std::uint64_t>{
             {u"a", 0x9B310FBA2C6D84D2U},
             {u"on", 0x9486EFD69E7E62F1U},
             {u"auto", 0x5E0846F9BCBF8D75U},
             {u"abcdefg", 0xE8166DC509D14C29U},
             {u"abcdefgh", 0x0CD332FEADAD186DU},
             {u"http://www.w3.org/1999/XSL/Format", 0x829A94F965DC3E86U},
         }) {
        EXPECT_EQ(sipHash(text, {0, 0}), hash) << "length " << text.size();
    }
}

TEST(NameHash, HangsOnBothHalvesOfTheKey) {
    EXPECT_NE(sipHash(u"auto", {0, 0}), sipHash(u"auto", {1, 0}));
    EXPECT_NE(sipHash(u"auto", {0, 0}), sipHash(u"auto", {0, 1}));
    EXPECT_EQ(keyedNameHash(u"auto"), keyedNameHash(u"auto"));
}

// Texts that differ in one unit only are spread over the slots of a table all the same.
TEST(NameHash, SpreadsLikeTexts) {
    constexpr std::size_t kSlots = 4096;
    std::vector<int> load(kSlots);
    std::u16string text(20, u'a');
    for (unsigned i = 0; i < kSlots; ++i) {
        text[7] = static_cast<char16_t>(i);
        ++load[keyedNameHash(text) % kSlots];
    }
    const auto empty = std::count(load.begin(), load.end(), 0);
    EXPECT_NEAR(static_cast<double>(empty), kSlots / 2.71828, kSlots * 0.05);
    EXPECT_LT(*std::max_element(load.begin(), load.end()), 14);
}

// Whatever distance numbers have that a document picks, a power of two or one that an unkeyed
// product turns into it. Few keys are bad ones, so the bound is low.
TEST(NameHash, NumbersOfAnyDistanceAreSpread) {
    constexpr unsigned kNumbers = 2048;
    for (const unsigned distance : {1U, 4096U, 65536U, 0x144CBC89U << 12U}) {
        const NameNumberHash hash;
        std::set<std::uint32_t> slots;
        for (unsigned i = 0; i < kNumbers; ++i) {
            slots.insert(hash(static_cast<ZRNameEnum>(i * distance)) % (16 * kNumbers));
        }
        EXPECT_GT(slots.size(), kNumbers / 128) << "distance " << distance;
    }
}

}  // namespace
}  // namespace ZroCommon::internal
