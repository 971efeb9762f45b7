#include "tools/zro/CellFormat.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "zro/text/ZRUtil.h"

#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::FMT;
using ZroCommon::FMT2;

constexpr unsigned char kDateKind = 2;
constexpr unsigned char kTextKind = 3;

struct Meaning {
    std::u16string_view compiled;
    std::string_view written;
    std::string_view shows;
};

constexpr std::array kMeanings = {
    Meaning{u"0", "0", "a digit, 0 where there is none"},
    Meaning{u"#", "#", "a digit, nothing where there is none"},
    Meaning{u"?", "?", "a digit, a blank where there is none"},
    Meaning{u".", ".", "the decimal point"},
    Meaning{u"%", "%", "a percent sign; the number counts a hundred times"},
    Meaning{u",", ",", "nothing; the number counts a thousandth"},
    Meaning{u"/", "/", "the bar of a fraction or date"},
    Meaning{u"@", "@", "the text of the cell"},
    Meaning{u"G", "General", "the number as it is"},
    Meaning{u"E+", "E+", "the exponent, with its sign"},
    Meaning{u"E-", "E-", "the exponent, with a minus alone"},
    Meaning{u"e+", "e+", "the exponent, with its sign"},
    Meaning{u"e-", "e-", "the exponent, with a minus alone"},
    Meaning{u"M1", "m", "the month: 1"},
    Meaning{u"M2", "mm", "the month: 01"},
    Meaning{u"M3", "mmm", "the month: Jan"},
    Meaning{u"M4", "mmmm", "the month: January"},
    Meaning{u"M5", "mmmmm", "the month: J"},
    Meaning{u"m1", "m", "minutes: 5"},
    Meaning{u"m2", "mm", "minutes: 05"},
    Meaning{u"m3", "[m]", "minutes of all days"},
    Meaning{u"m4", "[mm]", "minutes of all days, two digits at least"},
    Meaning{u"D1", "d", "the day: 1"},
    Meaning{u"D2", "dd", "the day: 01"},
    Meaning{u"D3", "ddd", "the weekday: Sun"},
    Meaning{u"D4", "dddd", "the weekday: Sunday"},
    Meaning{u"D5", "aaa", "the weekday: \xE6\x97\xA5"},
    Meaning{u"D6", "aaaa", "the weekday: \xE6\x97\xA5\xE6\x9B\x9C\xE6\x97\xA5"},
    Meaning{u"Y2", "yy", "the year: 05"},
    Meaning{u"Y4", "yyyy", "the year: 2005"},
    Meaning{u"R1", "r", "era and year, the last era without its name"},
    Meaning{u"R2", "rr", "era and year"},
    Meaning{u"R3", "g", "the era: H"},
    Meaning{u"R4", "gg", "the era: \xE5\xB9\xB3"},
    Meaning{u"R5", "ggg", "the era: \xE5\xB9\xB3\xE6\x88\x90"},
    Meaning{u"R6", "e", "the year of the era: 5"},
    Meaning{u"R7", "ee", "the year of the era: 05"},
    Meaning{u"h1", "h", "hours: 5"},
    Meaning{u"h2", "hh", "hours: 05"},
    Meaning{u"h3", "[h]", "hours of all days"},
    Meaning{u"h4", "[hh]", "hours of all days, two digits at least"},
    Meaning{u"s1", "s", "seconds: 5"},
    Meaning{u"s2", "ss", "seconds: 05"},
    Meaning{u"s3", "[s]", "seconds of the day"},
    Meaning{u"s4", "[ss]", "seconds of all days"},
    Meaning{u"AM/PM", "AM/PM", "the half of the day"},
    Meaning{u"am/pm", "am/pm", "the half of the day"},
    Meaning{u"A/P", "A/P", "the half of the day"},
    Meaning{u"a/p", "a/p", "the half of the day"},
};

