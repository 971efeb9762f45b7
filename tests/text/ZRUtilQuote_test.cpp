#include "zro/text/ZRUtil.h"

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
    const auto quoted = [](const char* plain, Mode mode) {
        return utf8(ZRUtil::quoteString(text(plain), mode));
    };
    const Rows<const char*, Mode, const char*> cases = {
        {"a", kPlain, "a"},
        {"", kBoth, "\"\""},
        {"a", kBoth, "\"a\""},
        {"a\"b", kBoth, "'a\"b'"},
        {"a'b", kBoth, "\"a'b\""},
        {"a\"b'c", kBoth, "\"a\"b'c\""},
        {"\"'\n", kEscapes, "\"'\\A"},
        {"a\"b", kDouble | kDoubling, "\"a\"\"b\""},
        {"'a''b'", kSingle | kDoubling, "'''a''''b'''"},
        {"a\"b'c", kBoth | kDoubling, "\"a\"\"b'c\""},
        {"a\nb", kDouble | kEscapes, "\"a\\A b\""},
        {"a\nx", kDouble | kEscapes, "\"a\\Ax\""},
        {"\n\r\f\\", kSingle | kEscapes, "'\\A \\D \\C\\5C'"},
        {"a\\ b\\", kSingle | kEscapes, "'a\\5C  b\\5C'"},
        {"\"F'", kBoth | kEscapes, "\"\\22 F'\""},
        {"a'b", kSingle | kEscapes | kDoubling, "'a\\27 b'"},
        {"\u00E9\U0001F600", kDouble | kEscapes, "\"\u00E9\U0001F600\""}};
    expectRows(quoted, cases);
}

// "text|rest"; all is left behind "bogus".
std::string parsed(const char16_t* quoted, Mode mode) {
    const char16_t* end = nullptr;
    const std::string result = shown(ZRUtil::parseString(quoted, &end, mode));
    EXPECT_EQ(shown(ZRUtil::parseString(quoted, nullptr, mode)), result) << utf8(quoted);
    EXPECT_TRUE(result != "bogus" || end == quoted) << utf8(quoted);
    return result == "bogus" ? result : result + "|" + utf8(end);
}

TEST(ZRUtil, ParsesQuotedStrings) {
    const Rows<const char16_t*, Mode, const char*> cases = {
        {u"\"a\"b", kDouble, "a|b"}, {u" \t\r\n\f'a' ", kBoth, "a| "},
        {u"'a''b'", kBoth, "a|'b'"}, {u"'a\\41'", kBoth, "a\\41|"},
        {u"'a'", kDouble, "bogus"},  {u" a", kBoth, "bogus"},
        {u"", kBoth, "bogus"},       {u"\"a'", kBoth, "bogus"},
        {u"\"", kBoth, "bogus"},     {u" 'a'", kPlain, " 'a'|"},
        {u"", kPlain, "|"},          {u" a\\42 \\", kEscapes, " aB|"}};
    expectRows(parsed, cases);
    const Rows<const char16_t*, Mode, const char*> special = {
        {u"'a''b'", kBoth | kDoubling, "a'b|"},
        {u"''''", kBoth | kDoubling, "'|"},
        {u"'a\"\"'", kBoth | kDoubling, "a\"\"|"},
        {u"'''", kBoth | kDoubling, "bogus"},
        {u"\"a\\41 b\"", kDouble | kEscapes, "aAb|"},
        {u"\"\\000041b\"", kDouble | kEscapes, "Ab|"},
        {u"'\\41\r\nb'", kBoth | kEscapes, "A\nb|"},
        {u"'\\22\\'\\\\\\z'", kBoth | kEscapes, "\"'\\z|"},
        {u"'\\1F600'", kBoth | kEscapes, "\U0001F600|"},
        {u"'\\110000\\FFFFFF'", kBoth | kEscapes, "\uFFFD\uFFFD|"},
        {u"'a\\'", kBoth | kEscapes, "bogus"},
        {u"'a\\", kBoth | kEscapes, "bogus"}};
    expectRows(parsed, special);
    EXPECT_EQ(ZRUtil::parseString(u"\\0", nullptr, kEscapes), UnicodeString(1, UChar32{0}, 1));
    EXPECT_EQ(ZRUtil::parseString(u"\\D800", nullptr, kEscapes).charAt(0), 0xD800);
}

// On purpose: CR LF behind a backslash is dropped, a line end of one character is not.
TEST(ZRUtil, ABackslashKeepsALineEndOfOneCharacter) {
    EXPECT_EQ(parsed(u"'a\\\r\nb'", kBoth | kEscapes), "ab|");
    EXPECT_EQ(parsed(u"'a\\\nb'", kBoth | kEscapes), "a\nb|");
    EXPECT_EQ(parsed(u"'a\\\rb'", kBoth | kEscapes), "a\rb|");
    EXPECT_EQ(parsed(u"'a\\\fb'", kBoth | kEscapes), "a\fb|");
}

TEST(ZRUtil, UnquotesStrings) {
    const auto unquoted = [](const char* quoted, Mode mode) {
        return shown(ZRUtil::unquoteString(text(quoted), mode));
    };
    const Rows<const char*, Mode, const char*> cases = {{" 'a b' ", kBoth, "a b"},
                                                        {"\u3000'a'\u2028", kBoth, "a"},
                                                        {"'a'b'", kBoth, "a'b"},
                                                        {" a\\42 ", kEscapes, "aB"},
                                                        {" a ", kPlain, "a"},
                                                        {"'a'b\"", kBoth, "bogus"},
                                                        {"'a' x", kBoth, "bogus"},
                                                        {"a", kBoth, "bogus"},
                                                        {"", kBoth, "bogus"},
                                                        {"'a'b'", kBoth | kDoubling, "bogus"},
                                                        {"'a'b'", kBoth | kEscapes, "bogus"}};
    expectRows(unquoted, cases);
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
