#include "zro/values/ZRTokenizer.h"

#include <cmath>
#include <iomanip>
#include <locale>
#include <sstream>

#include "tests/support/SmallStack.h"
#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

std::string describe(const ZRTokenizer& tokenizer) {
    std::ostringstream number;
    number.imbue(std::locale::classic());
    switch (tokenizer.ttype) {
    case -2:
        number << "number " << std::setprecision(10) << tokenizer.nval << utf8(tokenizer.sval);
        return number.str();
    case -3: return "name " + utf8(tokenizer.sval);
    case -5: return "string " + utf8(tokenizer.sval);
    case -6:
        number << "colour " << std::uppercase << std::hex << std::setfill('0') << std::setw(6)
               << static_cast<unsigned>(tokenizer.nval);
        return number.str();
    default: return "char " + utf8(UnicodeString(static_cast<char16_t>(tokenizer.ttype)));
    }
}

std::string allTokens(const std::string& source) {
    ZRTokenizer tokenizer(text(source));
    std::string all;
    while (tokenizer.nextToken() != -1) {
        all += (all.empty() ? "" : ", ") + describe(tokenizer);
    }
    EXPECT_EQ(tokenizer.nextToken(), -1) << "the end stays";
    EXPECT_TRUE(tokenizer.nval == 0 && tokenizer.sval.isEmpty());
    return all;
}

auto allValues(ZRValue (ZRTokenizer::*read)()) {
    return [read](const std::string& source) {
        ZRTokenizer tokenizer(text(source));
        std::string all;
        for (ZRValue value = (tokenizer.*read)(); !value.isNull(); value = (tokenizer.*read)()) {
            all += (all.empty() ? "" : ", ")
                   + (value.isCharacter()       ? "char " + utf8(value.toString())
                      : value.isUnknownString() ? "unknown " + utf8(value.toString())
                                                : dump(value));
        }
        return all;
    };
}

TEST(ZRTokenizer, SplitsATextIntoTokens) {
    expectTexts(
        allTokens,
        {" -> ", " \t\r\n  -> ", "\f -> char \f", ".5pt,1em -> number 0.5pt, char ,, number 1em",
         "5. . -> number 5, char .", "50% 50 % -> number 50%, number 50, char %",
         "10PT-2.x -> number 10PT-2.x", "-1 -> char -, number 1",
         "rgb(1 2) -> name rgb, char (, number 1, number 2, char )",
         "fo:block -> name fo, char :, name block",
         "\u00D7\u00F7\u00B7 \uF8FF -> name \u00D7\u00F7\u00B7, char \uF8FF",
         "'a\"b' \"\" 'c -> string a\"b, string , char ', name c",
         "#ABC #ABCD #12 #1 -> colour AABBCC, colour 00ABCD, colour 001122, colour 000011",
         "#abcdef #FFFFFFFF -> colour ABCDEF, colour FFFFFFFF", "#123456789 -> colour FFFFFFFF",
         "#GG #CMYK -> char #, name GG, colour 0000CC, name MYK"});
    EXPECT_EQ(allTokens(std::string("12\0ab", 5)), "number 12");
    UnicodeString bogus;
    bogus.setToBogus();
    EXPECT_EQ(ZRTokenizer(bogus).nextToken(), -1);
    ZRTokenizer surrogates(u"\U0001F600");  // one by one
    EXPECT_EQ(surrogates.nextToken(), 0xD83D);
    EXPECT_EQ(surrogates.nextToken(), 0xDE00);
}

TEST(ZRTokenizer, TooManyDigitsAreCharacters) {
    EXPECT_EQ(allTokens(std::string(98, '1')), "number 1.111111111e+97");
    EXPECT_EQ(allTokens(std::string(100, '0') + "5pt"), "char 0, char 0, char 0, number 5pt");
    EXPECT_EQ(allTokens("." + std::string(300, '1')), "number 0.1111111111");
}

