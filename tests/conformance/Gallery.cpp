// Shows every numeral system and every token of number formats, and holds docs/gallery.md to it:
// gallery docs/gallery.md [--write]
#include <array>
#include <charconv>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include "tests/conformance/MeasuredPage.h"
#include "tests/support/Text.h"
#include "zro/text/ZRLang.h"
#include "zro/text/ZRUtil.h"
#include "zro/text/xls/XlsFormatString.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon::testing {
namespace {

std::string label(int number, const std::string& format, const char* language = "") {
    return utf8(ZRUtil::formatNumber(number, text(format), {}, 0, ZRLang(language), ZRN_EMPTY));
}

// Labels of a few numbers, cells of a table.
std::string labels(std::initializer_list<int> numbers, const std::string& format,
                   const char* between, const char* language = "") {
    std::string all;
    for (const int number : numbers) {
        all += (all.empty() ? "" : between) + label(number, format, language);
    }
    return all;
}

void showSystems(std::ostream& out) {
    constexpr std::array kFormats = {
        "1",    "001", "٠١", "۰۱", "०१", "০১", "੦੧", "૦૧",       "୦୧",  "౦౧",   "೦೧",
        "൦൧",   "๐๑",  "໐໑", "༠༡", "၀၁", "០១", "᠐᠑", "０１",     "一",  "영일", "a",
        "A",    "i",   "I",  "α",  "Α",  "а",  "А",  "ա",        "Ա",   "א",    "أ",
        "ა",    "ⅰ",   "Ⅰ",  "あ", "い", "ア", "イ", "ㄱ",       "가",  "子",   "甲",
        "甲子", "ａ",  "Ａ", "ｉ", "Ｉ", "ｱ",  "ｲ",  "春夏秋冬", "***", "(i)"};
    out << "| Format | 1 to 12 | 99 | 100 | 1999 |\n|---|---|---|---|---|\n";
    for (const char* format : kFormats) {
        out << "| `" << format << "` | "
            << labels({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, format, " ") << " | "
            << labels({99, 100, 1999}, format, " | ") << " |\n";
    }
}

// The letters of a language in counting order: all labels of one character.
std::string alphabet(const std::string& format, const char* language) {
    std::string all;
    for (int number = 1; text(label(number, format, language)).length() == 1; ++number) {
        all += label(number, format, language);
    }
    return all;
}

void showAlphabets(std::ostream& out) {
    constexpr std::array kLanguages = {"be", "bg", "cs", "da", "de", "el", "eo", "es", "et",
                                       "eu", "fi", "ga", "hu", "is", "it", "lt", "lv", "mk",
                                       "mt", "nl", "no", "pl", "ro", "ru", "sk", "sl", "sq",
                                       "sr", "sv", "tg", "tr", "uk", "uz", "vi"};
    out << "| Language | `a` | 99, 100, 1999 | `A` | 99, 100, 1999 |\n|---|---|---|---|---|\n";
    for (const char* language : kLanguages) {
        out << "| " << language;
        for (const char* format : {"a", "A"}) {
            out << " | " << alphabet(format, language) << " | "
                << labels({99, 100, 1999}, format, " ", language);
        }
        out << " |\n";
    }
}

void showKansuji(std::ostream& out) {
    constexpr std::array kTexts = {"1050", "12,345.67円", "120000000", "0円", "Vol. 12"};
    out << "| Text | plain | `grouping` | `readable` | `latin` digits |\n|---|---|---|---|---|\n";
    for (const char* source : kTexts) {
        out << "| " << source;
        for (const ZRNameEnum method : {ZRN_EMPTY, ZRN_grouping, ZRN_readable}) {
            out << " | " << utf8(ZRUtil::convertKansuji(text(source), method, ZRN_kanji, {}, {}));
        }
        out << " | " << utf8(ZRUtil::convertKansuji(text(source), ZRN_readable, ZRN_latin, {}, {}))
            << " |\n";
    }
}

struct Example {
    const char* token;
    const char* format;
    double number;
    const char* meaning;
};

constexpr double kMoment = 45000.5430671296;  // 15 March 2023, 13:02:01

constexpr auto kExamples = std::to_array<Example>({
    {"0", "000", 5, "a digit, 0 where there is none"},
    {"#", "###", 5, "a digit, nothing where there is none"},
    {"?", "???", 5, "a digit, a blank where there is none"},
    {".", "0.00", 2.5, "the decimal point"},
    {"%", "0%", 0.25, "a hundred times, with its sign"},
    {",", "#,##0", 1234567, "between places: groups of three digits"},
    {",", "0.0,,", 1500000, "behind places: a thousandth each"},
    {"E+", "0.00E+00", 12345, "an exponent with its sign"},
    {"E-", "0.00E-00", 12345, "an exponent with a minus alone"},
    {"/", "#\\ ?\?/?\?", 3.1416, "a fraction"},
    {"/8", "#\\ ?/8", 0.3, "a fraction with its denominator given"},
    {"General", "General", 1234.5, "as it is, as far as eleven columns reach"},
    {"@", "\"<\"@\">\"", 5, "a text; numbers show as `General`"},
    {"\"…\"", "\"no. \"0", 5, "a literal text"},
    {"\\x", "\\$0", 5, "a literal character"},
    {"\\\"", "0\\\"", 5, "a quotation mark"},
    {":", "0:00", 630, "a colon, literal too"},
    {"_x", "0_x\\<", 5, "a blank as wide as the x"},
    {"*x", "*x0", 5, "the x, up to the width where the cell is filled"},
    {";", "0;\\(0\\);\"nil\"", -5, "sections: above 0, below 0, 0, texts"},
    {"[>=N]", "[>=100]\"many\";0", 250, "a condition: >=, <=, <>, <, > or ="},
    {"[Red]", "[Red]0", 5,
     "a colour, told beside the text: Black, White, Red, Green, Blue, "
     "Yellow, Magenta, Cyan"},
    {"[ColorN]", "[Color10]0", 5, "the same by a number of 1 to 56"},
    {"[$…]", "[$€-407]\\ 0", 5, "a text such as a currency's; a locale has no effect"},
    {"[DBNum1]", "[DBNum1]General", 1234, "ideographs, as numbers are read"},
    {"[DBNum2]", "[DBNum2]General", 1234, "formal ideographs"},
    {"[DBNum3]", "[DBNum3]0", 1234, "full-width digits"},
    {"yy", "yy", kMoment, "the year"},
    {"yyyy", "yyyy", kMoment, "the year"},
    {"m", "m", kMoment, "the month; minutes behind hours and ahead of `:s`"},
    {"mm", "mm", kMoment, "the same"},
    {"mmm", "mmm", kMoment, "the month"},
    {"mmmm", "mmmm", kMoment, "the month"},
    {"mmmmm", "mmmmm", kMoment, "the month"},
    {"d", "d", kMoment + 20, "the day"},
    {"dd", "dd", kMoment + 20, "the day"},
    {"ddd", "ddd", kMoment, "the weekday"},
    {"dddd", "dddd", kMoment, "the weekday"},
    {"aaa", "aaa", kMoment, "the weekday"},
    {"aaaa", "aaaa", kMoment, "the weekday"},
    {"g", "g", 20000, "the Japanese era"},
    {"gg", "gg", 20000, "the era"},
    {"ggg", "ggg", 20000, "the era"},
    {"e", "e", 9900, "the year of the era"},
    {"ee", "ee", 9900, "the year of the era"},
    {"r", "r", kMoment, "era and year, the last era without its name"},
    {"rr", "rr", kMoment, "era and year"},
    {"h", "h:m", kMoment, "hours and minutes"},
    {"hh", "hh:mm", kMoment, "the same"},
    {"s", "m:s", kMoment, "seconds"},
    {"ss", "mm:ss", kMoment, "seconds"},
    {"ss.0", "ss.000", kMoment + 0.000001, "fractions of a second, up to three digits"},
    {"AM/PM", "h:mm\\ AM/PM", kMoment, "the half of the day; also am/pm, A/P, a/p"},
    {"[h]", "[h]:mm", 1.5, "hours of all days"},
    {"[hh]", "[hh]:mm", 0.1, "the same"},
    {"[m]", "[m]:ss", 1.5, "minutes of all days"},
    {"[mm]", "[mm]:ss", 0.001, "the same"},
    {"[s]", "[s]", 1.5, "seconds of the day"},
    {"[ss]", "[ss]", 1.5, "seconds of all days"},
});

std::string code(const std::string& text) {
    return "`" + text + "`";
}

std::string plain(double number) {
    std::array<char, 32> digits{};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                         std::chars_format::fixed)
                               .ptr};
}

