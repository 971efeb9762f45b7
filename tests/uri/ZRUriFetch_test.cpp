// Opening, writing and finding files, and the resolver.
#include <cstdlib>
#include <filesystem>

#include "tests/support/Deflate.h"
#include "tests/support/FakeWeb.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "tests/support/Threads.h"
#include "tests/uri/Fetching.h"
#include "zro/streams/transcoding/ZRTCVStream.h"

namespace ZroCommon::testing {
namespace {

TEST(ZRUriFetch, OpensEveryFormOfAFileAndItsNeighbour) {
    const TempFolder folder;
    folder.write("b.png", "png");
    const UnicodeString path = folder.write("a b.xml", "<a/>");
    const UnicodeString escaped = text(folder.path()) + u"/a%20b.xml";
    for (const UnicodeString& form :
         {path, u"file:" + escaped, u"file://" + escaped, u"FILE://" + escaped,
          u"file://localhost" + escaped, u"/" + path, u"url('" + path + u"')"}) {
        const ZRUri resource = uri(form);
        EXPECT_EQ(contentOf(resource), "<a/>") << "for: " << utf8(form);
        EXPECT_TRUE(resource.isFileExists()) << "for: " << utf8(form);
        EXPECT_EQ(contentOf(uri(resource.getLocalPath())), "<a/>") << "for: " << utf8(form);
        for (const ZRUri& base : {resource, uri(resource.getBaseString())}) {
            EXPECT_EQ(contentOf(ZRUri(base, u"b.png", URISTR_PATH_OR_URI_CSS)), "png")
                << "for: " << utf8(base);
        }
    }
    EXPECT_EQ(textsOf(uri(path)), "type error");
    EXPECT_EQ(textsOf(uri(folder.file("missing"))), "type error");
}

TEST(ZRUriFetch, RefusesWhatIsNoFile) {
    const TempFolder folder;
    folder.write("a", "x");
    EXPECT_EQ(contentOf(uri(text(folder.path()))), "nothing") << "a directory";
    EXPECT_TRUE(uri(text(folder.path())).isFileExists()) << "yet it exists";
    EXPECT_EQ(contentOf(uri(u"file:" + folder.file("a") + u"%00.png")), "nothing");
    EXPECT_EQ(contentOf(uri(u"C:" + folder.file("a"))), "nothing");
    EXPECT_EQ(contentOf(uri(u"")), "nothing");
    for (const char* address : {"ftp://h/a", "mailto:a@b", "data:,x"}) {
        EXPECT_EQ(textsOf(uri(text(address))).substr(0, 12), "type Cannot ") << address;
        EXPECT_EQ(contentOf(uri(text(address))), "nothing") << "without a text to set";
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
    EXPECT_FALSE(uri(u"").isFileExists());
}

TEST(ZRUriFetch, TellsGzipByItsFirstBytes) {
    const TempFolder folder;
    for (const auto& [bytes, isGzip, content] :
         Rows<std::string, bool, std::string>{{deflated("content", kGzip), true, "content"},
                                              {"plain", false, "plain"},
                                              {"\x1F", false, "\x1F"},
                                              {"", false, ""}}) {
        const ZRUri file = uri(folder.write("a.gz", bytes));
        EXPECT_EQ(file.isGzip(), isGzip) << content;
        const std::unique_ptr<std::istream> fromFile(file.getGzipStream());
        EXPECT_TRUE(fromFile && restOf(*fromFile) == content) << content;
        std::istringstream stream(bytes);
        stream.seekg(0, std::ios_base::end);
        EXPECT_EQ(ZRUri::isGzip(stream), isGzip) << content;
        EXPECT_TRUE(!isGzip || stream.tellg() == std::streampos(2)) << content;
        stream.clear();
        const std::unique_ptr<std::istream> fromStream(ZRUri::getGzipStream(stream));
        EXPECT_TRUE(fromStream && restOf(*fromStream) == content) << content;
    }
    EXPECT_FALSE(uri(folder.file("missing")).isGzip());
    EXPECT_EQ(uri(folder.file("missing")).getGzipStream(), nullptr);
    std::istringstream throwing;
    throwing.exceptions(std::ios_base::failbit | std::ios_base::eofbit);
    EXPECT_FALSE(ZRUri::isGzip(throwing));
}

TEST(ZRUriResolver, ServesBeforeAnythingElse) {
    const TempFolder folder;
    const UnicodeString path = folder.write("a", "from the file");
    const FakeWeb web(FakeWeb::Resources{{"my://h/a", "served"}});
    EXPECT_EQ(contentOf(uri(u"my://h/a")), "served");
    EXPECT_EQ(contentOf(uri(path)), "from the file");
    EXPECT_EQ(web.asked().back(), "file:" + utf8(path));
    EXPECT_EQ(uri(path).getStreamFromResolver(), nullptr);
    struct : ZRUriReferenceResolver {
        std::istream* getStream(const UnicodeString& /*uri*/) override { throw 1; }
    } throwing;
    EXPECT_EQ(ZRUri::setUriReferenceResolver(&throwing), &web);
    EXPECT_EQ(ZRUri::getUriReferenceResolver(), &throwing);
    EXPECT_EQ(contentOf(uri(u"my://h/a")), "nothing");
    EXPECT_EQ(uri(u"my://h/a").getStreamFromResolver(), nullptr);
    ZRUri::setUriReferenceResolver(nullptr);
    EXPECT_EQ(uri(u"my://h/a").getStreamFromResolver(), nullptr);
}

TEST(ZRUriResolver, ThreadsMayChangeItAndTheTablesWhileOthersOpen) {
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

std::string moduleUri(const std::string& variable, const char* module, const char* name) {
    setenv("ZRO_TEST_MODULE_URI", variable.c_str(), 1);
    std::string result = utf8(ZRUri::getModuleUri(module, name, "ZRO_TEST_MODULE_URI"));
    unsetenv("ZRO_TEST_MODULE_URI");
    return result;
}

TEST(ZRUriModule, TakesTheDirectoryOfTheVariable) {
    const TempFolder folder;
    const auto above = std::filesystem::path(folder.path()).parent_path().string();
    EXPECT_EQ(moduleUri(folder.path(), nullptr, "a.xml"), "file:" + folder.path() + "/a.xml");
    EXPECT_EQ(moduleUri(folder.path(), "", ""), "file:" + folder.path());
    EXPECT_EQ(moduleUri(folder.path() + "/", nullptr, "../a.xml"), "file:" + above + "/a.xml");
    EXPECT_EQ(moduleUri(folder.path() + "/", nullptr, nullptr), "file:" + folder.path());
    for (const std::string& none : {std::string("/no/such/folder"), std::string("http://h/"),
                                    std::string(), "/tmp" + std::string(1020, '/')}) {
        EXPECT_EQ(moduleUri(none, nullptr, "a.xml"), "a.xml") << "for: " << none;
    }
    EXPECT_NE(moduleUri("/tmp" + std::string(1019, '/'), nullptr, "a.xml"), "a.xml")
        << "1023 units are still a value";
}

TEST(ZRUriModule, FallsBackToTheModuleAndThenTheWorkingDirectory) {
    const std::string found = utf8(ZRUri::getModuleUri("libc.so.6", "a.xml", "ZRO_TEST_NO_URI"));
    EXPECT_TRUE(found.starts_with("file:/") && found.ends_with("/a.xml")) << found;
    EXPECT_EQ(utf8(ZRUri::getModuleUri("libno-such-module.so", "b/a.dll", nullptr)), "b/a.dll");
    EXPECT_EQ(utf8(ZRUri::getModuleUri(nullptr, nullptr, nullptr)), ".");
}

TEST(ZRUriLibrary, LoadsALibraryAndFindsASymbol) {
    HINSTANCE handle = uri(u"libc.so.6").loadLibrary();
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
