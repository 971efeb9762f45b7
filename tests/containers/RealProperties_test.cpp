// Titles, authors, subjects, keywords and hyperlinks of real documents, against what was found in
// them by other means.
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/support/Skips.h"
#include "tests/support/Text.h"
#include "zro/containers/ole/OleCompFile.h"
#include "zro/containers/ole/OlePropertySet.h"
#include "zro/containers/ole/OleSummaryInformation.h"

namespace ZroCommon::testing {
namespace {

using nlohmann::json;

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

TEST(RealProperties, AreThoseThatOthersFind) {
    const std::string root = ZRO_TEST_DATA_DIR "/office/";
    std::ifstream rows(root + "expect.json");
    if (!rows) {
        GTEST_SKIP() << noData(root + "expect.json");
    }
    int compared = 0;
    std::string refused;
    for (const json& row : json::parse(rows)) {
        if (row["kind"] != "ole") {
            continue;
        }
        const auto name = row["file"].get<std::string>();
        SCOPED_TRACE(name);
        OleCompFile file;
        if (!file.OLEopen((root + name).c_str())) {
            refused += name;
            continue;
        }
        compareTexts(file, row);
        compareLinks(file, row);
        ++compared;
    }
    EXPECT_EQ(compared, 66);
    EXPECT_EQ(refused, "poi-spreadsheet/WrongFormulaRecordType.xls");
}

}  // namespace
}  // namespace ZroCommon::testing