void showTokens(std::ostream& out) {
    out << "| Token | Means | Format | Number | Shows |\n|---|---|---|---:|---|\n";
    for (const auto& [token, format, number, meaning] : kExamples) {
        XlsFormatString formats;
        out << "| " << code(token) << " | " << meaning << " | " << code(format) << " | "
            << plain(number) << " | " << code(utf8(formats.FormatString(text(format), number)))
            << " |\n";
    }
}

// The kinds of tokens that no example has: each beginning of a format ends with one.
int countMissingTokens() {
    std::map<int, bool> isShown;
    for (const Example& example : kExamples) {
        const UnicodeString format = text(example.format);
        for (int32_t length = 1; length <= format.length(); ++length) {
            FMT2 compiled;
            if (XlsFormatString().fmtget(UnicodeString(format, 0, length), &compiled) == 1) {
                const auto last = static_cast<std::size_t>(compiled.sectionCount - 1);
                isShown[compiled.section[last].lastToken] = true;
            }
        }
    }
    constexpr int kFirst = 3;
    constexpr int kLast = 55;
    constexpr int kUnused = 50;
    int missing = 0;
    for (int token = kFirst; token <= kLast; ++token) {
        if (token != kUnused && !isShown[token]) {
            std::cout << "no example has a token of kind " << token << '\n';
            ++missing;
        }
    }
    return missing;
}

int showAll(const std::string& page, bool write) {
    std::ostringstream out;
    out << "## Numeral systems\n\n";
    showSystems(out);
    out << "\n## Alphabets of languages\n\n";
    showAlphabets(out);
    out << "\n## Japanese numerals in a text\n\n";
    showKansuji(out);
    out << "\n## Tokens of number formats\n\n";
    showTokens(out);
    return countMissingTokens() > 0 ? 1 : comparePage(page, out.str(), write);
}

}  // namespace
}  // namespace ZroCommon::testing

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: gallery PAGE [--write]\n";
        return 2;
    }
    const bool write = argc > 2 && std::string_view(argv[2]) == "--write";
    return ZroCommon::testing::showAll(argv[1], write);
}
