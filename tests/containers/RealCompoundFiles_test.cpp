// Office documents of many makers against what was found in them by other means.
#include <algorithm>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/containers/OleFile.h"
#include "tests/support/Sha256.h"
#include "tests/support/Skips.h"
#include "tests/support/Text.h"
#include "zro/containers/ole/OlePropertySet.h"
#include "zro/containers/ole/OleSummaryInformation.h"

namespace ZroCommon::testing {
namespace {

using nlohmann::json;
using Path = std::vector<std::string>;

/// Storages and streams below the root, by their paths.
struct Tree {
    std::map<Path, const OleDirInfo*> streams;
    std::map<Path, const OleDirInfo*> storages;

    void add(const OleCompFile& file, long index, const Path& parent) {
        const OleDirInfo* const entry = file.getDirInfo(index);
        if (entry == nullptr) {
            return;
        }
        Path path = parent;
        path.push_back(utf8(entry->getName()));
        if (entry->isStream()) {
            streams[path] = entry;
        } else {
            storages[path] = entry;
        }
        add(file, entry->getChildID(), path);
        add(file, entry->getLeftSiblingID(), parent);
        add(file, entry->getRightSiblingID(), parent);
    }
};

std::string hashOf(OleCompFile& file, const Path& path) {
    OleDirPath names{};
    for (const std::string& name : path) {
        names.names[names.count++] = name.c_str();
    }
    const std::unique_ptr<OleStream> stream(file.OLEopenStream(&names));
    Sha256 hash;
    hash.add(stream ? OleFile::restOf(*stream, 4096) : "no stream");
    return hash.hex();
}

std::string textOf(const json& summary, const char* name) {
    const json text = summary.is_null() ? json() : summary.value(name, json());
    return text.is_null() ? "" : text.get<std::string>();
}

// Texts in a code page that ICU does not know are empty.
void compareTexts(OleCompFile& file, const json& row) {
    const json summary = row.value("summary", json());
    OlePropertySet set;
    set.init(&file);
    const struct {
        const char* name;
        const UnicodeString& text;
    } texts[] = {
        {"title", set.getTitle()},
        {"subject", set.getSubject()},
        {"author", set.getAuthor()},
        {"keywords", set.getKeywords()},
    };
    for (const auto& [name, text] : texts) {
        const bool isKnown = !summary.contains("icu_codepage");
        EXPECT_EQ(utf8(text), isKnown ? textOf(summary, name) : "") << name;
    }
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
    Tree tree;
    const OleDirInfo* const root = file.getDirInfo(0);
    tree.add(file, root == nullptr ? -1 : root->getChildID(), {});
    EXPECT_EQ(tree.storages.size(), row["storages"].size());
    EXPECT_EQ(tree.streams.size(), row["streams"].size());
    for (const json& stream : row["streams"]) {
        const auto found = tree.streams.find(stream["path"]);
        const bool isThere = found != tree.streams.end();
        EXPECT_EQ(isThere ? found->second->getStreamSize() : -1, stream["size"]) << stream["path"];
        EXPECT_EQ(hashOf(file, stream["path"]), stream["sha256"]) << stream["path"];
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
