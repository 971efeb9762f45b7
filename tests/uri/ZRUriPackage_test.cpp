// Entries of packages, and of packages inside packages, by `jar:` URIs.
#include "tests/support/FakeWeb.h"
#include "tests/support/SmallStack.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "tests/support/ZipBuilder.h"
#include "tests/uri/Fetching.h"

namespace ZroCommon::testing {
namespace {

std::string outerPackage() {
    const std::string innermost = ZipBuilder().stored("x.xml", "innermost").package();
    const std::string inner =
        ZipBuilder().deflated("d/y.xml", "inner").stored("r.zip", innermost).package();
    return ZipBuilder()
        .deflated("dir/x.xml", "<x/>")
        .stored("dir/y.xml", "<y/>")
        .stored("q.zip", inner)
        .deflated("p.zip", inner)
        .stored("a%20b", "escaped name")
        .stored("dir/x.xml", "second")
        .stored("!/odd", "odd")
        .package();
}

class ZRUriPackage : public ::testing::Test {
protected:
    ZRUri entry(const std::string& name) const {
        return uri(u"jar:file://" + m_path + u"!/" + text(name));
    }

    TempFolder m_folder;
    UnicodeString m_path = m_folder.write("p.zip", outerPackage());
};

TEST_F(ZRUriPackage, OpensAnEntryInAPackageInAPackage) {
    expectTexts([this](const std::string& name) { return contentOf(entry(name)); },
                {"dir/x.xml -> <x/>", "dir/y.xml -> <y/>", "q.zip!/d/y.xml -> inner",
                 "p.zip!/d/y.xml -> inner", "q.zip!/r.zip!/x.xml -> innermost",
                 "p.zip!/r.zip!/x.xml -> innermost", "dir/y.xml!/ -> <y/>", "a%20b -> escaped name",
                 "a b -> nothing", "missing -> nothing", "/dir/x.xml -> nothing",
                 "DIR/x.xml -> nothing", "!/odd -> nothing", "dir/x.xml!/a -> nothing",
                 "missing!/a -> nothing", "q.zip!/missing -> nothing"});
}

TEST_F(ZRUriPackage, TakesAnyFormOfThePackagesName) {
    for (const UnicodeString& outer : {m_path, u"file:" + m_path, u"'" + m_path + u"'",
                                       u"url( file://" + m_path + u" )", u" file://" + m_path}) {
        EXPECT_EQ(contentOf(uri(u"JAR:" + outer + u"!/dir/y.xml")), "<y/>") << utf8(outer);
        EXPECT_EQ(contentOf(uri(u"jar:'jar: jar:" + outer + u"'!/dir/y.xml")), "<y/>")
            << utf8(outer);
    }
    EXPECT_EQ(contentOf(uri(u"jar:file:" + m_path)), outerPackage()) << "no entry is asked for";
    EXPECT_EQ(contentOf(uri(u"jar:file:" + m_path + u"!/")), outerPackage());
    EXPECT_EQ(contentOf(uri(u"jar:file:/no/such.zip!/a")), "nothing");
    EXPECT_EQ(contentOf(uri(u"jar:")), "nothing");
    const std::string descriptor = "PK\x07\x08" + std::string(12, '\0');
    for (const std::string& noPackage : {std::string("PK"), descriptor + outerPackage()}) {
        const UnicodeString path = m_folder.write("file", noPackage);
        EXPECT_EQ(contentOf(uri(u"jar:file:" + path + u"!/dir/y.xml")), "nothing") << noPackage;
    }
}

TEST_F(ZRUriPackage, AnEntryHasNoContentType) {
    EXPECT_EQ(textsOf(entry("missing")), "type error");
    EXPECT_EQ(textsOf(uri(u"jar:" + m_path)), "type error");
    EXPECT_EQ(textsOf(entry("dir/x.xml")), " error");
}

// A scheme named many times over must not cost as many stack frames.
TEST_F(ZRUriPackage, AnyNumberOfPrefixesIsTakenOff) {
    UnicodeString prefixes;
    for (int i = 0; i < 200000; ++i) {
        prefixes += i % 2 == 0 ? u"jar:" : u"jar: ";
    }
    onSmallStack([&] {
        const ZRUri base = uri(u"file:" + m_path);
        EXPECT_EQ(contentOf(ZRUri(base, prefixes + u"p.zip!/dir/y.xml", URISTR_GUESS)), "<y/>");
        EXPECT_EQ(contentOf(uri(prefixes)), "nothing");
    });
}

// Serves a package by streams that cannot seek.
class ZRUriServedPackage : public ::testing::Test {
protected:
    struct ForwardWeb : FakeWeb {
        using FakeWeb::FakeWeb;
        std::istream* open(const std::string& bytes) override {
            return new StreamOver<ShortReadBuf>(bytes);
        }
    };

    ForwardWeb m_web{{{"mem:p.zip", outerPackage()}, {"file:p.zip", outerPackage()}}};
};

TEST_F(ZRUriServedPackage, IsSearchedWithoutSeekingAndTheResolverAskedAtEachStep) {
    EXPECT_EQ(contentOf(uri(u"jar: jar:my:p.zip!/a")), "nothing");
    EXPECT_EQ(m_web.asked(),
              (std::vector<std::string>{"jar: jar:my:p.zip!/a", "jar:my:p.zip", "my:p.zip"}));
    EXPECT_EQ(contentOf(uri(u"jar:mem:p.zip!/dir/y.xml")), "<y/>");
    EXPECT_EQ(contentOf(uri(u"jar:mem:p.zip!/p.zip!/r.zip!/x.xml")), "innermost");
    EXPECT_EQ(contentOf(uri(u"jar:mem:p.zip!/missing")), "nothing");
}

// On purpose: a file has to be able to seek.
TEST_F(ZRUriServedPackage, AFileThatCannotSeekIsNoPackage) {
    EXPECT_EQ(contentOf(uri(u"jar:file:p.zip!/dir/y.xml")), "nothing");
    EXPECT_EQ(contentOf(uri(u"jar:jar:file:p.zip!/dir/y.xml")), "<y/>") << "here it need not";
}

}  // namespace
}  // namespace ZroCommon::testing
