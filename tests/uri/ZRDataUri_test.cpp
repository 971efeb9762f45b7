#include "zro/uri/ZRDataUri.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/support/Text.h"

namespace ZroCommon::testing {
namespace {

// "media type|b if base64|page|data"; "none" for the data when there is no place for it.
std::string partsOf(const ZRDataUri& uri) {
    const int32_t data = uri.getDataPos();
    return utf8(uri.getMediaType()) + "|" + (uri.isBase64() ? "b" : "") + "|"
           + std::to_string(uri.getPageNumber()) + "|"
           + (data < 0 ? "none" : utf8(UnicodeString(uri.toString(), data)));
}

TEST(ZRDataUri, TakesADataUriApart) {
    const struct {
        const char16_t* text;
        const char* parts;
    } cases[] = {
        {u"data:image/png;base64,QUJD", "image/png|b|0|QUJD"},
        {u"data:text/plain,a%20b", "text/plain||0|a b"},
        {u"data:text/plain,a,b;c", "text/plain||0|a,b;c"},
        {u"data:,x", "||0|x"},
        {u"data:,", "||0|"},
        {u"data: text/plain ;base64,", "text/plain|b|0|"},
        {u"data:text/plain", "||0|none"},
        {u"data:", "||0|none"},
        {u"data:a;base64", "a|b|0|none"},
        {u"data:image/tiff;page=3;base64,AAAA", "image/tiff|b|3|AAAA"},
        {u"data:;page=3;,x", "|b|3|x"},
        {u"data:; page = 3 ;,x", "|b|3|x"},
        {u"data:;page='3';,x", "|b|3|x"},
        {u"data:;page=2;page=5;page=0;base64,x", "|b|5|x"},
        {u"data:;page=-3;page=x;page=;page;PAGE=4;pages=4;4=4;;,x", "|b|0|x"},
        {u"data:;page=99999999999;,x", "|b|2147483647|x"},
        {u"data:a%3Bb%2Cc", "a|b|0|c"},  // everything is unescaped first
        {u"data:,%FF", "||0|\uFFFD"},
        {u"http://h/a;b,c", "||0|none"},
        {u"a/b,c", "||0|none"},
        {u"", "||0|none"},
    };
    for (const auto& [text, parts] : cases) {
        EXPECT_EQ(partsOf(ZRDataUri(text, URISTR_PATH_OR_URI)), parts) << "for: " << utf8(text);
    }
    EXPECT_EQ(ZRDataUri(u"data:image/png;base64,QUJD", URISTR_GUESS).getDataPos(), 22);
}

TEST(ZRDataUri, IsResolvedAndCopiedAsAUri) {
    const ZRUri base(u"http://h/d/x", URISTR_GUESS);
    const ZRDataUri absolute(base, u"data:a,b", URISTR_GUESS);
    EXPECT_EQ(partsOf(absolute), "a||0|b");
    EXPECT_EQ(ZRDataUri(base, u"y", URISTR_GUESS).toString(), UnicodeString(u"http://h/d/y"));
    ZRDataUri copy = absolute;
    EXPECT_EQ(partsOf(copy), "a||0|b");
    copy = ZRDataUri(u"url(data:;page=7;,x)", URISTR_GUESS_CSS);
    EXPECT_EQ(partsOf(copy), "|b|7|x");
}

// On purpose: such a URI has the scheme for every question but this one.
TEST(ZRDataUri, ASchemeInCapitalsIsNotTakenApart) {
    const ZRDataUri uri(u"DATA:text/plain,a%20b", URISTR_GUESS);
    EXPECT_TRUE(uri.isDataScheme());
    EXPECT_EQ(partsOf(uri), "||0|none");
    EXPECT_EQ(uri.toString(), UnicodeString(u"DATA:text/plain,a%20b"));
}

// On purpose: nobody looks which parameter it is.
TEST(ZRDataUri, AnyParameterMeansBase64) {
    EXPECT_EQ(partsOf(ZRDataUri(u"data:text/plain;charset=utf-8,x", URISTR_GUESS)),
              "text/plain|b|0|x");
}

// On purpose: in its place stands "base64".
TEST(ZRDataUri, TheLastParameterIsNotRead) {
    EXPECT_EQ(partsOf(ZRDataUri(u"data:image/tiff;base64;page=3,AAAA", URISTR_GUESS)),
              "image/tiff|b|0|AAAA");
}

}  // namespace
}  // namespace ZroCommon::testing
