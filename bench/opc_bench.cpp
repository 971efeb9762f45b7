// What kind of office document a package is, beside the least that anybody has to do for it: to
// expand the two parts that tell, with zlib alone.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include <zlib.h>

#include "tests/support/OpcBuilder.h"
#include "zro/containers/zip/ZRZipFile.h"

#include "bench/support/Jobs.h"
#include "bench/support/Options.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

constexpr int kDocuments = 500;  // a round

// The parts of a letter as word processors write it, and the ends of their media types.
constexpr std::array<std::array<const char*, 2>, 9> kParts = {{
    {"word/document.xml", "wordprocessingml.document.main"},
    {"word/styles.xml", "wordprocessingml.styles"},
    {"word/settings.xml", "wordprocessingml.settings"},
    {"word/webSettings.xml", "wordprocessingml.webSettings"},
    {"word/fontTable.xml", "wordprocessingml.fontTable"},
    {"word/theme/theme1.xml", "theme"},
    {"word/numbering.xml", "wordprocessingml.numbering"},
    {"word/footnotes.xml", "wordprocessingml.footnotes"},
    {"docProps/app.xml", "extended-properties"},
}};

/// A document, and the two parts that tell what it is.
struct Document {
    std::string types;
    std::string relationships;
    std::string package;
};

Document letter() {
    const std::string office =
        "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    const std::string type = "application/vnd.openxmlformats-officedocument.";
    std::string types =
        testing::defaultType("png", "image/png")
        + testing::defaultType("rels", "application/vnd.openxmlformats-package.relationships+xml")
        + testing::defaultType("xml", "application/xml");
    for (const auto& [part, media] : kParts) {
        types += testing::overrideType("/" + std::string(part), type + media + "+xml");
    }
    Document document;
    document.types = testing::contentTypes(types);
    document.relationships = testing::relationships(
        testing::relationship("rId3", office + "extended-properties", "docProps/app.xml")
        + testing::relationship(
            "rId2",
            "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties",
            "docProps/core.xml")
        + testing::officeDocument("word/document.xml"));
    testing::ZipBuilder builder;
    builder.deflated("[Content_Types].xml", document.types)
        .deflated("_rels/.rels", document.relationships);
    for (const auto& [part, media] : kParts) {
        builder.deflated(part, std::string(5000, 'x'));
    }
    document.package = builder.package();
    return document;
}

/// A file of its own.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& bytes) {
        const int file = mkstemp(m_path.data());
        if (file < 0) {
            throw std::runtime_error("cannot make a file");
        }
        close(file);
        std::ofstream(m_path, std::ios::binary) << bytes;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { std::remove(m_path.c_str()); }

    const char* path() const { return m_path.c_str(); }

private:
    std::string m_path = "/tmp/zro-bench-XXXXXX";
};

void require(bool holds) {
    if (!holds) {
        throw std::runtime_error("not what the document is");
    }
}

void expand(std::string packed, std::string& to) {
    z_stream stream{};
    inflateInit2(&stream, testing::kRaw);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(to.data());
    stream.avail_out = static_cast<uInt>(to.size());
    require(inflate(&stream, Z_FINISH) == Z_STREAM_END && stream.avail_out == 0);
    inflateEnd(&stream);
}

Job job(const char* contender, const std::function<void()>& detect) {
    return {"docx", contender, [detect] {
                const auto all = [&detect] {
                    for (int i = 0; i < kDocuments; ++i) {
                        detect();
                    }
                };
                return timed(cpuNow, all) / kDocuments;
            }};
}

void run(const Options& options) {
    const Document document = letter();
    const TemporaryFile file(document.package);
    std::istringstream memory(document.package);
    std::array<std::string, 2> packed;
    std::array<std::string, 2> parts = {document.types, document.relationships};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        packed[i] = testing::deflated(parts[i]);
    }
    const auto isWord = [](OOXDOCUMENT_TYPE type) {
        require(type == OOXDOCUMENT_DOCX);
    };
    runJobs(options, "opc",
            {job("zlib, two parts",
                 [&] {
                     expand(packed[0], parts[0]);
                     expand(packed[1], parts[1]);
                 }),
             job("zro, memory", [&] { isWord(ZRZipFile::detectOOXDocument(&memory)); }),
             job("zro, path", [&] { isWord(ZRZipFile::detectOOXDocument(file.path())); }),
             job("zro, open and walk", [&] {
                 require(ZRZipFile(file.path()).getFileEntryCount() == kParts.size() + 2);
             })});
}

}  // namespace
}  // namespace ZroCommon::bench

int main(int argc, char** argv) {
    return ZroCommon::bench::runProgram(argc, argv, ZroCommon::bench::run);
}
