#include <atomic>
#include <chrono>
#include <future>
#include <map>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/conformance/Reading.h"
#include "tests/conformance/Surveys.h"

namespace ZroCommon::testing {
namespace {

using Reasons = std::map<std::string_view, std::string_view>;

constexpr std::string_view kColon = "a colon may not begin or end a name";

/// Why a well-formed document is refused, by code.
const Reasons& strictReasons() {
    static const Reasons s_reasons = {
        {"0x1004", "an empty external subset is an empty input"},
        {"0x1804", kColon},
        {"0x1809", kColon},
        {"0x181B", kColon},
        {"0x181E", "an entity value may only name entities that are declared before it, and no "
                   "external ones"},
        {"0x1822", "a text declaration of an external subset needs its version"},
        {"0x1826", "versions other than 1.0 and 1.1 are refused"},
        {"0x182C", "a processing instruction needs data"},
        {"0x1833", "references to control characters are refused in XML 1.1 too"},
    };
    return s_reasons;
}

/// Why an ill-formed document is accepted, by how the place of its fault begins.
const Reasons& lenientReasons() {
    static const Reasons s_reasons = {
        {"doctype:ELEMENT", "element declarations are stepped over"},
        {"doctype:ATTLIST", "attribute declarations are stepped over"},
        {"doctype:NOTATION", "notation declarations are stepped over"},
        {"doctype:ENTITY", "of an entity declaration only what is needed is checked: not the "
                           "characters of identifiers and values"},
        {"doctype:comment", "comments of the internal subset are not looked into"},
        {"doctype:pi", "processing instructions of the internal subset are not looked into"},
        {"doctype:peref", "what a parameter entity holds need not be whole declarations"},
        {"doctype:[", "sections in the internal subset are stepped over"},
        {"doctype", "between declarations any character is stepped over"},
        {"external:", "external subsets and entities are read for entities alone"},
        {"prolog", "between the declaration and the root only text is refused, and names of "
                   "encodings are matched loosely"},
        {"body", "characters of text, comments and instructions are not checked, an entity need "
                 "not be balanced, references and CDATA sections may stand outside of the root"},
    };
    return s_reasons;
}

/// The reason whose key is the longest beginning of `found`, or none.
std::string_view reasonOf(const Reasons& reasons, const std::string& found) {
    std::string_view reason;
    for (const auto& [key, text] : reasons) {  // longer keys come behind their beginnings
        reason = found.starts_with(key) ? text : reason;
    }
    return reason;
}

/// Some cases expand an entity for ever, which no rule of the parser ends: a clock does.
Facts readBounded(const std::string& path) {
    std::atomic<bool> cancelled{false};
    ZRLimits limits;
    limits.cancelFlag = &cancelled;
    std::promise<void> read;
    std::thread clock([&cancelled, done = read.get_future()] {
        cancelled = done.wait_for(std::chrono::seconds(2)) == std::future_status::timeout;
    });
    Facts facts = readFacts(path, limits);
    read.set_value();
    clock.join();
    return facts;
}

struct Verdicts {
    int accepted = 0;
    int refused = 0;
};

class Suite {
public:
    explicit Suite(std::ostream& out) : m_out(out) {}

    void check(const std::string& root, const Row& row) {
        const Facts facts = readBounded(root + row.at("file"));
        const bool accepted = facts.error.empty();
        Verdicts& verdicts = m_verdicts[row.at("type")];
        ++(accepted ? verdicts.accepted : verdicts.refused);
        const bool shouldAccept = row.at("type") == "valid" || row.at("type") == "invalid";
        if (row.at("type") == "error" || accepted == shouldAccept) {
            return;
        }
        const std::string_view reason = accepted ? reasonOf(lenientReasons(), row.at("fault_at"))
                                                 : reasonOf(strictReasons(), facts.error);
        const std::string what = accepted ? "accepted" : facts.error.substr(0, 6);
        if (reason.empty()) {
            m_faults.push_back(row.at("id") + " (" + row.at("file")
                               + "): " + (accepted ? "accepted" : facts.error));
            return;
        }
        m_differences[{what, reason}].push_back(row.at("id"));
    }

    int report() {
        m_out << "| verdict of the suite | accepted here | refused here |\n|---|---|---|\n";
        for (const auto& [type, verdicts] : m_verdicts) {
            m_out << "| " << type << " | " << verdicts.accepted << " | " << verdicts.refused
                  << " |\n";
        }
        m_out << "\n| here | cases | reason | which |\n|---|---|---|---|\n";
        for (const auto& [key, cases] : m_differences) {
            m_out << "| " << key.first << " | " << cases.size() << " | " << key.second << " |";
            for (const std::string& id : cases) {
                m_out << ' ' << id;
            }
            m_out << " |\n";
        }
        for (const std::string& line : m_faults) {
            m_out << "\nFAULT " << line << '\n';
        }
        return static_cast<int>(m_faults.size());
    }

private:
    std::ostream& m_out;
    std::map<std::string, Verdicts> m_verdicts;
    std::map<std::pair<std::string, std::string_view>, std::vector<std::string>> m_differences;
    std::vector<std::string> m_faults;
};

}  // namespace

int surveyConformanceSuite(const std::string& dataDir, std::ostream& out) {
    Suite suite(out);
    for (const Row& row : readTable(dataDir + "/xmlconf/tests.tsv")) {
        suite.check(dataDir + "/xmlconf/", row);
    }
    return suite.report();
}

}  // namespace ZroCommon::testing
