// One document, whatever it is named by: the same tree comes from a file, out of a package, out of
// one within that, over HTTP and out of a package over HTTP, with all that it brings in.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/dom/Trees.h"
#include "tests/support/HttpServer.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Text.h"
#include "tests/support/ZipBuilder.h"

namespace ZroCommon::testing {
namespace {

using Files = std::map<std::string, std::string>;

/// Some files in a folder, in a package, in one within that and, where there is a client, on a
/// server, which has the packages too.
class EveryWay {
public:
    explicit EveryWay(const Files& files) : m_files(files) {
        ZipBuilder builder;
        for (const auto& [name, bytes] : files) {
            const auto path = std::filesystem::path(m_folder.path()) / name;
            std::filesystem::create_directories(path.parent_path());
            std::ofstream(path, std::ios::binary) << bytes;
            builder.deflated(name, bytes);
        }
        builder.deflated("in/p.zip", builder.package());
        m_files["p.zip"] = builder.package();
        m_folder.write("p.zip", m_files["p.zip"]);
    }

    std::vector<std::string> namesOf(const std::string& file) const {
        const std::string path = m_folder.path() + "/";
        std::vector<std::string> names = {path + file, "file://" + path + file,
                                          "jar:" + path + "p.zip!/" + file,
                                          "jar:file://" + path + "p.zip!/" + file,
                                          "jar:file://" + path + "p.zip!/in/p.zip!/" + file};
#ifdef ZRO_TEST_HTTP
        names.push_back(m_server.url("/" + file));
        names.push_back("jar:" + m_server.url("/p.zip") + "!/" + file);
#endif
        return names;
    }

    std::size_t requests() const {
        return m_server.requests().size();
    }

private:
    TempFolder m_folder;
    Files m_files;
    HttpServer m_server{[this](HttpConnection& connection, const std::string& path) {
        const auto found = m_files.find(path.substr(1));
        connection.send(found == m_files.end()
                            ? "HTTP/1.1 404 Gone\r\nConnection: close\r\n\r\n"
                            : "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + found->second);
    }};
};

std::string treeOf(const std::string& uri) {
    const Document document = newDocument();
    document->load(text(uri));
    return dump(document);
}

/// The tree that a file gives by all its names.
std::string treeOf(const std::string& file, const EveryWay& ways) {
    const std::vector<std::string> names = ways.namesOf(file);
    const std::string tree = treeOf(names.front());
    for (const std::string& name : names) {
        EXPECT_EQ(treeOf(name), tree) << "for: " << name;
    }
    return tree;
}

// Names in a DTD are looked for beside the text that refers to them.
TEST(DocumentPlaces, AllBringInSubsetsAndEntities) {
    const EveryWay ways({
        {"docs/a.xml", "<!DOCTYPE a SYSTEM '../dtd/a.dtd' [<!ENTITY b SYSTEM 'parts/b.xml'>]>"
                       "<a>&b; &far;</a>"},
        {"docs/parts/b.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><b>\xE9 &c;</b>"},
        {"dtd/a.dtd", "<!ENTITY % more SYSTEM 'more/m.mod'> %more;"
                      "<!ENTITY c SYSTEM 'c.xml'>"
                      "<!ATTLIST b d CDATA 'by default'>"},
        {"dtd/more/m.mod", "<!ENTITY far SYSTEM 'far.xml'>"},
        {"docs/far.xml", "<f/>"},
        {"docs/parts/c.xml", "deep"},
    });
    EXPECT_EQ(treeOf("docs/a.xml", ways), "#document(a(b('\xC3\xA9 deep') ' ' f))");
#ifdef ZRO_TEST_HTTP
    EXPECT_GE(ways.requests(), 7U) << "six resources, and the package";
#endif
}

TEST(DocumentPlaces, ExamplesLoadFromAll) {
    Files files;
    for (const char* name : {"letter.fo", "report.fo", "tategaki.fo"}) {
        std::ifstream stream(std::string(ZRO_EXAMPLES_DIR "/") + name, std::ios::binary);
        files[name].assign(std::istreambuf_iterator<char>(stream), {});
    }
    const EveryWay ways(files);
    for (const auto& [file, bytes] : files) {
        EXPECT_GT(treeOf(file, ways).size(), 1000U) << file;
    }
}

// As with an address, nothing but the document itself has to be there.
TEST(DocumentPlaces, AMissingDocumentIsAnErrorAndAMissingEntityIsEmpty) {
    const TempFolder folder;
    const std::string document = "<!DOCTYPE a [<!ENTITY b SYSTEM 'b.xml'>]><a>x&b;y</a>";
    folder.write("p.zip", ZipBuilder().stored("a.xml", document).package());
    const std::string package = "jar:" + folder.path() + "/p.zip!/";
    EXPECT_EQ(treeOf(package + "a.xml"), "#document(a('xy'))");
    EXPECT_EQ(errorOf([&] { treeOf(package + "no.xml"); }).substr(0, 6), "0x1003");
}

}  // namespace
}  // namespace ZroCommon::testing
