#include "zro/text/internal/NumberLabel.h"

#include <algorithm>

#include <unicode/uchar.h>

#include "zro/text/ZRChar.h"
#include "zro/text/internal/Numerals.h"

namespace ZroCommon::internal {
namespace {

constexpr char16_t kIdeographicZero = u'〇';

bool isTokenUnit(char16_t unit) {
    if (unit < 0x80) {
        return ZRChar::isAsciiDigit(unit) || ZRChar::isAsciiLetter(unit);
    }
    return (unit >= 0x2160 && unit <= 0x2183) || u_isalnum(unit) != 0;
}

// A mark repeated: "**", and on purpose "ii" and "11" too.
bool isRepeated(std::u16string_view format) {
    return format.size() >= 2 && format.find_first_not_of(format.front()) == format.npos;
}

}  // namespace

void NumberLabel::append(std::u16string_view units) {
    m_text.append(units.data(), static_cast<int32_t>(units.size()));
}

UnicodeString NumberLabel::text() {
    if (m_format.empty() || m_format == u"1") {
        writeDecimal();
    } else if (isRepeated(m_format)) {
        writeMarks();
    } else {
        // On purpose: only the first token counts, letters behind it are text.
        const auto* const token = std::find_if(m_format.begin(), m_format.end(), isTokenUnit);
        const auto* const suffix = std::find_if_not(token, m_format.end(), isTokenUnit);
        append({m_format.begin(), token});
        writeBody({token, suffix});
        append({suffix, m_format.end()});
    }
    return std::move(m_text);
}

void NumberLabel::writeMarks() {
    if (m_number >= 1 && static_cast<std::size_t>(m_number) <= m_format.size()) {
        append(m_format.substr(0, static_cast<std::size_t>(m_number)));
        return;
    }
    append(m_format.substr(0, 1));
    writeDecimal();
}

void NumberLabel::writeBody(std::u16string_view token) {
    if (const auto digits = DigitSet::of(token)) {
        writeDecimal(*digits, token.size());
    } else if (!writeSystem(token)) {
        writeDecimal();
    }
}

// False for a token that is of no system.
bool NumberLabel::writeSystem(std::u16string_view token) {
    if (token.empty()) {
        return false;
    }
    if (token.size() == 1) {
        const NumeralSystem* const system = findNumeralSystem(token.front());
        if (system != nullptr) {
            writeNumeral(*system);
        }
        return system != nullptr;
    }
    if (!ZRChar::isZenkaku(int{token.front()})) {
        return false;
    }
    if (m_number < 1) {
        m_text.append(kIdeographicZero);
    } else if (token == u"甲子") {
        appendSexagenary(m_text, m_number);
    } else {
        appendBijective(m_text, m_number, token);  // the token is its own alphabet
    }
    return true;
}

void NumberLabel::writeNumeral(const NumeralSystem& system) {
    using Kind = NumeralSystem::Kind;
    if (m_number < 1) {
        m_text.append(system.zero);
        return;
    }
    switch (system.kind) {
    case Kind::Letters:
    case Kind::LanguageLetters: appendBijective(m_text, m_number, lettersFor(system)); break;
    case Kind::Roman:
    case Kind::RomanForms:
        if (m_number > largestRoman(system.letters)) {
            writeDecimal(DigitSet(static_cast<char16_t>(system.zero + 1)));
        } else {
            appendRoman(m_text, m_number, system.letters, system.kind == Kind::RomanForms);
        }
        break;
    case Kind::Additive: appendAdditive(m_text, m_number, system.letters); break;
    case Kind::Hebrew:
        appendHebrew(m_text, m_number,
                     m_grouping.size == 0 ? UnicodeString() : m_grouping.separator);
        break;
    }
}

std::u16string_view NumberLabel::lettersFor(const NumeralSystem& system) const {
    if (system.kind == NumeralSystem::Kind::LanguageLetters) {
        const std::u16string_view own = lettersOf(m_language, system.script, system.isUpper);
        if (!own.empty()) {
            return own;
        }
    }
    return system.letters;
}

}  // namespace ZroCommon::internal
