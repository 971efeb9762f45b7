#include "zro/uri/ZRUri.h"

#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

ZRUri uri(const UnicodeString& given) {
    return {given, URISTR_GUESS};
}

ZRUri uri(const std::string& given) {
    return uri(text(given));
}

// A text as the four types read it: guess, path or URI, and both with the CSS wrapping taken off;
// less of them when the wrapping makes no difference, one when there is none at all.
std::string normalized(const std::string& given) {
    const auto as = [&given](URISTRTYPE type) {
        return utf8(ZRUri(text(given), type));
    };
    const std::string plain = as(URISTR_GUESS) + " | " + as(URISTR_PATH_OR_URI);
    const std::string css = as(URISTR_GUESS_CSS) + " | " + as(URISTR_PATH_OR_URI_CSS);
    if (plain != css) {
        return plain + " | " + css;
    }
    return as(URISTR_GUESS) == as(URISTR_PATH_OR_URI) ? as(URISTR_GUESS) : plain;
}

TEST(ZRUri, NormalizesByWhatTheTextIs) {
    expectTexts(normalized,
                {"C:\\a b\\c.xml -> file:///C:/a%20b/c.xml",
                 "\\\\srv\\share\\c.xml -> file://srv/share/c.xml", "a\\b c.xml -> a/b%20c.xml",
                 "/a b -> /a%20b | file:/a%20b", "//tmp/a -> //tmp/a | file://tmp/a",
                 "a%20b -> a%20b | a%2520b", "50%.png -> 50%25.png", "a%2 -> a%252", " a  -> a",
                 " \t -> ", "file:/a b -> file:/a b", "FILE:\\a b -> FILE:/a b | FILE:\\a b",
                 // What style sheets wrap addresses in.
                 "url('x.png') -> url('x.png') | url('x.png') | x.png | x.png",
                 "url( 'x y' ) -> url(%20'x%20y'%20) | url(%20'x%20y'%20) | x%20y | x%20y",
                 "URL(x) -> URL(x)", " url(x) -> url(x)", "url() -> url() | url() |  | ",
                 "\"a\" -> %22a%22 | %22a%22 | a | a", "'a\" -> 'a%22", "' -> ' | ' |  | ",
                 "url(\") -> url(%22) | url(%22) |  | "});
}

// On purpose: what a text is gets decided before blanks, "url(...)" and quotes go.
TEST(ZRUri, ClassifiesTheTextAsItWasGiven) {
    EXPECT_EQ(utf8(ZRUri(" C:/x", URISTR_GUESS)), "C:/x");
    expectTexts([](const std::string& given) { return utf8(ZRUri(text(given), URISTR_GUESS_CSS)); },
                {"url(C:\\x) -> C:%5Cx", "'C:/x' -> C:/x", "'C:\\x' -> file:///C:/x"});
}

TEST(ZRUri, EscapesAllThatAUriMayNotHold) {
    const UnicodeString given(
        u"\u0001 \"%<>\\^`{|}\u007F\u009F|\u00A0\u3042\U0001F600!#$&'()*+,-./:;=?@[]_~");
    // On purpose: an escape is the number of the character, not of its bytes in UTF-8.
    EXPECT_EQ(utf8(ZRUri(u"x" + given, URISTR_GUESS_CSS)),
              utf8(u"x%01%20%22%25%3C%3E/%5E%60%7B%7C%7D%7F%9F%7C\u00A0\u3042\U0001F600"
                   u"!#$&'()*+,-./:;=?@[]_~"));
}

// On purpose: behind a scheme nothing is examined.
TEST(ZRUri, KeepsWhatHasASchemeAsItIs) {
    for (const char* given :
         {"http://h/a b\r\nX: y", "file:///C:/a b", "x-y.z+1:%", "data:,a\\b"}) {
        EXPECT_EQ(utf8(ZRUri(text(given), URISTR_PATH_OR_URI)), given);
    }
}

TEST(ZRUri, FindsTheScheme) {
    const auto scheme = [](const std::string& given) {
        const ZRUri found = uri(given);
        EXPECT_EQ(found.isAbsolute(), !found.getScheme().isEmpty()) << given;
        return utf8(found.getScheme()) + (found.isFile() ? ", a file" : "");
    };
    expectTexts(scheme, {"http://h -> http", "A+-.9:x -> A+-.9", " C:/x -> , a file",
                         "file:x -> file, a file", "File:x -> File, a file", "1ab:x -> , a file",
                         "a/b:c -> , a file", " -> , a file", "ab -> , a file", "a -> , a file",
                         "jar:x -> jar", "\u00E9t:x -> , a file"});
    EXPECT_TRUE(uri(u"JAR:x").isJarScheme());
    EXPECT_TRUE(uri(u"Data:,x").isDataScheme());
    EXPECT_FALSE(uri(u"data").isDataScheme());
}

TEST(ZRUri, GivesALocalPath) {
    expectTexts([](const std::string& given) { return utf8(uri(given).getLocalPath()); },
                {"file:///C:/a%20b/c.xml -> C:\\a b\\c.xml", "file:/C:/a -> C:\\a",
                 "file:C:/a -> C:\\a", "file://srv/share/x -> \\\\srv\\share\\x",
                 "file:///srv/share/x -> \\\\srv\\share\\x", "FILE:////srv%2Fx -> \\\\srv\\x",
                 "file:/a/b%20c -> /a/b c", "file:a%5Cb -> a\\b", "a%20b/c -> a b/c",
                 "http://h/a%20b -> http://h/a%20b", "file: -> ", " -> "});
}

