// Office documents of many makers against what was found in them by other means.
#include <algorithm>
#include <fstream>
#include <vector>

#include <nlohmann/json.hpp>

#include "tests/containers/OleFile.h"
#include "tests/support/Sha256.h"
#include "tests/support/Skips.h"
#include "tests/support/Test.h"
#include "zro/containers/ole/OlePropertySet.h"
#include "zro/containers/ole/OleSummaryInformation.h"

namespace ZroCommon::testing {
namespace {

using nlohmann::json;
using Path = std::vector<std::string>;

// "size hash" of a stream.
std::string contentOf(OleCompFile& file, const Path& path) {
    OleDirPath names{};
    for (const std::string& name : path) {
        names.names[names.count++] = name.c_str();
    }
    const std::unique_ptr<OleStream> stream(file.OLEopenStream(&names));
    if (stream == nullptr) {
        return "no stream";
    }
    Sha256 hash;
    hash.add(OleFile::restOf(*stream, 4096));
    return std::to_string(stream->GetStreamSize()) + " " + hash.hex();
}

// Texts in a code page that ICU does not know are empty.
void compareTexts(OleCompFile& file, const json& row) {
    const json summary = row.value("summary", json());
    const auto expected = [&summary](const char* name) {
        const bool isKnown = summary.is_object() && !summary.contains("icu_codepage");
        const json text = isKnown ? summary.value(name, json()) : json();
        return text.is_null() ? std::string() : text.get<std::string>();
    };
    OlePropertySet set;
    set.init(&file);
    EXPECT_EQ(utf8(set.getTitle()), expected("title"));
    EXPECT_EQ(utf8(set.getSubject()), expected("subject"));
    EXPECT_EQ(utf8(set.getAuthor()), expected("author"));
    EXPECT_EQ(utf8(set.getKeywords()), expected("keywords"));
}

void compareLinks(OleCompFile& file, const json& row) {
    OleSummaryInformation summary;
    summary.initDocumentSummaryInformation(&file);
    std::vector<UnicodeString> links;
    const bool hasLinks = summary.getHyperLinks(links) > 0;
    EXPECT_EQ(hasLinks, row.contains("hyperlinks"));
    json found = json::array();
    for (const UnicodeString& link : links) {
        found.push_back(utf8(link));
    }
    EXPECT_EQ(found, row.value("hyperlinks", json::array()));
}

int checkFile(const std::string& path, const json& row) {
    std::ifstream bytes(path, std::ios::binary);
    EXPECT_EQ(OleCompFile::detectOLEDocument(bytes), row["oledocument_type"]);
    OleCompFile file;
    EXPECT_TRUE(file.OLEopen(path.c_str())) << static_cast<int>(file.getRefusal().check);
    EXPECT_EQ(file.getBytesPerBlock(), row["sector_size"]);
    EXPECT_EQ(file.getBytesPerMini(), row["mini_sector_size"]);
    EXPECT_EQ(file.getMiniFatCutoff(), row["mini_cutoff"]);
    EXPECT_EQ(file.getFatBlockCount(), row["fat_blocks"]);
    std::size_t streams = 0;
    std::size_t storages = 0;
    for (long i = 0; i < file.getDirCount(); ++i) {
        streams += file.getDirInfo(i)->isStream() ? 1U : 0U;
        storages += file.getDirInfo(i)->isStorage() ? 1U : 0U;
    }
    EXPECT_EQ(storages, row["storages"].size());
    EXPECT_EQ(streams, row["streams"].size());
    for (const json& stream : row["streams"]) {
        EXPECT_EQ(contentOf(file, stream["path"]), std::to_string(stream["size"].get<long>()) + " "
                                                       + stream["sha256"].get<std::string>())
            << stream["path"];
    }
    compareTexts(file, row);
    compareLinks(file, row);
    return static_cast<int>(row["streams"].size());
}

TEST(RealCompoundFiles, StreamsAndPropertiesAreAsOtherToolsFoundThem) {
    const std::string root = ZRO_TEST_DATA_DIR "/office/";
    std::ifstream rows(root + "expect.json");
    if (!rows) {
        GTEST_SKIP() << noData(root + "expect.json");
    }
    int files = 0;
    int streams = 0;
    for (const json& row : json::parse(rows)) {
        if (row["kind"] != "ole") {
            continue;
        }
        const auto name = row["file"].get<std::string>();
        SCOPED_TRACE(name);
        if (name == "poi-spreadsheet/WrongFormulaRecordType.xls") {  // see docs/office-files.md
            OleCompFile file;
            EXPECT_FALSE(file.OLEopen((root + name).c_str()));
            EXPECT_EQ(file.getRefusal().check, OleCheck::IndirectFatStart);
            continue;
        }
        streams += checkFile(root + name, row);
        ++files;
    }
    EXPECT_GE(files, 66);
    EXPECT_GE(streams, 630) << "streams whose content was compared";
}

}  // namespace
}  // namespace ZroCommon::testing
