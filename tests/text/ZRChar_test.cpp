#include "zro/text/ZRChar.h"

#include <cstdio>
#include <limits>
#include <vector>

#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

using Predicate = bool (*)(int);

constexpr Predicate kIsWhitespace = &ZRChar::isWhitespace;
constexpr Predicate kIsZenkaku = &ZRChar::isZenkaku;
constexpr Predicate kIsHankaku = &ZRChar::isHankaku;
constexpr Predicate kIsPunct = &ZRChar::isPunct;

// The code points of [first, last] for which the predicate holds, as ranges: "20 30-39".
std::string members(Predicate holds, int first, int last) {
    std::string all;
    for (int c = first; c <= last; ++c) {
        if (!holds(c)) {
            continue;
        }
        const int start = c;
        while (c < last && holds(c + 1)) {
            ++c;
        }
        char range[32];
        std::snprintf(range, sizeof range, start == c ? "%X" : "%X-%X", start, c);
        all += (all.empty() ? "" : " ") + std::string(range);
    }
    return all;
}

TEST(ZRChar, FixedRangesHoldWhatTheyHold) {
    for (const auto& [name, holds, last, expected] : Rows<const char*, Predicate, int, const char*>{
             {"isHardBreak", ZRChar::isHardBreak, 0x10FFFF, "A C 2028-2029"},
             {"isAsciiNoHardBreak", ZRChar::isAsciiNoHardBreak, 0x10FFFF, "0-9 B D-7E A0"},
             {"isValidChar", ZRChar::isValidChar, 0x110010, "9-A D 20-D7FF E000-FFFD 10000-10FFFF"},
             {"isWhitespace", kIsWhitespace, 0x10FFFF, "9-A D 20"},
             {"isCssWhitespace", ZRChar::isCssWhitespace, 0x10FFFF, "9-A C-D 20"},
             {"isAsciiLetter", ZRChar::isAsciiLetter, 0x10FFFF, "41-5A 61-7A"},
             {"isHexDigit", ZRChar::isHexDigit, 0x10FFFF, "30-39 41-46 61-66"},
             {"isNCNameStartChar", ZRChar::isNCNameStartChar, 0x110010,
              "41-5A 5F 61-7A C0-2FF 370-37D 37F-1FFF 200C-200D 2070-218F 2C00-2FEF 3001-D7FF "
              "F900-EFFFF"},
             {"isNCNameChar", ZRChar::isNCNameChar, 0x110010,
              "2D-2E 30-39 41-5A 5F 61-7A B7 C0-37D 37F-1FFF 200C-200D 203F-2040 2070-218F "
              "2C00-2FEF "
              "3001-D7FF F900-EFFFF"},
             {"isNameChar", ZRChar::isNameChar, 0x7F, "2D-2E 30-3A 41-5A 5F 61-7A"},
             {"isNameStartChar", ZRChar::isNameStartChar, 0x7F, "3A 41-5A 5F 61-7A"},
             {"isBullet", ZRChar::isBullet, 0x10FFFF,
              "2022-2023 2043 204C-204D 2219 25D8 25E6 2619 2765 2767 29BE-29BF"},
             {"isHangingPunctuationEndChar", ZRChar::isHangingPunctuationEndChar, 0x10FFFF,
              "3001-3002 FF0C FF0E"},
             {"isHankakuChar", ZRChar::isHankakuChar, 0x10FFFF, "0-7F FF61-FF9F"},
             {"isVariationSelectorCharacter", ZRChar::isVariationSelectorCharacter, 0x10FFFF,
              "E0100-E01EF"},
         }) {
        EXPECT_EQ(members(holds, 0, last), expected) << name;
    }
}

TEST(ZRChar, LongTablesHaveTheRightSize) {
    const auto count = [](Predicate holds) {
        int members = 0;
        for (int c = 0; c <= 0xFFFF; ++c) {
            members += holds(c) ? 1 : 0;
        }
        return members;
    };
    EXPECT_EQ(count(ZRChar::isHalf), 0x100 + 28);
    EXPECT_EQ(count(ZRChar::isNonStarterJIS), 56);
    EXPECT_EQ(count(ZRChar::isSymbolJIS), 118);
}