TEST(ZRUri, TakesEscapesOffAsBytesOfUtf8) {
    expectTexts([](const std::string& given) { return utf8(ZRUri::unescape(text(given))); },
                {"plain -> plain", "%41%6a%6A -> Ajj", "%E3%81%82 -> \u3042", "% -> %", "%4 -> %4",
                 "%4g%41 -> %4gA", "%%41 -> %A", "%80 -> \uFFFD", "100%25 -> 100%"});
}

TEST(ZRUri, NamesItsParts) {
    const auto parts = [](const std::string& given) {
        const ZRUri whole = uri(given);
        return utf8(whole.getBaseString()) + " | " + utf8(whole.getFileName()) + " | "
               + utf8(whole.getExtension());
    };
    expectTexts(parts, {"file:///C:/d/a.b.xml -> C:\\d\\ | a.b.xml | .xml",
                        "file:///tmp/a.xml -> \\\\tmp\\ | a.xml | .xml",
                        // On purpose: with no backslash in it, all of a local path is file name.
                        "file:/tmp/d/a.xml -> /tmp/d/ | /tmp/d/a.xml | .xml",
                        "http://h/d/a?x -> http://h/d/ | a?x | ",
                        // On purpose: a host is a last segment like any other.
                        "http://h.com -> http:// | h.com | .com", "d.v1/a -> d.v1/ | a | ",
                        "d%20e/a.png -> d e/ | a.png | .png", "a. -> ./ | a. | .", "d/ -> d/ |  | ",
                        "data:,a.png -> ./ | data:,a.png | ", " -> ./ |  | "});
}

TEST(ZRUri, ChangesTheExtension) {
    const auto changed = [](const std::string& given) {
        ZRUri pdf = uri(given);
        ZRUri none = uri(given);
        const std::string old = utf8(pdf.setExtension(u".pdf"));
        EXPECT_EQ(utf8(none.setExtension(nullptr)), old) << given;
        return utf8(pdf) + " | " + utf8(none) + " | " + old;
    };
    expectTexts(changed, {"a/b.xml -> a/b.pdf | a/b | .xml",
                          "dir.v1/file -> dir.v1/file.pdf | dir.v1/file | ",
                          "dir/ -> dir/ | dir/ | ", "a.b.c -> a.b.pdf | a.b | .c",
                          "data:,a.b -> data:,a.pdf | data:,a | .b", " -> .pdf |  | "});
    ZRUri own = uri(u"a.b");
    EXPECT_EQ(utf8(own.setExtension(own.toString())), ".b");
    EXPECT_EQ(utf8(own), "aa.b");
}

TEST(ZRUri, LosesItsFragmentAndBecomesADirectory) {
    ZRUri whole = uri(u"http://h/a#b#c");
    EXPECT_EQ(utf8(whole.removeFragment()), "#b#c");
    EXPECT_EQ(utf8(whole.removeFragment()), "");
    EXPECT_EQ(utf8(whole.toDirectory()), "http://h/a/");
    EXPECT_EQ(utf8(whole.toDirectory()), "http://h/a/");
    UnicodeString path;
    EXPECT_EQ(utf8(ZRUri::toDirectory(path, u'\\')), "\\");
    EXPECT_EQ(utf8(ZRUri::toDirectory(path, u'\\')), "\\");
    path.setToBogus();
    EXPECT_EQ(utf8(ZRUri(path, URISTR_GUESS_CSS).toDirectory()), "/");
}

TEST(ZRUri, ComparesFilesWithoutCase) {
    EXPECT_TRUE(uri(u"file:///C:/A%20b").isSameFile(uri(u"FILE:///c:/a B")));
    EXPECT_TRUE(uri(u"a").isSameFile(uri(u"A")));
    // On purpose: the two forms have local paths of their own.
    EXPECT_FALSE(uri(u"file:/tmp/a").isSameFile(uri(u"file:///tmp/a")));
    EXPECT_FALSE(uri(u"http://h/a").isSameFile(uri(u"http://h/a"))) << "no files";
    EXPECT_LT(uri(u"Z"), uri(u"a"));
    EXPECT_LT(uri(u"x\U00010000"), uri(u"x\uFF00")) << "by code units";
}

TEST(ZRUri, TellsTheWayFromADirectory) {
    const auto way = [](const std::string& both) {
        const std::size_t from = both.find(" from ");
        return utf8(uri(both.substr(0, from)).getRelativeUri(text(both.substr(from + 6))));
    };
    expectTexts(way, {"file:///C:/a/b/c.png from file:///C:/a/d/e.xml -> ../b/c.png",
                      "file:///C:/a/c.png from file:///C:/a/e.xml -> c.png",
                      "a/b/c/d.png from a/x -> b/c/d.png", "a/d.png from a/b/c/x -> ../../d.png",
                      "http://h/a from http://g/b/c -> ../../h/a", "ab/c from a/c -> ",
                      "a/b from x -> ", "b from a/c -> ", " from a/b -> ", "a/b from  -> ",
                      "A/b from a/b -> ", "a/bb/x from a/b/y -> ../bb/x"});
    UnicodeString deep;
    for (int i = 0; i < 200000; ++i) {
        deep.append(u"d/");
    }
    EXPECT_EQ(uri(u"x/" + deep).getRelativeUri(u"x/y").length(), deep.length()) << "at once";
    EXPECT_EQ(uri(u"y/" + deep).getRelativeUri(u"x/" + deep).length(), 0);
}

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
                    "http://h/a/b + ..///x -> http://h/a///x",
                    "http://h/a/b + //g/x -> file://g/x"});
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
