// Opening, writing and finding files, and the resolver.
#include <cstdlib>
#include <filesystem>
#include <istream>
#include <memory>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/Deflate.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Threads.h"
#include "tests/uri/Fetching.h"
#include "zro/streams/transcoding/ZRTCVStream.h"

namespace ZroCommon::testing {
namespace {

TEST(ZRUriFetch, OpensEveryFormOfOneFile) {
    const TempFolder folder;
    const UnicodeString path = folder.write("a b.xml", "<a/>");
    const UnicodeString escaped = text(folder.path()) + u"/a%20b.xml";
    for (const UnicodeString& form :
         {path, u"file:" + escaped, u"file://" + escaped, u"FILE://" + escaped,
          u"file://localhost" + escaped, u"/" + path, u"url('" + path + u"')"}) {
        const ZRUri resource = uri(form);
        EXPECT_EQ(contentOf(resource), "<a/>") << "for: " << utf8(form);
        EXPECT_TRUE(resource.isFileExists()) << "for: " << utf8(form);
        EXPECT_EQ(contentOf(uri(resource.getLocalPath())), "<a/>") << "for: " << utf8(form);
    }
}

TEST(ZRUriFetch, OpensANeighbour) {
    const TempFolder folder;
    folder.write("b.png", "png");
    const UnicodeString path = folder.file("a.xml");
    for (const UnicodeString& base :
         {path, u"file://" + path, uri(u"file://" + path).getBaseString()}) {
        EXPECT_EQ(contentOf(ZRUri(uri(base), u"b.png", URISTR_PATH_OR_URI_CSS)), "png")
            << "for: " << utf8(base);
    }
}

TEST(ZRUriFetch, LeavesBothTextsAloneForFiles) {
    const TempFolder folder;
    UnicodeString type(u"type");
    UnicodeString error(u"error");
    for (const UnicodeString& path : {folder.write("a", "x"), folder.file("missing")}) {
        const std::unique_ptr<std::istream> stream(uri(path).getStream(&type, &error));
        EXPECT_EQ(utf8(type), "type");
        EXPECT_EQ(utf8(error), "error");
    }
}

TEST(ZRUriFetch, RefusesWhatIsNoFile) {
    const TempFolder folder;
    folder.write("a", "x");
    EXPECT_EQ(contentOf(uri(text(folder.path()))), "nothing") << "a directory";
    EXPECT_TRUE(uri(text(folder.path())).isFileExists()) << "yet it exists";
    EXPECT_EQ(contentOf(uri(u"file:" + folder.file("a") + u"%00.png")), "nothing");
    EXPECT_EQ(contentOf(uri(u"C:" + folder.file("a"))), "nothing");
    EXPECT_EQ(contentOf(uri(u"")), "nothing");
    EXPECT_FALSE(uri(u"").isFileExists());
}

TEST(ZRUriFetch, SaysWhyAnAddressCannotBeOpened) {
    for (const char* address : {"ftp://h/a", "mailto:a@b", "data:,x"}) {
        UnicodeString error;
        EXPECT_EQ(uri(text(address)).getStream(nullptr, &error), nullptr);
        EXPECT_EQ(utf8(error).substr(0, 7), "Cannot ") << "for: " << address;
        EXPECT_EQ(uri(text(address)).getStream(nullptr), nullptr) << "without a text to set";
    }
}

TEST(ZRUriFetch, WritesAFile) {
    const TempFolder folder;
    folder.write("old", "much longer than before");
    ZRUri any;
    for (const char* name : {"old", "new.pdf"}) {
        std::ostream* stream = any.createOStream(u"file://" + folder.file(name));
        ASSERT_NE(stream, nullptr);
        *stream << "a\nb";
        any.releaseOStream(stream);
        EXPECT_EQ(folder.read(name), "a\nb");
    }
    any.releaseOStream(nullptr);
}

TEST(ZRUriFetch, RefusesToWriteWhatIsNoFile) {
    const TempFolder folder;
    ZRUri any;
    for (const UnicodeString& name :
         {UnicodeString(u"http://h/a"), UnicodeString(), UnicodeString(u"file:"),
          folder.file("missing/a"), text(folder.path()), UnicodeString(u"C:\\zro-test.pdf")}) {
        EXPECT_EQ(any.createOStream(name), nullptr) << "for: " << utf8(name);
    }
    EXPECT_FALSE(std::filesystem::exists("C:\\zro-test.pdf"));
}

TEST(ZRUriFetch, AsksWhetherAFileExists) {
    const TempFolder folder;
    const UnicodeString path = folder.write("\xC3\xA4.txt", "");
    EXPECT_TRUE(ZRUri::isFileExists(utf8(path).c_str()));
    EXPECT_TRUE(ZRUri::isFileExists(UnicodeString(path).getTerminatedBuffer()));
    EXPECT_FALSE(ZRUri::isFileExists((folder.path() + "/no").c_str()));
    EXPECT_FALSE(ZRUri::isFileExists(static_cast<const char*>(nullptr)));
    EXPECT_FALSE(ZRUri::isFileExists(static_cast<const char16_t*>(nullptr)));
    EXPECT_FALSE(uri(u"http://h/").isFileExists());
}

TEST(ZRUriFetch, TellsGzipByItsFirstBytes) {
    const TempFolder folder;
    const struct {
        std::string bytes;
        bool isGzip;
        std::string content;
    } cases[] = {
        {deflated("content", kGzip), true, "content"},
        {"plain", false, "plain"},
        {"\x1F", false, "\x1F"},
        {"", false, ""},
    };
    for (const auto& [bytes, isGzip, content] : cases) {
        const ZRUri file = uri(folder.write("a.gz", bytes));
        EXPECT_EQ(file.isGzip(), isGzip) << content;
        const std::unique_ptr<std::istream> fromFile(file.getGzipStream());
        ASSERT_NE(fromFile, nullptr);
        std::istringstream stream(bytes);
        stream.seekg(0, std::ios_base::end);
        EXPECT_EQ(ZRUri::isGzip(stream), isGzip) << content;
        EXPECT_TRUE(!isGzip || stream.tellg() == std::streampos(2)) << content;
        stream.clear();
        const std::unique_ptr<std::istream> fromStream(ZRUri::getGzipStream(stream));
        for (std::istream* unpacked : {fromFile.get(), fromStream.get()}) {
            EXPECT_EQ(std::string(std::istreambuf_iterator<char>(*unpacked), {}), content);
        }
    }
    EXPECT_FALSE(uri(folder.file("missing")).isGzip());
    EXPECT_EQ(uri(folder.file("missing")).getGzipStream(), nullptr);
    std::istringstream throwing;
    throwing.exceptions(std::ios_base::failbit | std::ios_base::eofbit);
    EXPECT_FALSE(ZRUri::isGzip(throwing));
}

class CountingResolver : public ZRUriReferenceResolver {
public:
    std::istream* getStream(const UnicodeString& asked) override {
        seen = utf8(asked);
        if (seen == "my:throw") {
            throw std::runtime_error("resolver");
        }
        return seen.starts_with("my:") ? new std::istringstream("served") : nullptr;
    }

