#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <map>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/conformance/Reading.h"
#include "tests/conformance/RealDocuments.h"
#include "tests/conformance/Table.h"

namespace ZroCommon::testing {
namespace {

/// Why a well-formed document is refused, by code.
struct Strictness {
    unsigned code;
    std::string_view reason;
};

constexpr std::array kStrict = {
    Strictness{0x1004, "an empty external subset is an empty input"},
    Strictness{0x1804, "a colon may not begin or end a name"},
    Strictness{0x1809, "a colon may not begin or end a name"},
    Strictness{0x181B, "a colon may not begin or end a name"},
    Strictness{0x181E, "an entity value may only name entities that are declared before it, "
                       "and no external ones"},
    Strictness{0x1822, "a text declaration of an external subset needs its version"},
    Strictness{0x1826, "versions other than 1.0 and 1.1 are refused"},
    Strictness{0x182C, "a processing instruction needs data"},
    Strictness{0x1833, "references to control characters are refused in XML 1.1 too"},
};

/// Why an ill-formed document is accepted, by where the fault is.
struct Leniency {
    std::string_view place;  // how the place of the fault begins
    std::string_view reason;
};

constexpr std::array kLenient = {
    Leniency{"doctype:ELEMENT", "element declarations are stepped over"},
    Leniency{"doctype:ATTLIST", "attribute declarations are stepped over"},
    Leniency{"doctype:NOTATION", "notation declarations are stepped over"},
    Leniency{"doctype:ENTITY", "of an entity declaration only what is needed is checked: not the "
                               "characters of identifiers and values"},
    Leniency{"doctype:comment", "comments of the internal subset are not looked into"},
    Leniency{"doctype:pi", "processing instructions of the internal subset are not looked into"},
    Leniency{"doctype:peref", "what a parameter entity holds need not be whole declarations"},
    Leniency{"doctype:[", "sections in the internal subset are stepped over"},
    Leniency{"doctype", "between declarations any character is stepped over"},
    Leniency{"external:", "external subsets and entities are read for entities alone"},
    Leniency{"prolog", "between the declaration and the root only text is refused, and names of "
                       "encodings are matched loosely"},
    Leniency{"body", "characters of text, comments and instructions are not checked, an entity "
                     "need not be balanced, references and CDATA sections may stand outside of "
                     "the root"},
};

std::string_view strictReason(unsigned code) {
    for (const Strictness& row : kStrict) {
        if (row.code == code) {
            return row.reason;
        }
    }
    return {};
}

std::string_view lenientReason(const std::string& place) {
    for (const Leniency& row : kLenient) {
        if (place.starts_with(row.place)) {
            return row.reason;
        }
    }
    return {};
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

    void check(const std::string& root, const Table::Row& row) {
        const Facts facts = readBounded(root + row.at("file"));
        const bool accepted = facts.error.empty();
        Verdicts& verdicts = m_verdicts[row.at("type")];
        ++(accepted ? verdicts.accepted : verdicts.refused);
        const bool shouldAccept = row.at("type") == "valid" || row.at("type") == "invalid";
        if (row.at("type") == "error" || accepted == shouldAccept) {
            return;
        }
        const std::string_view reason =
            accepted ? lenientReason(row.at("fault_at")) : strictReason(facts.code);
        const std::string what = accepted ? "accepted" : facts.error.substr(0, 6);
        if (reason.empty()) {
            m_faults.push_back(row.at("id") + " (" + row.at("file")
                               + "): " + (accepted ? "accepted" : facts.error));
            return;
        }
        auto& cases = m_differences[{what, std::string(reason)}];
        cases.push_back(row.at("id"));
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
    std::map<std::pair<std::string, std::string>, std::vector<std::string>> m_differences;
    std::vector<std::string> m_faults;
};

}  // namespace

int surveyConformanceSuite(const std::string& dataDir, std::ostream& out) {
    Suite suite(out);
    const Table table(dataDir + "/xmlconf/tests.tsv");
    for (const Table::Row& row : table.rows()) {
        suite.check(dataDir + "/xmlconf/", row);
    }
    return suite.report();
}

}  // namespace ZroCommon::testing