// The piece that a text begins with, null for a digit of a denominator.
const Meaning* meaningOf(std::u16string_view compiled) {
    const auto* const found =
        std::find_if(kMeanings.begin(), kMeanings.end(), [compiled](const Meaning& meaning) {
            return compiled.substr(0, meaning.compiled.size()) == meaning.compiled;
        });
    return found == kMeanings.end() ? nullptr : found;
}

/// Takes a compiled section apart from its start.
class Pieces {
public:
    explicit Pieces(const FMT& section)
        : m_rest(section.compiled.getBuffer(), static_cast<std::size_t>(section.compiled.length())),
          m_isDate(section.kind == kDateKind) {}

    bool isEnd() const { return m_rest.empty(); }

    FormatPiece next() {
        switch (m_rest.front()) {
        case u'"': return {take(std::min(m_rest.find(u'"', 1), m_rest.size() - 1) + 1), "the text"};
        case u'\\': return {take(2), "the character"};
        case u'*': return {take(2), "the character, up to the width"};
        case u'0':
        case u'#':
        case u'?': return placeholders();
        default: break;
        }
        const Meaning* const meaning = meaningOf(m_rest);
        if (meaning == nullptr) {
            return {take(m_rest.find_first_not_of(u"0123456789")), "the denominator"};
        }
        take(meaning->compiled.size());
        return {std::string(meaning->written), std::string(meaning->shows)};
    }

private:
    std::string take(std::size_t count) {
        const std::u16string_view piece = m_rest.substr(0, std::max<std::size_t>(count, 1));
        m_rest.remove_prefix(piece.size());
        return toUtf8(UnicodeString(piece.data(), static_cast<int32_t>(piece.size())));
    }

    FormatPiece placeholders() {
        const std::string_view shows =
            m_isDate ? "a fraction of the second" : meaningOf(m_rest)->shows;
        return {take(m_rest.find_first_not_of(m_rest.front())), std::string(shows)};
    }

    std::u16string_view m_rest;
    bool m_isDate;
};

std::string conditionOf(const FMT& section) {
    constexpr std::array kSigns = {"", ">=", "<=", "<>", "<", ">", "="};
    return std::string(kSigns.at(section.condition)) + " "
           + toUtf8(ZroCommon::ZRUtil::toString(section.conditionValue));
}

}  // namespace

std::vector<FormatPiece> piecesOf(const FMT& section) {
    std::vector<FormatPiece> all;
    for (Pieces pieces(section); !pieces.isEnd();) {
        all.push_back(pieces.next());
    }
    return all;
}

const char* kindName(const FMT& section) {
    constexpr std::array kNames = {"literal", "number", "date", "text"};
    return kNames.at(section.kind);
}

std::string colorName(unsigned char colorIndex) {
    constexpr std::array kNames = {"Black", "White",  "Red",     "Green",
                                   "Blue",  "Yellow", "Magenta", "Cyan"};
    constexpr unsigned char kFirstNamed = 120;
    constexpr unsigned char kBeforeNumbered = 7;
    if (colorIndex >= kFirstNamed) {
        return kNames.at(static_cast<std::size_t>(colorIndex - kFirstNamed));
    }
    return colorIndex == 0 ? "" : "Color" + std::to_string(colorIndex - kBeforeNumbered);
}

std::string purposeOf(const FMT2& format, int index) {
    const auto* const end = format.section.begin() + format.sectionCount;
    const auto* const text = std::find_if(
        format.section.begin(), end, [](const FMT& section) { return section.kind == kTextKind; });
    const FMT& section = format.section.at(static_cast<std::size_t>(index));
    const auto numeric = text - format.section.begin();
    if (text != end && index >= numeric) {
        return index == numeric ? "texts" : "nothing";
    }
    if (index > 2) {
        return "nothing";
    }
    if (section.condition != 0 && index < 2) {
        return "numbers " + conditionOf(section);
    }
    if (index == 0) {
        return numeric == 1 ? "all numbers" : numeric == 2 ? "numbers >= 0" : "numbers > 0";
    }
    return index == 1 && numeric > 2 ? "numbers < 0" : "other numbers";
}

}  // namespace zro