TEST(ZRTokenizer, ReadsValuesWithTheirUnits) {
    expectTexts(allValues(&ZRTokenizer::nextTokenValue),
                {"5 5.0 0.5 3000000000 -> integer 5, integer 5, real 0.5, real 3e+09",
                 "50% 1PT 2Hz 3\u212AHZ -> real 50%, real 1pt, real 2Hz, real 3kHz",
                 "1twip 2grad 3S -> real 1twip, real 2grad, real 3s",
                 "10foo 10pt-2 -> integer 10, name foo, integer 10, name pt-2",
                 "1\u0130n -> integer 1, name \u0130n",
                 "'a' b , #F00 -> string a, name b, char ,, integer #FF0000"});
    ZRTokenizer tokenizer(u"12PT 1foo");
    tokenizer.nextTokenValue();
    EXPECT_EQ(tokenizer.sval, u"pt");
    tokenizer.nextTokenValue();
    EXPECT_EQ(tokenizer.sval, u"");
    EXPECT_EQ(UnicodeString(tokenizer.getPtr()), u"foo");
}

TEST(ZRTokenizer, ReadsSignsAndExponents) {
    expectTexts(allValues(&ZRTokenizer::nextTokenValueSigned),
                {"-.5pt +3 -0 -> real -0.5pt, integer 3, integer 0",
                 "- 5 +a --1 -> char -, integer 5, char +, name a, char -, integer -1",
                 "-2147483648 2147483647 -> real -2.14748e+09, integer 2147483647",
                 "1e5 -> integer 1, name e5"});
    expectTexts(allValues(&ZRTokenizer::nextTokenValueExp),
                {"1E3 1e2pt -1e-2 1e2% -> real 1000, real 100pt, real -0.01, real 100%",
                 "1e, 1e#12 1pt e -> integer 1, name e, char ,, integer 1, name e, "
                 "integer #001122, real 1pt, name e",
                 "1e999 1em -> real inf, real 1em"});
    ZRTokenizer doubles(u"1e-2 16777217 5pt a");
    for (const double number : {0.01, 16777217.0, 5.0, 0.0}) {
        EXPECT_EQ(doubles.nextTokenDoubleExp(), number);
    }
}

TEST(ZRTokenizer, KeepsFunctionsAndGroupsAsTheyStand) {
    expectTexts(allValues(&ZRTokenizer::nextTokenValueFunc),
                {"rgb(1,2,3) a -> unknown rgb(1,2,3), name a",
                 "f( g(1e2 ) , (')') ) x -> unknown f( g(1e2 ) , (')') ), name x",
                 "rgb (1) -> name rgb, unknown (1)", "(a ) ) -> unknown (a ), char )",
                 "f(g(1)  -> unknown f(g(1) ", "f(' -> unknown f('"});
}

TEST(ZRTokenizer, ReadsAnyDepthWithoutRecursion) {
    constexpr int kDepth = 1'000'000;
    std::string calls;
    while (calls.size() < kDepth) {
        calls += "f(";
    }
    const std::string digits = "f(" + std::string(kDepth / 10, '1') + ")";
    for (const std::string& source : {std::string(kDepth, '('), calls, digits}) {
        const UnicodeString group = text(source);
        onSmallStack([&] { EXPECT_EQ(ZRTokenizer(group).nextTokenValueFunc().toString(), group); });
    }
}

