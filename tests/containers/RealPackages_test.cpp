// Packages of many makers, and damaged ones, against what was found in them by other means.
#include <fstream>
#include <map>

#include <nlohmann/json.hpp>

#include "tests/containers/Listing.h"
#include "tests/support/Sha256.h"
#include "tests/support/Skips.h"
#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

using nlohmann::json;

std::string hashOf(std::istream& stream) {
    Sha256 hash;
    hash.add(restOf(stream));
    return hash.hex();
}

// The entries that other programs list and unpack from the same place.
std::map<std::int64_t, json> unpackedEntries(const json& row) {
    std::map<std::int64_t, json> entries;
    for (const json& entry : row.value("entries", json::array())) {
        const bool isPlain =
            entry.value("local_compressed", entry["compressed"]) == entry["compressed"]
            && (entry["method"] == 0 || entry["method"] == 8);
        if (isPlain && entry["sha256"].is_string()) {
            entries[entry["offset"].get<std::int64_t>()] = entry;
        }
    }
    return entries;
}

int checkPackage(const std::string& path, const json& row) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_EQ(ZRZipFile::isZipFile(&file), row.value("signature_is_zip", true));
    const ZRZipFile package(&file, false);
    const json& walk = row["local_walk"];
    EXPECT_EQ(package.getFileEntryCount(), walk.size());
    const auto unpacked = unpackedEntries(row);
    int compared = 0;
    for (unsigned i = 0; i < package.getFileEntryCount() && i < walk.size(); ++i) {
        ZRZipFileEntry& entry = *package.getFileEntry(i);
        const auto name = walk[i][0].get<std::string>();  // the bytes in hex if they are no UTF-8
        EXPECT_TRUE(name.starts_with("hex:") || utf8(entry.getFileName()) == name)
            << utf8(entry.getFileName()) << " is not " << name;
        EXPECT_EQ(entry.getCompressedSize(), walk[i][1]);
        const auto known = unpacked.find(entry.getPosition());
        if (known != unpacked.end() && entry.getCompressionMethod() == known->second["method"]) {
            EXPECT_EQ(hashOf(*entry.getUncompressedStream(false)), known->second["sha256"])
                << utf8(entry.getFileName());
            ++compared;
        }
    }
    return compared;
}

bool isReached(const ZRZipFile& package, const char16_t* name) {
    const ZRZipFileEntry* const entry = package.getFileEntry(name);
    return entry != nullptr && entry->getCompressedSize() != 0;
}

// The media type that others find for a part.
std::string expectedType(const json& types, const std::string& name) {
    const auto& overrides = types.at("override");
    if (overrides.contains("/" + name)) {
        return overrides["/" + name];
    }
    const std::size_t dot = name.rfind('.');
    return dot == name.npos ? "" : types.at("default").value(name.substr(dot + 1), "");
}

int checkTypes(ZRZipFile& package, const json& types) {
    int compared = 0;
    for (unsigned i = 0; i < package.getFileEntryCount(); ++i) {
        ZRZipFileEntry* const entry = package.getFileEntry(i);
        const std::string name = utf8(entry->getFileName());
        EXPECT_EQ(utf8(package.getContentType(entry)), expectedType(types, name)) << name;
        ++compared;
    }
    return compared;
}

int checkRelationships(const ZRZipFile& package, const json& relationships) {
    for (const json& row : relationships) {
        const UnicodeString target = text(row[2].get<std::string>());
        EXPECT_EQ(package.getRelationshipTargetFromId(text(row[0].get<std::string>()), nullptr),
                  target);
        EXPECT_EQ(utf8(package.getRelationshipTargetMode(target, nullptr)),
                  row[3].is_null() ? "Internal" : row[3]);
    }
    return static_cast<int>(relationships.size());
}

// What an office package says of its parts, as far as the walk gets to where it says so.
int checkParts(const std::string& path, const json& row) {
    ZRZipFile package(path.c_str());
    EXPECT_EQ(package.detectOOXDocument(), row["ooxdocument_type_by_walk"]);
    int compared = 1;
    if (row.contains("content_types") && isReached(package, u"[Content_Types].xml")) {
        compared += checkTypes(package, row["content_types"]);
    }
    if (row.contains("package_relationships") && isReached(package, u"_rels/.rels")) {
        compared += checkRelationships(package, row["package_relationships"]);
    }
    return compared;
}

using Check = int(const std::string& path, const json& row);

void checkFolder(const std::string& folder, const std::string& table, const char* key, Check& check,
                 int leastCompared) {
    const std::string root = ZRO_TEST_DATA_DIR "/" + folder + "/";
    std::ifstream rows(root + table);
    if (!rows) {
        GTEST_SKIP() << noData(root + table);
    }
    int compared = 0;
    for (const json& row : json::parse(rows)) {
        if (row.contains(key)) {
            SCOPED_TRACE(row["file"].get<std::string>());
            compared += check(root + row["file"].get<std::string>(), row);
        }
    }
    EXPECT_GE(compared, leastCompared) << "facts compared";
}

TEST(RealPackages, CornerFilesAreReadAsStated) {
    checkFolder("corner", "zip-expect.json", "local_walk", checkPackage, 93);
}

TEST(RealPackages, OfficeDocumentsBooksAndArchivesAreRead) {
    checkFolder("office", "expect.json", "local_walk", checkPackage, 1511);
}

TEST(RealPackages, OfficePackagesTellTypesAndRelationships) {
    checkFolder("office", "expect.json", "ooxdocument_type_by_walk", checkParts, 1625);
}

}  // namespace
}  // namespace ZroCommon::testing
