#include "zro/uri/ZRUri.h"

#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

// Rows of "base + reference -> what comes of it".
void expectResolved(std::initializer_list<std::string_view> rows,
                    URISTRTYPE type = URISTR_PATH_OR_URI_CSS) {
    const auto resolved = [type](const std::string& both) {
        const std::size_t plus = both.find(" + ");
        const ZRUri base(text(both.substr(0, plus)), URISTR_GUESS);
        return utf8(ZRUri(base, text(both.substr(plus + 3)), type));
    };
    expectTexts(resolved, rows);
}

TEST(ZRUriResolve, ResolvesAgainstADirectory) {
    expectResolved(
        {"file:///C:/d/x.xml + c.png -> file:///C:/d/c.png",
         "file:///C:/d/x.xml + /c.png -> file:///C:/c.png",
         "file:///C:/d/x.xml + ../../../c.png -> file:///C:/c.png",
         "file:///C: + x -> file:///C:/x", "file:///tmp/d/x.xml + /etc/y -> file:///etc/y",
         "file:/tmp/d/x.xml + /etc/y -> file:/etc/y", "file://srv/d/x + /y -> file://srv/y",
         "file:a/b + c -> file:a/c", "FILE:///C:/d/x + y -> file:///C:/d/y",
         "file://localhost/d/x + y -> file:///d/y", "a + x -> x", "a/b/ + x -> a/b/x",
         "/a/b + x -> /a/x", "/ + x -> /x", "./ + ../x -> ../x", " + ../x -> ../x",
         "xx:a/b + /c -> xx:a/c"});
}

TEST(ZRUriResolve, ResolvesAgainstAnAddress) {
    expectResolved(
        {"http://h + c.png -> http://h/c.png", "http://h/a?q=1/2 + c.png -> http://h/c.png",
         "HTTPS://h/a/b/c + /d -> https://h/d", "http://h/a/b + ../../../x -> http://h/x",
         // On purpose: a fragment or a query alone reads as a path.
         "http://h/a/b.html + #x -> http://h/a/#x", "http://h/a/b.html + ?x -> http://h/a/?x",
         // On purpose: http and https bases lose their query only, others nothing.
         "http://h/a#b/c + x -> http://h/a#b/x", "ftp://h/a?q=1/2 + x -> ftp://h/a?q=1/x",
         "ftp://h/a/b + ../../../x -> ftp://h/x",
         "http://h/a/b + a b%20c -> http://h/a/a%20b%2520c"});
}

TEST(ZRUriResolve, ResolvesInsideAPackage) {
    expectResolved({"jar:file:///C:/p.zip!/d/y.xml + x.xml -> jar:file:///C:/p.zip!/d/x.xml",
                    "jar:file:///C:/p.zip!/d/y.xml + /x.xml -> jar:file:///C:/p.zip!/x.xml",
                    "jar:file:/p.zip!/q.zip!/a/b + ../../x -> jar:file:/p.zip!/q.zip!/x",
                    "JAR:file:/d/p.zip + x -> jar:file:/d/x",
                    "file:/d/a.xml + jar:p.zip!/x -> jar:file:/d/p.zip!/x",
                    "file:/d/a.xml + JAR: jar:p.zip -> jar:jar:file:/d/p.zip",
                    "file:/d/a.xml + jar: -> jar:"});
}

TEST(ZRUriResolve, CountsDotsAtTheStartOfTheReferenceAndTheEndOfTheBase) {
    expectResolved({"a/b/. + x -> a/b/x", "a/b/.. + x -> a/x", "a/b/./ + x -> a/b/x",
                    "a/b/../ + x -> a/x", "a/b/./.. + x -> a/x", "a/b/c + . -> a/b/",
                    "a/b/c + .. -> a/", "a/b/c + ./.././x -> a/x", "a/b/c + ./. -> a/b/.",
                    "a/b/c + ../.. -> a/..", "a/b/c + x/../y -> a/b/x/../y", "a/b + ../x -> a/x",
                    // On purpose: two slashes name no host, and forget what was climbed.
                    "http://h/a/b + ..///x -> http://h/a///x"});
    expectResolved({"http://h/a/b + //g/x -> http://h/a///g/x"}, URISTR_GUESS);
}

TEST(ZRUriResolve, TakesWhatStandsAlone) {
    expectResolved(
        {"http://h/a/b + ftp://g/x y -> ftp://g/x y", "http://h/a/b + C:\\x y -> file:///C:/x%20y",
         "http://h/a/b + \\\\srv\\x -> file://srv/x", "http://h/a/b + file:///x -> file:///x",
         "http://h/a/b + file://C:/x -> file:///C:/x", "http://h/a/b + file:/C:/x -> file:///C:/x",
         "http://h/a/b + file:c.txt -> http://h/a/c.txt",
         "http://h/a/b + file:http://g/x -> http://g/x", "http://h/a/b + FILE:/x -> FILE:/x",
         // On purpose: the first segment behind one slash becomes a host.
         "http://h/a/b + file:/x/y -> file://x/y", "http://h/a/b + file:/ -> file://",
         "http://h/a/b +  \t -> "});
}

// On purpose: a reference is escaped against a base with a scheme only.
TEST(ZRUriResolve, EscapesByTheSchemeOfTheBase) {
    expectResolved({"d/a + x y%20z -> d/x y%20z", "http://h/ + x y -> http://h/x%20y"});
    expectResolved({"d/a + x y -> d/x%20y", "http://h/ + x%20y -> http://h/x%20y"}, URISTR_GUESS);
}

TEST(ZRUriResolve, ClimbsAnyNumberOfLevels) {
    UnicodeString base(u"http://h/");
    UnicodeString climb;
    for (int i = 0; i < 300000; ++i) {
        base.append(u"d/");
        climb.append(u"../");
    }
    EXPECT_EQ(utf8(ZRUri(ZRUri(base, URISTR_GUESS), climb + u"x", URISTR_PATH_OR_URI)),
              "http://h/x");
}

}  // namespace
}  // namespace ZroCommon::testing
