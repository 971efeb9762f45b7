// Shows the public tables of number formats, and holds docs/number-formats.md to what was found:
// number_formats DATA_DIR docs/number-formats.md [--write]
#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include "tests/conformance/MeasuredPage.h"
#include "tests/conformance/Table.h"
#include "tests/support/Skips.h"
#include "tests/support/Text.h"
#include "zro/text/xls/XlsFormatString.h"

namespace ZroCommon::testing {
namespace {

constexpr int kSkipped = 77;

std::string unescaped(const std::string& text) {
    const std::map<char, char> letters = {{'t', '\t'}, {'n', '\n'}, {'r', '\r'}};
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        char c = text[index];
        if (c == '\\' && index + 1 < text.size()) {
            c = text[++index];
            c = letters.contains(c) ? letters.at(c) : c;
        }
        result += c;
    }
    return result;
}

std::string shown(const UnicodeString& format, const Table::Row& row) {
    XlsFormatString formats;
    formats.setFill(false);
    const std::string value = unescaped(row.at("value"));
    if (row.at("type") == "num") {
        double number = 0;
        std::from_chars(value.data(), value.data() + value.size(), number);
        return utf8(formats.FormatString(format, number));
    }
    CELLV cell;
    cell.text = text(value);
    UnicodeString result;
    formats.fmtstr(&cell, ZRValue(100), format, result, nullptr);
    return utf8(result);
}

struct Difference {
    std::string format;
    FMT2 compiled;
    std::string expected;
    std::string result;

    bool hasSection(bool (*is)(const FMT&)) const {
        return std::any_of(compiled.section.begin(),
                           compiled.section.begin() + compiled.sectionCount, is);
    }
    bool has(const char* text) const { return format.find(text) != std::string::npos; }
};

struct Kind {
    const char* name;
    const char* reason;
    bool (*is)(const Difference&);
};

// A difference is of the first kind that fits. The last column of the page says why it is meant.
constexpr std::array kKinds = {
    Kind{"no such date", "what has no date or is too wide shows as `#`, elsewhere as nothing",
         [](const Difference& d) {
             return d.expected.empty() && d.hasSection([](const FMT& s) { return s.kind == 2; });
         }},
    Kind{"fractions",
         "the nearest fraction by relative error, right-aligned, never carried into the integer",
         [](const Difference& d) {
             return d.hasSection([](const FMT& s) { return s.hasSlash && s.kind == 1; });
         }},
    Kind{"exponents", "no steps of three, and six decimals for numbers below 1",
         [](const Difference& d) {
             return d.hasSection([](const FMT& s) { return s.hasExponent != 0; });
         }},
    Kind{"`General`", "decimals go by the length of the integer; the last digit may be cut",
         [](const Difference& d) {
             return d.has("@")
                    || d.hasSection([](const FMT& s) { return s.compiled.indexOf(u'G') >= 0; });
         }},
    Kind{"fills", "without a width to fill, `*` writes its character once",
         [](const Difference& d) {
             return d.has("*");
         }},
    Kind{"conditions",
         "the minus is dropped for `[<0]` and the second section alone; what no section takes "
         "shows as nothing",
         [](const Difference& d) {
             return d.hasSection([](const FMT& s) { return s.condition != 0; });
         }},
    Kind{"dates and times",
         "a letter too many begins another token, `mm` is minutes behind hours only, fractions of "
         "seconds lose their zeros, `[s]` has no days, `e` and `r` belong to Japanese eras",
         [](const Difference& d) {
             return d.hasSection([](const FMT& s) { return s.kind == 2; }) || d.has("s.0");
         }},
    Kind{"commas",
         "only the last comma ahead of a placeholder groups, others divide, and a "
         "literal one swallows a character",
         [](const Difference& d) {
             return d.has(",") && d.has("0");
         }},
    Kind{"`#` and 0", "`#` shows the digit 0 of an integer part that is 0",
         [](const Difference& d) {
             return d.has("#");
         }},
    Kind{"no integer places", "without a place ahead of the point there are no integer digits",
         [](const Difference& d) {
             return d.hasSection([](const FMT& s) { return s.hasPoint && s.intPlaces == 0; });
         }},
    Kind{"literals alone", "a negative number has its minus ahead of them",
         [](const Difference& d) {
             return d.hasSection([](const FMT& s) { return s.kind == 0; });
         }},
};

class Survey {
public:
    void add(const Table::Row& row) {
        const bool isStored = row.at("stored_valid") == "1";
        Difference found;
        found.format = unescaped(row.at(isStored ? "stored_form" : "format"));
        const UnicodeString format = text(found.format);
        Source& source = m_sources[row.at("source")];
        ++source.rows;
        if (XlsFormatString().fmtget(format, &found.compiled) == 0) {
            ++source.invalid;
            return;
        }
        found.expected = unescaped(row.at("expected"));
        found.result = shown(format, row);
        if (found.result == found.expected) {
            ++source.agree;
            return;
        }
        ++source.differ;
        sort(found, row.at("value"));
    }