TEST(ZRChar, TellsMembersFromOthers) {
    for (const auto& [name, holds, members, others] :
         Rows<const char*, Predicate, std::vector<int>, std::vector<int>>{
             {"isHalf", ZRChar::isHalf, {0x2122}, {0x201B}},
             {"isNonStarterJIS", ZRChar::isNonStarterJIS, {0xFF70}, {0x3042}},
             {"isSymbolJIS", ZRChar::isSymbolJIS, {0x2169}, {0x266E}},
             {"isZenkaku", kIsZenkaku, {0x3042, 0xFF21}, {0xA7, -1}},
             {"isHankaku", kIsHankaku, {0xFF71}, {'a'}},
             {"isOpenParenEtc", ZRChar::isOpenParenEtc, {'(', 0x2018}, {')'}},
             {"isCloseParenEtc", ZRChar::isCloseParenEtc, {'}', 0x300D, 0x2019}, {'('}},
             {"isHalfPunct", ZRChar::isHalfPunct, {0x30FB}, {'.'}},
             // The soft hyphen is no control code.
             {"isZeroWidthControlCode",
              ZRChar::isZeroWidthControlCode,
              {'\n', 0x2028},
              {0xAD, ' ', 'a'}},
             {"isLetter", ZRChar::isLetter, {0x3042}, {'1', -1}},
             {"isSymbol", ZRChar::isSymbol, {'+'}, {-1}},
             {"isPunct", kIsPunct, {'-'}, {-1}},
             {"isAlphabetic", ZRChar::isAlphabetic, {0x2160}, {}},
             {"isNCNameChar", ZRChar::isNCNameChar, {}, {-1}},
             {"isHexDigit", ZRChar::isHexDigit, {}, {-1}},
             {"isWhitespace", kIsWhitespace, {}, {-1}},
             {"isBullet", ZRChar::isBullet, {}, {-1}}}) {
        for (const int c : members) {
            EXPECT_TRUE(holds(c)) << name << ' ' << std::hex << c;
        }
        for (const int c : others) {
            EXPECT_FALSE(holds(c)) << name << ' ' << std::hex << c;
            EXPECT_FALSE(holds(c < 0 ? std::numeric_limits<int>::min() : c)) << name;
            EXPECT_FALSE(holds(c < 0 ? std::numeric_limits<int>::max() : c)) << name;
        }
    }
    EXPECT_TRUE(ZRChar::isZenkakuAmbiguous(ZRChar::getEastAsianWidth(0xA7)));
    EXPECT_FALSE(ZRChar::isZenkakuAmbiguous(ZRChar::getEastAsianWidth('a')));
    EXPECT_EQ(ZRChar::getCategory('a'), U_LOWERCASE_LETTER);
    EXPECT_EQ(ZRChar::getLineBreak(0x3002), U_LB_CLOSE_PUNCTUATION);
}

TEST(ZRChar, ReadsTheLastCharacter) {
    EXPECT_EQ(ZRChar::last(text("")), u'\uFFFF');
    EXPECT_EQ(ZRChar::last(text("a\U0001F600")), u'\xDE00');
    EXPECT_EQ(ZRChar::last32(text("a\U0001F600")), 0x1F600);
    EXPECT_EQ(ZRChar::last32(text("")), 0xFFFF);
}

TEST(ZRChar, TellsWhiteSpaceTextFromEmptyText) {
    EXPECT_TRUE(ZRChar::isWhitespace(text(" \t\r\n")));
    EXPECT_FALSE(ZRChar::isWhitespace(text(" \f")) || ZRChar::isWhitespace(text("")));
    EXPECT_TRUE(ZRChar::isEmptyOrWhitespace(text("")));
    EXPECT_FALSE(ZRChar::isEmptyOrWhitespace(text(" x")));
}

// On purpose: what is no digit gets a number as well.
TEST(ZRChar, HexadecimalDigitsAreNotChecked) {
    const Rows<int, int> cases = {
        {'9', 9}, {'a', 10}, {'F', 15}, {'g', 16}, {std::numeric_limits<int>::min(), 25}};
    expectRows(ZRChar::hex2dig, cases);
}

TEST(ZRChar, WidensVisibleAsciiOnly) {
    const Rows<char16_t, char16_t> cases = {
        {u'!', u'\uFF01'}, {u'~', u'\uFF5E'}, {u' ', u' '}, {u'\x7F', u'\x7F'}};
    expectRows([](char16_t c) { return ZRChar::toZenkaku(c); }, cases);
}

TEST(ZRChar, KeepsDoubledDashesTogether) {
    EXPECT_TRUE(ZRChar::isNonSeparateChars(0x2014, 0x2014));
    EXPECT_FALSE(ZRChar::isNonSeparateChars(0x2014, 0x2015));
    EXPECT_TRUE(ZRChar::isNonSeparateChars(0x3034, 0x3035));
    EXPECT_FALSE(ZRChar::isNonSeparateChars(0x3035, 0x3034));
    EXPECT_FALSE(ZRChar::isNonSeparateChars('a', 'a'));
}

// On purpose: U+0029 and U+005D have the line break class CP, which is not asked for.
TEST(ZRChar, RoundAndSquareBracketsDoNotCountAsClosing) {
    EXPECT_FALSE(ZRChar::isCloseParenEtc(')') || ZRChar::isCloseParenEtc(']'));
}

}  // namespace
}  // namespace ZroCommon::testing