TEST(ZRTokenizer, PushesATokenBack) {
    ZRTokenizer tokenizer(u"12pt -5 a(b)");
    tokenizer.nextToken();
    tokenizer.pushBack();
    EXPECT_EQ(tokenizer.nextToken(), -2);
    EXPECT_EQ(describe(tokenizer), "number 12pt");
    EXPECT_EQ(tokenizer.nextToken(), '-');
    tokenizer.pushBack();
    EXPECT_EQ(dump(tokenizer.nextTokenValueSigned()), "integer -5") << "the sign is read again";
    tokenizer.pushBack();
    EXPECT_FALSE(tokenizer.skipSeparator('a'));
    EXPECT_FALSE(tokenizer.scanSeparator('a'));
    EXPECT_EQ(dump(tokenizer.nextTokenValue()), "integer -5");
    tokenizer.nextTokenValueFunc();
    tokenizer.pushBack();
    EXPECT_EQ(dump(tokenizer.nextTokenValueFunc()), "name a");
    ZRTokenizer fresh(u"7e x 10foo");
    fresh.pushBack();
    EXPECT_TRUE(fresh.nextTokenValue().isNull());
    fresh.nextTokenValueExp();
    fresh.pushBack();
    EXPECT_EQ(dump(fresh.nextTokenValue()), "integer 7") << "behind a failed exponent";
    EXPECT_EQ(dump(fresh.nextTokenValue()), "name e");
    fresh.nextToken();
    fresh.nextToken();
    fresh.pushBack();
    EXPECT_EQ(dump(fresh.nextTokenValue()), "integer 10") << "the unit is given back";
    EXPECT_EQ(dump(fresh.nextTokenValue()), "name foo");
}

TEST(ZRTokenizer, ACopyGoesOnFromTheSamePlace) {
    for (const char16_t* source :
         {u"a b c", u"a b this text is too long to lie within the object"}) {
        ZRTokenizer first((UnicodeString(source)));
        first.nextToken();
        ZRTokenizer second(first);
        EXPECT_EQ(second.sval, u"a");
        second.nextToken();
        first = second;
        second.nextToken();
        EXPECT_EQ(describe(first), "name b");
        EXPECT_EQ(UnicodeString(first.getPtr()), UnicodeString(source + 3));
    }
}

std::string items(const char16_t* source, char16_t separator) {
    ZRTokenizer tokenizer((UnicodeString(source)));
    std::string all;
    for (;;) {
        const UnicodeString item = tokenizer.nextSeparatedValue(separator);
        if (tokenizer.ttype == -1) {
            return all;
        }
        all += "[" + utf8(item) + "]";
        EXPECT_EQ(tokenizer.sval, item);
    }
}

TEST(ZRTokenizer, ReadsTheItemsOfAList) {
    EXPECT_EQ(items(u" a  b , c,", ','), "[a b][c]");
    EXPECT_EQ(items(u"a,,b", ','), "[a][][b]");
    EXPECT_EQ(items(u"'a,b' c,\"d", ','), "[a,b c][d]");
    EXPECT_EQ(items(u"a 'b c' d", ' '), "[a][b c][d]");
    EXPECT_EQ(items(u"a b", 0), "[a b]");
    ZRTokenizer tokenizer(u"a,b");
    tokenizer.nextSeparatedValue(',');
    tokenizer.pushBack();
    EXPECT_EQ(tokenizer.nextSeparatedValue(','), u"a");
    EXPECT_EQ(tokenizer.nextSeparatedValue(','), u"b");
}

TEST(ZRTokenizer, ABlankJoinsPiecesThatTouch) {
    EXPECT_EQ(items(u"'a'b\"c\"'d',e", ','), "[a b\"c\"'d'][e]");
}

TEST(ZRTokenizer, StepsOverSeparators) {
    ZRTokenizer tokenizer(u"  , a");
    EXPECT_TRUE(tokenizer.scanSeparator(','));
    EXPECT_FALSE(tokenizer.skipSeparator(';'));
    EXPECT_EQ(UnicodeString(tokenizer.getPtr()), u", a");
    EXPECT_TRUE(tokenizer.skipSeparator(','));
    tokenizer.nextToken();
    EXPECT_FALSE(tokenizer.skipSeparator(0));
    EXPECT_FALSE(tokenizer.scanSeparator(0));
}

}  // namespace
}  // namespace ZroCommon::testing