    void write(std::ostream& out) const {
        out << "| Table | Rows | Invalid | Agree | Differ |\n|---|---:|---:|---:|---:|\n";
        Source all;
        for (const auto& [name, source] : m_sources) {
            writeRow(out, name, source);
            all.rows += source.rows;
            all.invalid += source.invalid;
            all.agree += source.agree;
            all.differ += source.differ;
        }
        writeRow(out, "**all**", all);
        out << "\n| Difference | Rows | Format | Value | Theirs | Ours | Why |\n"
               "|---|---:|---|---|---|---|---|\n";
        for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
            if (m_counts[kind] > 0) {
                out << "| " << kKinds[kind].name << " | " << m_counts[kind] << m_examples[kind]
                    << " | " << kKinds[kind].reason << " |\n";
            }
        }
        out << '\n';
    }

    /// Differences of no kind.
    int faults() const { return m_faults; }

private:
    struct Source {
        int rows = 0;
        int invalid = 0;
        int agree = 0;
        int differ = 0;
    };

    static void writeRow(std::ostream& out, const std::string& name, const Source& source) {
        out << "| " << name << " | " << source.rows << " | " << source.invalid << " | "
            << source.agree << " | " << source.differ << " |\n";
    }

    static std::string cell(std::string text) {
        constexpr std::size_t kMax = 32;
        if (text.empty()) {
            return " | ";
        }
        text = text.size() > kMax ? text.substr(0, kMax) + "..." : text;
        for (std::size_t bar = text.find('|'); bar != std::string::npos;
             bar = text.find('|', bar + 2)) {
            text.insert(bar, "\\");
        }
        return " | `" + text + "`";
    }

    void sort(const Difference& found, const std::string& value) {
        const auto* const kind =
            std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind& k) { return k.is(found); });
        if (kind == kKinds.end()) {
            std::cout << "no kind: " << found.format << " of " << value << ": " << found.expected
                      << ", ours " << found.result << '\n';
            ++m_faults;
            return;
        }
        const auto index = static_cast<std::size_t>(kind - kKinds.begin());
        if (m_counts[index]++ == 0) {
            m_examples[index] =
                cell(found.format) + cell(value) + cell(found.expected) + cell(found.result);
        }
    }

    std::map<std::string, Source> m_sources;
    std::array<int, kKinds.size()> m_counts{};
    std::array<std::string, kKinds.size()> m_examples;
    int m_faults = 0;
};

int survey(const std::string& dataDir, const std::string& page, bool write) {
    const std::string path = dataDir + "/numfmt/formats.tsv";
    if (!std::ifstream(path)) {
        std::cout << noData(path) << '\n';
        return kSkipped;
    }
    Survey survey;
    const Table table(path);
    for (const Table::Row& row : table.rows()) {
        survey.add(row);
    }
    std::ostringstream measured;
    survey.write(measured);
    if (survey.faults() > 0) {
        std::cout << survey.faults() << " faults\n";
        return 1;
    }
    return comparePage(page, measured.str(), write);
}

}  // namespace
}  // namespace ZroCommon::testing

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: number_formats DATA_DIR PAGE [--write]\n";
        return 2;
    }
    const bool write = argc > 3 && std::string_view(argv[3]) == "--write";
    return ZroCommon::testing::survey(argv[1], argv[2], write);
}