    std::string seen;
};

class ZRUriResolver : public ::testing::Test {
protected:
    ZRUriResolver() { ZRUri::setUriReferenceResolver(&m_resolver); }
    ~ZRUriResolver() override { ZRUri::setUriReferenceResolver(nullptr); }

    CountingResolver m_resolver;
};

TEST_F(ZRUriResolver, ServesBeforeAnythingElse) {
    EXPECT_EQ(contentOf(uri(u"my://h/a")), "served");
    EXPECT_EQ(m_resolver.seen, "my://h/a");
}

TEST_F(ZRUriResolver, PassesOnWhatItDoesNotServe) {
    const TempFolder folder;
    const UnicodeString path = folder.write("a", "from the file");
    EXPECT_EQ(contentOf(uri(path)), "from the file");
    EXPECT_EQ(m_resolver.seen, "file:" + utf8(path));
    const std::unique_ptr<std::istream> none(uri(path).getStreamFromResolver());
    EXPECT_EQ(none, nullptr);
}

TEST_F(ZRUriResolver, MayThrowWithoutHarm) {
    EXPECT_EQ(contentOf(uri(u"my:throw")), "nothing");
    EXPECT_EQ(uri(u"my:throw").getStreamFromResolver(), nullptr);
}

TEST_F(ZRUriResolver, GivesThePreviousOneBack) {
    EXPECT_EQ(ZRUri::getUriReferenceResolver(), &m_resolver);
    CountingResolver other;
    EXPECT_EQ(ZRUri::setUriReferenceResolver(&other), &m_resolver);
    EXPECT_EQ(ZRUri::setUriReferenceResolver(nullptr), &other);
    EXPECT_EQ(uri(u"my:a").getStreamFromResolver(), nullptr);
}

TEST_F(ZRUriResolver, ThreadsMayChangeItAndTheTablesWhileOthersOpen) {
    class Serving : public ZRUriReferenceResolver {
        std::istream* getStream(const UnicodeString&) override {
            return new std::istringstream("served");
        }
    };
    Serving serving;
    inThreads(4, [&serving](int number) {
        for (int i = 0; i < 200; ++i) {
            if (number == 0) {
                ZRUri::setUriReferenceResolver(i % 2 == 0 ? &serving : nullptr);
                ZRTCVStream::setTCVTablePath(i % 2 == 0 ? u"/no/such" : u"");
            }
            const std::string content = contentOf(uri(u"/no/such/file"));
            EXPECT_TRUE(content == "served" || content == "nothing");
            std::istringstream bytes("\xA4\xA2");
            ZRTCVStream stream(&bytes, "EUC-JP");
            EXPECT_EQ(stream.get(), 0x42);
        }
    });
}

class ZRUriModule : public ::testing::Test {
protected:
    static constexpr const char* kVariable = "ZRO_TEST_MODULE_URI";

