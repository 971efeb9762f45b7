#include "zro/uri/ZRDataUri.h"

#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

// "media type|b if base64|page|data"; "none" for the data when there is no place for it.
std::string partsOf(const ZRDataUri& uri) {
    const int32_t data = uri.getDataPos();
    return utf8(uri.getMediaType()) + "|" + (uri.isBase64() ? "b" : "") + "|"
           + std::to_string(uri.getPageNumber()) + "|"
           + (data < 0 ? "none" : utf8(UnicodeString(uri.toString(), data)));
}

void expectParts(std::initializer_list<std::string_view> rows) {
    const auto parts = [](const std::string& given) {
        return partsOf(ZRDataUri(text(given), URISTR_PATH_OR_URI));
    };
    expectTexts(parts, rows);
}

TEST(ZRDataUri, TakesADataUriApart) {
    expectParts({"data:image/png;base64,QUJD -> image/png|b|0|QUJD",
                 "data:text/plain,a%20b -> text/plain||0|a b",
                 "data:text/plain,a,b;c -> text/plain||0|a,b;c",
                 "data:,x -> ||0|x",
                 "data:, -> ||0|",
                 "data: text/plain ;base64, -> text/plain|b|0|",
                 "data:text/plain -> ||0|none",
                 "data: -> ||0|none",
                 "data:a;base64 -> a|b|0|none",
                 "data:image/tiff;page=3;base64,AAAA -> image/tiff|b|3|AAAA",
                 "data:;page=3;,x -> |b|3|x",
                 "data:; page = 3 ;,x -> |b|3|x",
                 "data:;page='3';,x -> |b|3|x",
                 "data:;page=2;page=5;page=0;base64,x -> |b|5|x",
                 "data:;page=-3;page=x;page=;page;PAGE=4;pages=4;4=4;;,x -> |b|0|x",
                 "data:;page=99999999999;,x -> |b|2147483647|x",
                 "data:a%3Bb%2Cc -> a|b|0|c",  // everything is unescaped first
                 "data:,%FF -> ||0|\uFFFD",
                 "http://h/a;b,c -> ||0|none",
                 "a/b,c -> ||0|none",
                 " -> ||0|none"});
}

TEST(ZRDataUri, IsResolvedAndCopiedAsAUri) {
    const ZRUri base(u"http://h/d/x", URISTR_GUESS);
    EXPECT_EQ(utf8(ZRDataUri(base, u"y", URISTR_GUESS)), "http://h/d/y");
    ZRDataUri copy = ZRDataUri(base, u"data:a,b", URISTR_GUESS);
    EXPECT_EQ(partsOf(copy), "a||0|b");
    copy = ZRDataUri(u"url(data:;page=7;,x)", URISTR_GUESS_CSS);
    EXPECT_EQ(partsOf(copy), "|b|7|x");
}

// On purpose: such a URI has the scheme for every question but this one.
TEST(ZRDataUri, ASchemeInCapitalsIsNotTakenApart) {
    expectParts({"DATA:text/plain,a%20b -> ||0|none"});
    EXPECT_TRUE(ZRDataUri(u"DATA:text/plain,a%20b", URISTR_GUESS).isDataScheme());
}

// On purpose: nobody looks which parameter it is.
TEST(ZRDataUri, AnyParameterMeansBase64) {
    expectParts({"data:text/plain;charset=utf-8,x -> text/plain|b|0|x"});
}

// On purpose: in its place stands "base64".
TEST(ZRDataUri, TheLastParameterIsNotRead) {
    expectParts({"data:image/tiff;base64;page=3,AAAA -> image/tiff|b|0|AAAA"});
}

}  // namespace
}  // namespace ZroCommon::testing
