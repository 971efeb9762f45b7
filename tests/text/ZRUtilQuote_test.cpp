#include "zro/text/ZRUtil.h"

#include <vector>

#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

using Mode = ZRUtil::QuoteMode;

constexpr Mode kPlain{};
constexpr Mode kDouble = ZRUtil::QUOTE_DOUBLE;
constexpr Mode kSingle = ZRUtil::QUOTE_SINGLE;
constexpr Mode kBoth = ZRUtil::QUOTE_DOUBLE | ZRUtil::QUOTE_SINGLE;
constexpr Mode kDoubling = ZRUtil::QUOTE_DOUBLING;
constexpr Mode kEscapes = ZRUtil::QUOTE_BACKSLASH;

std::string shown(const UnicodeString& result) {
    return result.isBogus() ? "bogus" : utf8(result);
}

TEST(ZRUtil, QuotesStrings) {
    for (const auto& [plain, mode, expected] : Rows<const char*, Mode, const char*>{
             {"a", kPlain, "a"},
             {"", kBoth, "\"\""},
             {"a", kBoth, "\"a\""},
             {"a\"b", kBoth, "'a\"b'"},
             {"a'b", kBoth, "\"a'b\""},
             {"a\"b'c", kBoth, "\"a\"b'c\""},  // no escape is asked for
             {"a\"b", kDouble | kDoubling, "\"a\"\"b\""},
             {"'a''b'", kSingle | kDoubling, "'''a''''b'''"},
             {"a\"b'c", kBoth | kDoubling, "\"a\"\"b'c\""},
             {"a\nb", kDouble | kEscapes, "\"a\\A b\""},
             {"a\nx", kDouble | kEscapes, "\"a\\Ax\""},
             {"\n\r\f\\", kSingle | kEscapes, "'\\A \\D \\C\\5C'"},
             {"a\\ b\\", kSingle | kEscapes, "'a\\5C  b\\5C'"},
             {"\"F'", kBoth | kEscapes, "\"\\22 F'\""},
             {"a'b", kSingle | kEscapes | kDoubling, "'a\\27 b'"},
             {"\"'\n", kEscapes, "\"'\\A"},
             {"\u00E9\U0001F600", kDouble | kEscapes, "\"\u00E9\U0001F600\""},
         }) {
        EXPECT_EQ(utf8(ZRUtil::quoteString(text(plain), mode)), expected) << plain << mode;
    }
}

TEST(ZRUtil, ParsesQuotedStrings) {
    for (const auto& [quoted, mode, expected, rest] :
         Rows<const char16_t*, Mode, const char*, const char16_t*>{
             {u"\"a\"b", kDouble, "a", u"b"},
             {u" \t\r\n\f'a' ", kBoth, "a", u" "},
             {u"'a''b'", kBoth, "a", u"'b'"},
             {u"'a''b'", kBoth | kDoubling, "a'b", u""},
             {u"''''", kBoth | kDoubling, "'", u""},
             {u"'a\"\"'", kBoth | kDoubling, "a\"\"", u""},
             {u"\"a\\41 b\"", kDouble | kEscapes, "aAb", u""},
             {u"\"\\000041b\"", kDouble | kEscapes, "Ab", u""},
             {u"'\\41\r\nb'", kBoth | kEscapes, "A\nb", u""},  // CR alone ends the escape
             {u"'\\22\\'\\\\\\z'", kBoth | kEscapes, "\"'\\z", u""},
             {u"'\\1F600'", kBoth | kEscapes, "\U0001F600", u""},
             {u"'\\110000\\FFFFFF'", kBoth | kEscapes, "\uFFFD\uFFFD", u""},
             {u"'a\\41'", kBoth, "a\\41", u""},
             // Without a quote everything counts.
             {u" a\\42 \\", kEscapes, " aB", u""},
             {u" 'a'", kPlain, " 'a'", u""},
             {u"", kPlain, "", u""},
         }) {
        const char16_t* end = nullptr;
        EXPECT_EQ(shown(ZRUtil::parseString(quoted, &end, mode)), expected) << utf8(quoted) << mode;
        EXPECT_EQ(utf8(end), utf8(rest)) << utf8(quoted) << mode;
        EXPECT_EQ(shown(ZRUtil::parseString(quoted, nullptr, mode)), expected);
    }
    for (const auto& [mode, texts] : Rows<Mode, std::vector<const char16_t*>>{
             {kDouble, {u"'a'"}},
             {kBoth, {u" a", u"", u"\"a'", u"\""}},
             {kBoth | kDoubling, {u"'''"}},
             {kBoth | kEscapes, {u"'a\\'", u"'a\\"}},
         }) {
        for (const char16_t* quoted : texts) {
            const char16_t* end = nullptr;
            EXPECT_TRUE(ZRUtil::parseString(quoted, &end, mode).isBogus()) << utf8(quoted) << mode;
            EXPECT_EQ(end, quoted) << mode;
        }
    }
    EXPECT_EQ(ZRUtil::parseString(u"\\0", nullptr, kEscapes), UnicodeString(1, UChar32{0}, 1));
    EXPECT_EQ(ZRUtil::parseString(u"\\D800", nullptr, kEscapes).charAt(0), 0xD800);
}

// On purpose: CR LF behind a backslash is dropped, a line end of one character is not.
TEST(ZRUtil, ABackslashKeepsALineEndOfOneCharacter) {
    for (const auto& [quoted, expected] : {std::pair{u"'a\\\r\nb'", "ab"},
                                           {u"'a\\\nb'", "a\nb"},
                                           {u"'a\\\rb'", "a\rb"},
                                           {u"'a\\\fb'", "a\fb"}}) {
        EXPECT_EQ(shown(ZRUtil::parseString(quoted, nullptr, kBoth | kEscapes)), expected);
    }
}

TEST(ZRUtil, UnquotesStrings) {
    for (const auto& [quoted, mode, expected] : Rows<const char*, Mode, const char*>{
             {" 'a b' ", kBoth, "a b"},
             {"\u3000'a'\u2028", kBoth, "a"},
             {"'a'b'", kBoth, "a'b"},
             {" a\\42 ", kEscapes, "aB"},
             {" a ", kPlain, "a"},
         }) {
        EXPECT_EQ(shown(ZRUtil::unquoteString(text(quoted), mode)), expected) << quoted << mode;
    }
    for (const auto& [mode, texts] : Rows<Mode, std::vector<const char*>>{
             {kBoth, {"'a'b\"", "'a' x", "a", ""}},
             {kBoth | kDoubling, {"'a'b'"}},
             {kBoth | kEscapes, {"'a'b'"}},
         }) {
        for (const char* quoted : texts) {
            EXPECT_TRUE(ZRUtil::unquoteString(text(quoted), mode).isBogus()) << quoted << mode;
        }
    }
    UnicodeString bogus;
    bogus.setToBogus();
    EXPECT_EQ(shown(ZRUtil::unquoteString(bogus, kBoth)), "bogus");
    EXPECT_EQ(shown(ZRUtil::unquoteString(bogus, kPlain)), "");
}

TEST(ZRUtil, QuotesUris) {
    EXPECT_EQ(utf8(ZRUtil::quoteUri(text("a \"b\""))), "url(\"a %22b%22\")");
    EXPECT_EQ(utf8(ZRUtil::unquoteUri(text("url(\"http://h/a%22b\")"))), "http://h/a%22b");
    EXPECT_EQ(utf8(ZRUtil::unquoteUri(text("'a/b.png'"))), "a/b.png");
}

}  // namespace
}  // namespace ZroCommon::testing