    ~ZRUriModule() override { unsetenv(kVariable); }
    static void setVariable(const std::string& value) { setenv(kVariable, value.c_str(), 1); }
    static std::string moduleUri(const char* module, const char* name) {
        return utf8(ZRUri::getModuleUri(module, name, kVariable));
    }
};

TEST_F(ZRUriModule, TakesTheDirectoryOfTheVariable) {
    const TempFolder folder;
    setVariable(folder.path());
    EXPECT_EQ(moduleUri(nullptr, "a.xml"), "file:" + folder.path() + "/a.xml");
    EXPECT_EQ(moduleUri("", ""), "file:" + folder.path());
    setVariable(folder.path() + "/");
    const auto above = std::filesystem::path(folder.path()).parent_path().string();
    EXPECT_EQ(moduleUri(nullptr, "../a.xml"), "file:" + above + "/a.xml");
    EXPECT_EQ(moduleUri(nullptr, nullptr), "file:" + folder.path());
}

TEST_F(ZRUriModule, FallsBackToTheWorkingDirectory) {
    EXPECT_EQ(moduleUri(nullptr, "a.xml"), "a.xml");
    EXPECT_EQ(moduleUri(nullptr, nullptr), ".");
    EXPECT_EQ(moduleUri("libno-such-module.so", "b/a.dll"), "b/a.dll");
    EXPECT_EQ(utf8(ZRUri::getModuleUri(nullptr, nullptr, nullptr)), ".");
}

TEST_F(ZRUriModule, IgnoresAVariableThatNamesNoFile) {
    for (const std::string& value : {std::string("/no/such/folder"), std::string("http://h/"),
                                     std::string(), "/tmp" + std::string(1020, '/')}) {
        setVariable(value);
        EXPECT_EQ(moduleUri(nullptr, "a.xml"), "a.xml") << "for: " << value;
    }
    setVariable("/tmp" + std::string(1019, '/'));
    EXPECT_NE(moduleUri(nullptr, "a.xml"), "a.xml") << "1023 units are still a value";
}

TEST_F(ZRUriModule, FindsTheDirectoryOfALoadedModule) {
    const std::string found = moduleUri("libc.so.6", "a.xml");
    EXPECT_EQ(found.substr(0, 6), "file:/");
    EXPECT_EQ(found.substr(found.size() - 6), "/a.xml");
}

TEST(ZRUriLibrary, LoadsALibraryAndFindsASymbol) {
    const ZRUri library = uri(u"libc.so.6");
    HINSTANCE handle = library.loadLibrary();
    ASSERT_NE(handle, nullptr);
    EXPECT_NE(ZRUri::getProcAddress(handle, "qsort"), nullptr);
    EXPECT_EQ(ZRUri::getProcAddress(handle, "no such symbol"), nullptr);
    ZRUri::freeLibrary(handle);
    ZRUri::freeLibrary(nullptr);
    EXPECT_EQ(ZRUri::getProcAddress(nullptr, "qsort"), nullptr);
    EXPECT_EQ(uri(u"/no/such/library.so").loadLibrary(), nullptr);
    EXPECT_EQ(ZRUri().loadLibrary(), nullptr);
}

}  // namespace
}  // namespace ZroCommon::testing
