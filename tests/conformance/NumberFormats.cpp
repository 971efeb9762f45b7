// The public tables of number formats beside what cells show here.
#include <algorithm>
#include <array>
#include <charconv>
#include <iostream>
#include <map>
#include <string>

#include "tests/conformance/Surveys.h"
#include "tests/support/Text.h"
#include "zro/text/xls/XlsFormatString.h"

namespace ZroCommon::testing {
namespace {

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

std::string shown(const UnicodeString& format, const Row& row) {
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

    bool has(const char* text) const { return format.find(text) != std::string::npos; }
    template <class Is>
    bool hasSection(Is is) const {
        const auto* const first = compiled.section.data();
        return std::any_of(first, first + compiled.sectionCount, is);
    }

    bool isDate() const {
        return hasSection([](const FMT& s) { return s.kind == 2; });
    }
    bool isNoDate() const { return expected.empty() && isDate(); }
    bool isDateOrTime() const { return isDate() || has("s.0"); }
    bool isFraction() const {
        return hasSection([](const FMT& s) { return s.hasSlash && s.kind == 1; });
    }
    bool hasExponent() const {
        return hasSection([](const FMT& s) { return s.hasExponent != 0; });
    }
    bool isGeneral() const {
        return has("@") || hasSection([](const FMT& s) { return s.compiled.indexOf(u'G') >= 0; });
    }
    bool isFill() const { return has("*"); }
    bool hasCondition() const {
        return hasSection([](const FMT& s) { return s.condition != 0; });
    }
    bool hasComma() const { return has(",") && has("0"); }
    bool hasHash() const { return has("#"); }
    bool hasNoInteger() const {
        return hasSection([](const FMT& s) { return s.hasPoint && s.intPlaces == 0; });
    }
    bool isLiteral() const {
        return hasSection([](const FMT& s) { return s.kind == 0; });
    }
};

struct Kind {
    const char* name;
    bool (Difference::*is)() const;
    const char* reason;
};

// A difference is of the first kind that fits. The last column of the page says why it is meant.
constexpr std::array kKinds = {
    Kind{"no such date", &Difference::isNoDate,
         "what has no date or is too wide shows as `#`, elsewhere as nothing"},
    Kind{"fractions", &Difference::isFraction,
         "the nearest fraction by relative error, right-aligned, never carried into the integer"},
    Kind{"exponents", &Difference::hasExponent,
         "no steps of three, and six decimals for numbers below 1"},
    Kind{"`General`", &Difference::isGeneral,
         "decimals go by the length of the integer; the last digit may be cut"},
    Kind{"fills", &Difference::isFill, "without a width to fill, `*` writes its character once"},
    Kind{"conditions", &Difference::hasCondition,
         "the minus is dropped for `[<0]` and the second section alone; what no section takes "
         "shows as nothing"},
    Kind{"dates and times", &Difference::isDateOrTime,
         "a letter too many begins another token, `mm` is minutes behind hours only, fractions of "
         "seconds lose their zeros, `[s]` has no days, `e` and `r` belong to Japanese eras"},
    Kind{"commas", &Difference::hasComma,
         "only the last comma ahead of a placeholder groups, others divide, and a literal one "
         "swallows a character"},
    Kind{"`#` and 0", &Difference::hasHash, "`#` shows the digit 0 of an integer part that is 0"},
    Kind{"no integer places", &Difference::hasNoInteger,
         "without a place ahead of the point there are no integer digits"},
    Kind{"literals alone", &Difference::isLiteral, "a negative number has its minus ahead of them"},
};

class Survey {
public:
    void add(const Row& row) {
        const bool isStored = row.at("stored_valid") == "1";
        Difference found;
        found.format = unescaped(row.at(isStored ? "stored_form" : "format"));
        const UnicodeString format = text(found.format);
        const bool isValid = XlsFormatString().fmtget(format, &found.compiled) != 0;
        found.expected = unescaped(row.at("expected"));
        found.result = isValid ? shown(format, row) : "";
        const bool differs = isValid && found.result != found.expected;
        for (Source* source : {&m_sources[row.at("source")], &m_all}) {
            ++source->rows;
            ++(!isValid ? source->invalid : differs ? source->differ : source->agree);
        }
        if (differs) {
            sort(found, row.at("value"));
        }
    }

    void write(std::ostream& out) const {
        out << "| Table | Rows | Invalid | Agree | Differ |\n|---|---:|---:|---:|---:|\n";
        for (const auto& [name, source] : m_sources) {
            writeRow(out, name, source);
        }
        writeRow(out, "**all**", m_all);
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
        const auto* const kind = std::find_if(kKinds.begin(), kKinds.end(),
                                              [&](const Kind& k) { return (found.*k.is)(); });
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
    Source m_all;
    std::array<int, kKinds.size()> m_counts{};
    std::array<std::string, kKinds.size()> m_examples;
    int m_faults = 0;
};

}  // namespace

int surveyFormats(const Measuring& measuring) {
    Survey survey;
    for (const Row& row : readTable(measuring.dataDir + "/numfmt/formats.tsv")) {
        survey.add(row);
    }
    survey.write(measuring.out);
    return survey.faults();
}

}  // namespace ZroCommon::testing
