#include <array>
#include <map>
#include <string_view>
#include <vector>

#include "tests/conformance/Reading.h"
#include "tests/conformance/Surveys.h"

namespace ZroCommon::testing {
namespace {

/// Why a document is refused. Each row must hold for a document of the table.
struct Refusal {
    std::string_view file;   // how the name ends
    std::string_view error;  // how the error begins
    std::string_view reason;
};

constexpr std::string_view kNoNetwork = "cites a DTD on the network, which is not to be had; "
                                        "`FEATURE_IGNORE_EXTERNAL_SUBSET_ERRORS` reads it";

constexpr std::array kRefusals = {
    Refusal{"errors/inavlidxml.fo", "", "ill-formed on purpose"},
    Refusal{"errors/inavlidxml2.fo", "", "ill-formed on purpose"},
    Refusal{"errors/inavlidxml3.fo", "", "ill-formed on purpose"},
    Refusal{"errors/inavliddoc.fo", "0x1807", "a prefix is not declared"},
    Refusal{"events/font.fo", "0x1004", "an empty file"},
    Refusal{"resources/fop/svg/embed.fo", "0x1003", "an entity file beside it is not there"},
    Refusal{"xslt/fo-glossary.xsl", "0x1003", "an entity file beside it is not there"},
};

/// Ill-formed for another parser, and read here.
constexpr std::string_view kBrokenByte = "bugtests/text-transform.fo";

const Refusal* refusalOf(const std::string& file, const std::string& error) {
    for (const Refusal& refusal : kRefusals) {
        if (file.ends_with(refusal.file) && error.starts_with(refusal.error)) {
            return &refusal;
        }
    }
    return nullptr;
}

struct Counts {
    int files = 0;
    int loaded = 0;
    int equalInBothModes = 0;
    int equalWhenSaved = 0;
};

class Survey {
public:
    explicit Survey(std::ostream& out) : m_out(out) {}

    /// \param file  below `root`; its folder is the line of the table
    void check(const std::string& root, const std::string& file, const Row& row) {
        Counts& counts = m_counts[file.substr(0, file.rfind('/'))];
        ++counts.files;
        const Facts facts = readFacts(root + file);
        if (!facts.error.empty()) {
            refuse(file, row, facts);
            return;
        }
        compare(file, row, facts);
        const TreeOutcome tree = loadBothWays(root + file);
        ++counts.loaded;
        counts.equalInBothModes += tree.pullModeIsEqual ? 1 : 0;
        counts.equalWhenSaved += tree.savedIsEqual ? 1 : 0;
        if (!tree.error.empty() || !tree.pullModeIsEqual || !tree.savedIsEqual) {
            fault(file + ": as a tree: " + tree.error
                  + (tree.pullModeIsEqual ? "" : " differs in pull mode")
                  + (tree.savedIsEqual ? "" : " differs when saved"));
        }
    }

    int report() {
        m_out << "| folder | documents | loaded | equal in both modes | equal when saved |\n"
                 "|---|---|---|---|---|\n";
        for (const auto& [folder, counts] : m_counts) {
            m_out << "| " << folder << " | " << counts.files << " | " << counts.loaded << " | "
                  << counts.equalInBothModes << " | " << counts.equalWhenSaved << " |\n";
        }
        m_out << "\nNot loaded:\n\n| document | error | reason |\n|---|---|---|\n";
        for (const std::string& line : m_refused) {
            m_out << line << '\n';
        }
        m_out << "\nLoaded although ill-formed:\n\n";
        for (const std::string& line : m_accepted) {
            m_out << "- " << line << '\n';
        }
        for (const std::string& line : m_faults) {
            m_out << "\nFAULT " << line << '\n';
        }
        return static_cast<int>(m_faults.size());
    }

private:
    void fault(const std::string& line) { m_faults.push_back(line); }

    void refuse(const std::string& file, const Row& row, const Facts& facts) {
        std::string_view reason;
        if (const Refusal* refusal = refusalOf(file, facts.error)) {
            reason = refusal->reason;
        } else if (row.contains("needs") && row.at("needs") == "http-dtd") {
            reason = kNoNetwork;
        } else if (row.contains("error") && row.at("error") != "-") {
            reason = "ill-formed by itself";
        } else {
            fault(file + ": refused without a reason: " + facts.error);
            return;
        }
        const std::string error = facts.error.substr(0, facts.error.find(": file:"));
        m_refused.push_back("| " + file + " | " + error + " | " + std::string(reason) + " |");
    }

    void compare(const std::string& file, const Row& row, const Facts& facts) {
        if (row.contains("error") && row.at("error") != "-") {
            if (file.ends_with(kBrokenByte)) {
                m_accepted.push_back(file + ": a broken UTF-8 sequence reads as U+FFFD");
                return;
            }
            fault(file + ": read although ill-formed: " + row.at("error"));
            return;
        }
        const bool hasOwnLineEnds = row.at("has_nel_or_ls") != "0";  // they are line ends here
        for (const auto& [column, found] :
             {std::pair("elements", std::to_string(facts.elements)),
              std::pair("attributes", std::to_string(facts.attributes)),
              std::pair("text_chars", std::to_string(facts.textCharacters)),
              std::pair("max_depth", std::to_string(facts.maxDepth)),
              std::pair("tags_sha256", facts.tagsSha256),
              std::pair(hasOwnLineEnds ? "" : "text_sha256", facts.textSha256)}) {
            const auto cell = row.find(column);
            if (cell != row.end() && cell->second != found) {
                fault(file + ": " + column + " is " + found + ", not " + cell->second);
            }
        }
    }

    std::ostream& m_out;
    std::map<std::string, Counts> m_counts;
    std::vector<std::string> m_refused;
    std::vector<std::string> m_accepted;
    std::vector<std::string> m_faults;
};

}  // namespace

int surveyRealDocuments(const std::string& dataDir, std::ostream& out) {
    Survey survey(out);
    for (const std::string folder : {"fo/", "xml/"}) {
        for (const Row& row : readTable(dataDir + "/" + folder + "expect.tsv")) {
            survey.check(dataDir + "/", folder + row.at("file"), row);
        }
    }
    for (Row row : readTable(dataDir + "/xml/encodings/encodings.tsv")) {
        row["text_sha256"] = row.at("text_sha256_icu");  // some converters differ by a character
        survey.check(dataDir + "/", "xml/encodings/" + row.at("file"), row);
    }
    return survey.report();
}

int surveyDocuments(const Measuring& measuring) {
    measuring.out << "## Real documents\n\n";
    int faults = surveyRealDocuments(measuring.dataDir, measuring.out);
    measuring.out << "\n## The W3C suite\n\n";
    faults += surveyConformanceSuite(measuring.dataDir, measuring.out);
    measuring.out << '\n';
    return faults;
}

}  // namespace ZroCommon::testing
