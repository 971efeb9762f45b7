// Entries of packages, and of packages inside packages, by `jar:` URIs.
#include <istream>
#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/SmallStack.h"
#include "tests/support/Streams.h"
#include "tests/support/TempFolder.h"
#include "tests/support/ZipBuilder.h"
#include "tests/uri/Fetching.h"

namespace ZroCommon::testing {
namespace {

std::string innerPackage() {
    const std::string innermost = ZipBuilder().stored("x.xml", "innermost").package();
    return ZipBuilder().deflated("d/y.xml", "inner").stored("r.zip", innermost).package();
}

std::string outerPackage() {
    return ZipBuilder()
        .deflated("dir/x.xml", "<x/>")
        .stored("dir/y.xml", "<y/>")
        .stored("q.zip", innerPackage())
        .deflated("p.zip", innerPackage())
        .stored("a%20b", "escaped name")
        .stored("dir/x.xml", "second")
        .stored("!/odd", "odd")
        .package();
}

class ZRUriPackage : public ::testing::Test {
protected:
    UnicodeString name(const std::string& entry) const {
        return u"jar:file://" + m_path + u"!/" + text(entry);
    }

    TempFolder m_folder;
    UnicodeString m_path = m_folder.write("p.zip", outerPackage());
};

TEST_F(ZRUriPackage, OpensAnEntryInAPackageInAPackage) {
    const struct {
        const char* entry;
        const char* content;
    } cases[] = {
        {"dir/x.xml", "<x/>"},
        {"dir/y.xml", "<y/>"},
        {"q.zip!/d/y.xml", "inner"},
        {"p.zip!/d/y.xml", "inner"},
        {"q.zip!/r.zip!/x.xml", "innermost"},
        {"p.zip!/r.zip!/x.xml", "innermost"},
        {"dir/y.xml!/", "<y/>"},
        {"a%20b", "escaped name"},
        {"a b", "nothing"},
        {"missing", "nothing"},
        {"/dir/x.xml", "nothing"},
        {"DIR/x.xml", "nothing"},
        {"!/odd", "nothing"},
        {"dir/x.xml!/a", "nothing"},
        {"missing!/a", "nothing"},
        {"q.zip!/missing", "nothing"},
    };
    for (const auto& [entry, content] : cases) {
        EXPECT_EQ(contentOf(uri(name(entry))), content) << "for: " << entry;
    }
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
    const ZRUri base = uri(name("dir/x.xml"));
    EXPECT_EQ(contentOf(ZRUri(base, u"y.xml", URISTR_PATH_OR_URI_CSS)), "<y/>");
    EXPECT_EQ(contentOf(ZRUri(base, u"/dir/y.xml", URISTR_PATH_OR_URI_CSS)), "<y/>");
    const ZRUri nested(uri(name("q.zip!/d/y.xml")), u"../r.zip", URISTR_PATH_OR_URI_CSS);
    EXPECT_NE(contentOf(nested), "nothing");
}

TEST_F(ZRUriPackage, AnEntryHasNoContentType) {
    UnicodeString type(u"type");
    UnicodeString error(u"error");
    EXPECT_EQ(uri(name("missing")).getStream(&type, &error), nullptr);
    EXPECT_EQ(utf8(type + u" " + error), "type error");
    const std::unique_ptr<std::istream> whole(uri(u"jar:" + m_path).getStream(&type, &error));
    EXPECT_EQ(utf8(type + u" " + error), "type error");
    const std::unique_ptr<std::istream> entry(uri(name("dir/x.xml")).getStream(&type, &error));
    EXPECT_EQ(utf8(type + u" " + error), " error");
}

TEST_F(ZRUriPackage, AnyNumberOfPrefixesIsTakenOff) {
    UnicodeString prefixes;
    for (int i = 0; i < 200000; ++i) {
        prefixes += i % 2 == 0 ? u"jar:" : u"jar: ";
    }
    const ZRUri deep = uri(prefixes + u"file:" + m_path + u"!/dir/y.xml");
    std::string content;
    onSmallStack([&] { content = contentOf(deep); });
    EXPECT_EQ(content, "<y/>");
    EXPECT_EQ(contentOf(uri(prefixes)), "nothing");
}

// Serves packages from memory by streams that do harm.
class PackageResolver : public ZRUriReferenceResolver {
public:
    std::istream* getStream(const UnicodeString& asked) override {
        const std::string name = utf8(asked);
        seen += name + "\n";
        if (name == "throw:p.zip") {
            m_buffer = std::make_unique<ThrowAtBuf>(bytes, throwAt);
        } else if (name == "mem:p.zip" || name == "file:p.zip") {
            m_buffer = std::make_unique<ShortReadBuf>(bytes);
        } else {
            return nullptr;
        }
        return new std::istream(m_buffer.get());
    }

