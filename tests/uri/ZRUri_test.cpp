#include "zro/uri/ZRUri.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/support/SmallStack.h"
#include "tests/support/Text.h"

namespace ZroCommon::testing {
namespace {

constexpr URISTRTYPE kEveryType[] = {URISTR_GUESS, URISTR_PATH_OR_URI, URISTR_GUESS_CSS,
                                     URISTR_PATH_OR_URI_CSS};

ZRUri uri(const UnicodeString& text) {
    return {text, URISTR_GUESS};
}

struct NormalizedRow {
    const char* text;
    const char* byType[4];  // guess, path or URI, and both with the CSS wrapping taken off
};

TEST(ZRUri, NormalizesByWhatTheTextIs) {
    const NormalizedRow cases[] = {
        {"C:\\a b\\c.xml",
         {"file:///C:/a%20b/c.xml", "file:///C:/a%20b/c.xml", "file:///C:/a%20b/c.xml",
          "file:///C:/a%20b/c.xml"}},
        {"\\\\srv\\share\\c.xml",
         {"file://srv/share/c.xml", "file://srv/share/c.xml", "file://srv/share/c.xml",
          "file://srv/share/c.xml"}},
        {"a\\b c.xml", {"a/b%20c.xml", "a/b%20c.xml", "a/b%20c.xml", "a/b%20c.xml"}},
        {"/a b", {"/a%20b", "file:/a%20b", "/a%20b", "file:/a%20b"}},
        {"//tmp/a", {"//tmp/a", "file://tmp/a", "//tmp/a", "file://tmp/a"}},
        {"a%20b", {"a%20b", "a%2520b", "a%20b", "a%2520b"}},
        {"50%.png", {"50%25.png", "50%25.png", "50%25.png", "50%25.png"}},
        {"a%2", {"a%252", "a%252", "a%252", "a%252"}},
        {" a ", {"a", "a", "a", "a"}},
        {" \t", {"", "", "", ""}},
        {"file:/a b", {"file:/a b", "file:/a b", "file:/a b", "file:/a b"}},
        {"FILE:\\a b", {"FILE:/a b", "FILE:\\a b", "FILE:/a b", "FILE:\\a b"}},
        {"url('x.png')", {"url('x.png')", "url('x.png')", "x.png", "x.png"}},
        {"url( 'x y' )", {"url(%20'x%20y'%20)", "url(%20'x%20y'%20)", "x%20y", "x%20y"}},
        {"URL(x)", {"URL(x)", "URL(x)", "URL(x)", "URL(x)"}},
        {" url(x)", {"url(x)", "url(x)", "url(x)", "url(x)"}},
        {"url()", {"url()", "url()", "", ""}},
        {"\"a\"", {"%22a%22", "%22a%22", "a", "a"}},
        {"'a\"", {"'a%22", "'a%22", "'a%22", "'a%22"}},
    };
    for (const auto& [given, byType] : cases) {
        for (const URISTRTYPE type : kEveryType) {
            EXPECT_EQ(utf8(ZRUri(text(given), type)), byType[type])
                << "for: " << given << ", type " << int{type};
        }
    }
}

// On purpose: what a text is gets decided before blanks, "url(...)" and quotes go.
TEST(ZRUri, ClassifiesTheTextAsItWasGiven) {
    EXPECT_EQ(utf8(ZRUri(" C:/x", URISTR_GUESS)), "C:/x");
    EXPECT_EQ(utf8(ZRUri(u"url(C:\\x)", URISTR_GUESS_CSS)), "C:%5Cx");
    EXPECT_EQ(utf8(ZRUri(u"'C:/x'", URISTR_GUESS_CSS)), "C:/x");
    EXPECT_EQ(utf8(ZRUri(u"'C:\\x'", URISTR_GUESS_CSS)), "file:///C:/x");
}

TEST(ZRUri, ALoneQuotationMarkIsAnEmptyText) {
    EXPECT_TRUE(ZRUri(u"'", URISTR_GUESS_CSS).isEmpty());
    EXPECT_TRUE(ZRUri(u"url(\")", URISTR_PATH_OR_URI_CSS).isEmpty());
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
    const struct {
        const char* text;
        const char* scheme;
        bool isFile;
    } cases[] = {
        {"http://h", "http", false},
        {"A+-.9:x", "A+-.9", false},
        {" C:/x", "", true},
        {"file:x", "file", true},
        {"File:x", "File", true},
        {"1ab:x", "", true},
        {"a/b:c", "", true},
        {"", "", true},
        {"ab", "", true},
        {"a", "", true},
        {"jar:x", "jar", false},
        {"\xC3\xA9t:x", "", true},
    };
    for (const auto& [given, scheme, isFile] : cases) {
        const ZRUri found = uri(text(given));
        EXPECT_EQ(utf8(found.getScheme()), scheme) << "for: " << given;
        EXPECT_EQ(found.isAbsolute(), *scheme != '\0') << "for: " << given;
        EXPECT_EQ(found.isFile(), isFile) << "for: " << given;
    }
    EXPECT_TRUE(uri(u"JAR:x").isJarScheme());
    EXPECT_TRUE(uri(u"Data:,x").isDataScheme());
    EXPECT_FALSE(uri(u"data").isDataScheme());
}

TEST(ZRUri, GivesALocalPath) {
    const struct {
        const char* uri;
        const char* path;
    } cases[] = {
        {"file:///C:/a%20b/c.xml", "C:\\a b\\c.xml"},
        {"file:/C:/a", "C:\\a"},
        {"file:C:/a", "C:\\a"},
        {"file://srv/share/x", "\\\\srv\\share\\x"},
        {"file:///srv/share/x", "\\\\srv\\share\\x"},
        {"FILE:////srv%2Fx", "\\\\srv\\x"},
        {"file:/a/b%20c", "/a/b c"},
        {"file:a%5Cb", "a\\b"},
        {"a%20b/c", "a b/c"},
        {"http://h/a%20b", "http://h/a%20b"},
        {"file:", ""},
        {"", ""},
    };
    for (const auto& [given, path] : cases) {
        EXPECT_EQ(utf8(uri(text(given)).getLocalPath()), path) << "for: " << given;
    }
}

TEST(ZRUri, TakesEscapesOffAsBytesOfUtf8) {
    const struct {
        const char* text;
        const char* plain;
    } cases[] = {
        {"plain", "plain"},
        {"%41%6a%6A", "Ajj"},
        {"%E3%81%82", "\xE3\x81\x82"},
        {"%", "%"},
        {"%4", "%4"},
        {"%4g%41", "%4gA"},
        {"%%41", "%A"},
        {"%80", "\xEF\xBF\xBD"},
        {"100%25", "100%"},
    };
    for (const auto& [given, plain] : cases) {
        EXPECT_EQ(utf8(ZRUri::unescape(text(given))), plain) << "for: " << given;
    }
}

TEST(ZRUri, NamesItsParts) {
    const struct {
        const char* uri;
        const char* base;
        const char* file;
        const char* extension;
    } cases[] = {
        {"file:///C:/d/a.b.xml", "C:\\d\\", "a.b.xml", ".xml"},
        {"file:///tmp/a.xml", "\\\\tmp\\", "a.xml", ".xml"},
        // On purpose: with no backslash in it, the whole local path is the file name.
        {"file:/tmp/d/a.xml", "/tmp/d/", "/tmp/d/a.xml", ".xml"},
        {"http://h/d/a?x", "http://h/d/", "a?x", ""},
        // On purpose: a host is a last segment like any other.
        {"http://h.com", "http://", "h.com", ".com"},
        {"d.v1/a", "d.v1/", "a", ""},
        {"d%20e/a.png", "d e/", "a.png", ".png"},
        {"a.", "./", "a.", "."},
        {"d/", "d/", "", ""},
        {"data:,a.png", "./", "data:,a.png", ""},
        {"", "./", "", ""},
    };
    for (const auto& [given, base, file, extension] : cases) {
        const ZRUri whole = uri(text(given));
        EXPECT_EQ(utf8(whole.getBaseString()), base) << "for: " << given;
        EXPECT_EQ(utf8(whole.getFileName()), file) << "for: " << given;
        EXPECT_EQ(utf8(whole.getExtension()), extension) << "for: " << given;
    }
}

TEST(ZRUri, ChangesTheExtension) {
    const struct {
        const char* uri;
        const char* changed;
        const char* removed;
        const char* old;
    } cases[] = {
        {"a/b.xml", "a/b.pdf", "a/b", ".xml"},
        {"dir.v1/file", "dir.v1/file.pdf", "dir.v1/file", ""},
        {"dir/", "dir/", "dir/", ""},
        {"a.b.c", "a.b.pdf", "a.b", ".c"},
        {"data:,a.b", "data:,a.pdf", "data:,a", ".b"},
        {"", ".pdf", "", ""},
    };
    for (const auto& [given, changed, removed, old] : cases) {
        ZRUri first = uri(text(given));
        EXPECT_EQ(utf8(first.setExtension(u".pdf")), old) << "for: " << given;
        EXPECT_EQ(utf8(first), changed) << "for: " << given;
        ZRUri second = uri(text(given));
        EXPECT_EQ(utf8(second.setExtension(nullptr)), old) << "for: " << given;
        EXPECT_EQ(utf8(second), removed) << "for: " << given;
    }
}

TEST(ZRUri, SetsItsOwnTextAsExtension) {
    ZRUri whole = uri(u"a.b");
    EXPECT_EQ(utf8(whole.setExtension(whole.toString())), ".b");
    EXPECT_EQ(utf8(whole), "aa.b");
}

TEST(ZRUri, CutsTheFragment) {
    ZRUri whole = uri(u"http://h/a#b#c");
    EXPECT_EQ(utf8(whole.removeFragment()), "#b#c");
    EXPECT_EQ(utf8(whole), "http://h/a");
    EXPECT_EQ(utf8(whole.removeFragment()), "");
}

TEST(ZRUri, BecomesADirectory) {
    ZRUri whole = uri(u"a");
    EXPECT_EQ(utf8(whole.toDirectory()), "a/");
    EXPECT_EQ(utf8(whole.toDirectory()), "a/");
    UnicodeString path;
    EXPECT_EQ(utf8(ZRUri::toDirectory(path, u'\\')), "\\");
    EXPECT_EQ(utf8(ZRUri::toDirectory(path, u'\\')), "\\");
}

TEST(ZRUri, ComparesFilesWithoutCase) {
    EXPECT_TRUE(uri(u"file:///C:/A%20b").isSameFile(uri(u"FILE:///c:/a B")));
    EXPECT_TRUE(uri(u"a").isSameFile(uri(u"A")));
    // On purpose: the two forms have local paths of their own.
    EXPECT_FALSE(uri(u"file:/tmp/a").isSameFile(uri(u"file:///tmp/a")));
    EXPECT_FALSE(uri(u"http://h/a").isSameFile(uri(u"http://h/a"))) << "no files";
}

TEST(ZRUri, OrdersByCodeUnits) {
    EXPECT_LT(uri(u"Z"), uri(u"a"));
    EXPECT_LT(uri(u"x\U00010000"), uri(u"x\uFF00"));
}

TEST(ZRUri, TellsTheWayFromADirectory) {
    const struct {
        const char* uri;
        const char* base;
        const char* relative;
    } cases[] = {
        {"file:///C:/a/b/c.png", "file:///C:/a/d/e.xml", "../b/c.png"},
        {"file:///C:/a/c.png", "file:///C:/a/e.xml", "c.png"},
        {"a/b/c/d.png", "a/x", "b/c/d.png"},
        {"a/d.png", "a/b/c/x", "../../d.png"},
        {"http://h/a", "http://g/b/c", "../../h/a"},
        {"ab/c", "a/c", ""},
        {"a/b", "x", ""},
        {"b", "a/c", ""},
        {"", "a/b", ""},
        {"a/b", "", ""},
        {"A/b", "a/b", ""},
        {"a/bb/x", "a/b/y", "../bb/x"},
    };
    for (const auto& [given, base, relative] : cases) {
        EXPECT_EQ(utf8(uri(text(given)).getRelativeUri(text(base))), relative)
            << "for: " << given << " from " << base;
    }
}

TEST(ZRUri, FindsTheWayThroughManyDirectoriesAtOnce) {
    UnicodeString deep;
    for (int i = 0; i < 200000; ++i) {
        deep.append(u"d/");
    }
    EXPECT_EQ(uri(u"x/" + deep).getRelativeUri(u"x/y").length(), deep.length());
    EXPECT_EQ(uri(u"y/" + deep).getRelativeUri(u"x/" + deep).length(), 0);
}

TEST(ZRUri, AcceptsABogusText) {
    UnicodeString bogus;
    bogus.setToBogus();
    ZRUri whole(bogus, URISTR_GUESS_CSS);
    EXPECT_EQ(utf8(whole.toDirectory()), "/");
}

// A scheme named a million times over must not cost a million stack frames.
TEST(ZRUri, TakesAMillionJarPrefixesInASmallStack) {
    UnicodeString jars;
    for (int i = 0; i < 1000000; ++i) {
        jars.append(u"jar:");
    }
    onSmallStack([&jars] {
        const ZRUri resolved(uri(u"http://h/d/"), jars + u" x", URISTR_PATH_OR_URI_CSS);
        EXPECT_TRUE(resolved.toString().endsWith(u"jar:http://h/d/x"));
        EXPECT_EQ(resolved.getStream(nullptr), nullptr);
    });
}

}  // namespace
}  // namespace ZroCommon::testing
