// Entries of packages, and of packages inside packages, by `jar:` URIs.
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

TEST_F(ZRUriPackage, OpensANeighbourInThePackage) {
    const auto beside = [this](const char* name, const char16_t* reference) {
        return contentOf(ZRUri(entry(name), reference, URISTR_PATH_OR_URI_CSS));
    };
    EXPECT_EQ(beside("dir/x.xml", u"y.xml"), "<y/>");
    EXPECT_EQ(beside("dir/x.xml", u"/dir/y.xml"), "<y/>");
    EXPECT_NE(beside("q.zip!/d/y.xml", u"../r.zip"), "nothing");
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

// Serves packages from memory by a stream that cannot seek.
class PackageResolver : public ZRUriReferenceResolver {
public:
    std::istream* getStream(const UnicodeString& asked) override {
        const std::string name = utf8(asked);
        seen += name + "\n";
        if (name != "mem:p.zip" && name != "file:p.zip") {
            return nullptr;
        }
        return new StreamOver<ShortReadBuf>(outerPackage());
    }

    std::string seen;
};

class ZRUriServedPackage : public ::testing::Test {
protected:
    ZRUriServedPackage() { ZRUri::setUriReferenceResolver(&m_resolver); }
    ~ZRUriServedPackage() override { ZRUri::setUriReferenceResolver(nullptr); }

    PackageResolver m_resolver;
};

TEST_F(ZRUriServedPackage, IsSearchedWithoutSeekingAndTheResolverAskedAtEachStep) {
    EXPECT_EQ(contentOf(uri(u"jar:mem:p.zip!/dir/y.xml")), "<y/>");
    EXPECT_EQ(contentOf(uri(u"jar:mem:p.zip!/p.zip!/r.zip!/x.xml")), "innermost");
    EXPECT_EQ(contentOf(uri(u"jar:mem:p.zip!/missing")), "nothing");
    m_resolver.seen.clear();
    EXPECT_EQ(contentOf(uri(u"jar: jar:my:p.zip!/a")), "nothing");
    EXPECT_EQ(m_resolver.seen, "jar: jar:my:p.zip!/a\njar:my:p.zip\nmy:p.zip\n");
}

// On purpose: a file has to be able to seek.
TEST_F(ZRUriServedPackage, AFileThatCannotSeekIsNoPackage) {
    EXPECT_EQ(contentOf(uri(u"jar:file:p.zip!/dir/y.xml")), "nothing");
    EXPECT_EQ(contentOf(uri(u"jar:jar:file:p.zip!/dir/y.xml")), "<y/>") << "here it need not";
}

}  // namespace
}  // namespace ZroCommon::testing