    std::string seen;
    std::string bytes = outerPackage();
    std::size_t throwAt = 0;

private:
    std::unique_ptr<std::streambuf> m_buffer;
};

class ZRUriServedPackage : public ::testing::Test {
protected:
    ZRUriServedPackage() { ZRUri::setUriReferenceResolver(&m_resolver); }
    ~ZRUriServedPackage() override { ZRUri::setUriReferenceResolver(nullptr); }

    PackageResolver m_resolver;
};

TEST_F(ZRUriServedPackage, IsSearchedWithoutSeeking) {
    EXPECT_EQ(contentOf(uri(u"jar:mem:p.zip!/dir/y.xml")), "<y/>");
    EXPECT_EQ(contentOf(uri(u"jar:mem:p.zip!/p.zip!/r.zip!/x.xml")), "innermost");
    EXPECT_EQ(contentOf(uri(u"jar:mem:p.zip!/missing")), "nothing");
}

// On purpose: a file has to be able to seek.
TEST_F(ZRUriServedPackage, AFileThatCannotSeekIsNoPackage) {
    EXPECT_EQ(contentOf(uri(u"jar:file:p.zip!/dir/y.xml")), "nothing");
    EXPECT_EQ(contentOf(uri(u"jar:jar:file:p.zip!/dir/y.xml")), "<y/>") << "here it need not";
}

TEST_F(ZRUriServedPackage, TheResolverIsAskedAtEachStep) {
    EXPECT_EQ(contentOf(uri(u"jar: jar:my:p.zip!/a")), "nothing");
    EXPECT_EQ(m_resolver.seen, "jar: jar:my:p.zip!/a\njar:my:p.zip\nmy:p.zip\n");
}

TEST_F(ZRUriServedPackage, MayThrowAnywhere) {
    for (const char16_t* entry : {u"dir/y.xml", u"p.zip!/r.zip!/x.xml"}) {
        const ZRUri resource = uri(UnicodeString(u"jar:throw:p.zip!/").append(entry));
        m_resolver.throwAt = m_resolver.bytes.size();
        const std::string whole = contentOf(resource);
        EXPECT_NE(whole, "nothing");
        for (std::size_t at = 0; at < m_resolver.bytes.size(); ++at) {
            m_resolver.throwAt = at;
            const std::string part = contentOf(resource);
            EXPECT_TRUE(part == "nothing" || whole.starts_with(part)) << at;
        }
    }
}

// What inflates without end inside a package is passed over piece by piece.
TEST_F(ZRUriServedPackage, ABombBeforeTheEntryIsPassedOver) {
    const std::string zeros(1U << 22U, '\0');
    const std::string inner = ZipBuilder().stored("zeros", zeros).stored("x", "found").package();
    m_resolver.bytes = ZipBuilder().deflated("bomb.zip", inner, 9).package();
    EXPECT_EQ(contentOf(uri(u"jar:mem:p.zip!/bomb.zip!/x")), "found");
}

}  // namespace
}  // namespace ZroCommon::testing
