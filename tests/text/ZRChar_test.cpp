#include "zro/text/ZRChar.h"

#include <cstdio>
#include <limits>

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

// The longer tables, by their number of members and a few of them.
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
    EXPECT_TRUE(ZRChar::isHalf(0x2122));
    EXPECT_FALSE(ZRChar::isHalf(0x201B));
    EXPECT_TRUE(ZRChar::isNonStarterJIS(0xFF70));
    EXPECT_FALSE(ZRChar::isNonStarterJIS(0x3042));
    EXPECT_TRUE(ZRChar::isSymbolJIS(0x2169));
    EXPECT_FALSE(ZRChar::isSymbolJIS(0x266E));
}

TEST(ZRChar, AnswersForAnyNumber) {
    for (const int c : {-1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        for (const Predicate holds :
             {Predicate{ZRChar::isNCNameChar}, Predicate{ZRChar::isHexDigit}, kIsWhitespace,
              Predicate{ZRChar::isBullet}, Predicate{ZRChar::isLetter}, kIsPunct, kIsZenkaku,
              Predicate{ZRChar::isSymbol}, Predicate{ZRChar::isAsciiLetter}}) {
            EXPECT_FALSE(holds(c)) << c;
        }
    }
}

TEST(ZRChar, ReadsTheLastCharacter) {
    EXPECT_EQ(ZRChar::last(text("ab")), u'b');
    EXPECT_EQ(ZRChar::last(text("")), u'\uFFFF');
    EXPECT_EQ(ZRChar::last(text("a\U0001F600")), u'\xDE00');
    EXPECT_EQ(ZRChar::last32(text("a\U0001F600")), 0x1F600);
    EXPECT_EQ(ZRChar::last32(text("")), 0xFFFF);
}

TEST(ZRChar, TellsWhiteSpaceTextFromEmptyText) {
    EXPECT_TRUE(ZRChar::isWhitespace(text(" \t\r\n")));
    EXPECT_FALSE(ZRChar::isWhitespace(text(" \f")));
    EXPECT_FALSE(ZRChar::isWhitespace(text("")));
    EXPECT_TRUE(ZRChar::isEmptyOrWhitespace(text("")));
    EXPECT_FALSE(ZRChar::isEmptyOrWhitespace(text(" x")));
}

// On purpose: what is no digit gets a number as well.
TEST(ZRChar, HexadecimalDigitsAreNotChecked) {
    EXPECT_EQ(ZRChar::hex2dig('9'), 9);
    EXPECT_EQ(ZRChar::hex2dig('a'), 10);
    EXPECT_EQ(ZRChar::hex2dig('F'), 15);
    EXPECT_EQ(ZRChar::hex2dig('g'), 16);
    EXPECT_EQ(ZRChar::hex2dig(std::numeric_limits<int>::min()), 25);
}

TEST(ZRChar, WidensVisibleAsciiOnly) {
    EXPECT_EQ(ZRChar::toZenkaku(u'!'), u'\uFF01');
    EXPECT_EQ(ZRChar::toZenkaku(u'~'), u'\uFF5E');
    EXPECT_EQ(ZRChar::toZenkaku(u' '), u' ');
    EXPECT_EQ(ZRChar::toZenkaku(u'\x7F'), u'\x7F');
}

TEST(ZRChar, KeepsDoubledDashesTogether) {
    EXPECT_TRUE(ZRChar::isNonSeparateChars(0x2014, 0x2014));
    EXPECT_FALSE(ZRChar::isNonSeparateChars(0x2014, 0x2015));
    EXPECT_TRUE(ZRChar::isNonSeparateChars(0x3034, 0x3035));
    EXPECT_FALSE(ZRChar::isNonSeparateChars(0x3035, 0x3034));
    EXPECT_FALSE(ZRChar::isNonSeparateChars('a', 'a'));
}

TEST(ZRChar, AsksUnicodeForWidths) {
    EXPECT_TRUE(kIsZenkaku(0x3042));
    EXPECT_TRUE(kIsZenkaku(0xFF21));
    EXPECT_FALSE(kIsZenkaku(0x00A7));
    EXPECT_TRUE(ZRChar::isZenkakuAmbiguous(ZRChar::getEastAsianWidth(0x00A7)));
    EXPECT_FALSE(ZRChar::isZenkakuAmbiguous(ZRChar::getEastAsianWidth('a')));
    EXPECT_TRUE(kIsHankaku(0xFF71));
    EXPECT_FALSE(kIsHankaku('a'));
}

// On purpose: U+0029 and U+005D have the line break class CP, which is not asked for.
TEST(ZRChar, RoundAndSquareBracketsDoNotCountAsClosing) {
    EXPECT_TRUE(ZRChar::isOpenParenEtc('('));
    EXPECT_FALSE(ZRChar::isCloseParenEtc(')'));
    EXPECT_FALSE(ZRChar::isCloseParenEtc(']'));
    EXPECT_TRUE(ZRChar::isCloseParenEtc('}'));
    EXPECT_TRUE(ZRChar::isCloseParenEtc(0x300D));
    EXPECT_TRUE(ZRChar::isOpenParenEtc(0x2018));
    EXPECT_TRUE(ZRChar::isCloseParenEtc(0x2019));
    EXPECT_TRUE(ZRChar::isHalfPunct(0x30FB));
    EXPECT_FALSE(ZRChar::isHalfPunct('.'));
}

TEST(ZRChar, TheSoftHyphenIsNoControlCode) {
    EXPECT_FALSE(ZRChar::isZeroWidthControlCode(0xAD));
    EXPECT_TRUE(ZRChar::isZeroWidthControlCode(0x0A));
    EXPECT_TRUE(ZRChar::isZeroWidthControlCode(0x2028));
    EXPECT_FALSE(ZRChar::isZeroWidthControlCode('\t' + 0x17));  // the blank
    EXPECT_FALSE(ZRChar::isZeroWidthControlCode('a'));
}

TEST(ZRChar, SortsByGeneralCategory) {
    EXPECT_EQ(ZRChar::getCategory('a'), U_LOWERCASE_LETTER);
    EXPECT_TRUE(ZRChar::isLetter(0x3042));
    EXPECT_FALSE(ZRChar::isLetter('1'));
    EXPECT_TRUE(ZRChar::isSymbol('+'));
    EXPECT_TRUE(kIsPunct('-'));
    EXPECT_TRUE(ZRChar::isAlphabetic(0x2160));
    EXPECT_EQ(ZRChar::getLineBreak(0x3002), U_LB_CLOSE_PUNCTUATION);
}

}  // namespace
}  // namespace ZroCommon::testing
