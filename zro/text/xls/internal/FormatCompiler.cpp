#include "zro/text/xls/internal/FormatCompiler.h"

#include <algorithm>

namespace ZroCommon::internal {
namespace {

constexpr int kMaxSections = 4;

char16_t lower(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
}

bool isPlaceholder(char16_t c) {
    return c == u'0' || c == u'#' || c == u'?';
}

Token operator+(Token first, std::size_t form) {
    return static_cast<Token>(static_cast<std::size_t>(first) + form);
}

}  // namespace

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): only m_length are read
FormatCompiler::FormatCompiler(std::u16string_view format, bool isCurrentVersion, FMT2& result)
    : m_source(format),
      m_isCurrentVersion(isCurrentVersion),
      m_result(result),
      m_section(result.section.data()) {
    result = FMT2();
    result.sectionCount = 1;
}

bool FormatCompiler::compile() {
    while (m_at < m_source.size()) {
        const std::size_t start = m_at;
        Token token = next();
        if (token != Token::Invalid && m_length > kMaxCompiled) {
            token = refuse("the section is longer than 255 characters");
        }
        if (token == Token::Invalid) {
            m_fault.position = static_cast<int>(start);
            return false;
        }
        m_section->lastToken = static_cast<unsigned char>(token);
    }
    closeSection();
    return true;
}

Token FormatCompiler::refuse(const char* reason) {
    m_fault.reason = reason;
    return Token::Invalid;
}

void FormatCompiler::append(char16_t c) {
    if (m_length <= kMaxCompiled) {
        m_compiled[m_length++] = c;
    }
}

void FormatCompiler::append(std::u16string_view text) {
    for (const char16_t c : text) {
        append(c);
    }
}

bool FormatCompiler::skipIf(std::u16string_view text) {
    const bool isThere = m_source.substr(m_at, text.size()) == text;
    m_at += isThere ? text.size() : 0;
    return isThere;
}

// `text` is in lower case.
bool FormatCompiler::skipIfAnyCase(std::u16string_view text) {
    const std::u16string_view here = m_source.substr(m_at, text.size());
    const bool isThere = std::equal(here.begin(), here.end(), text.begin(), text.end(),
                                    [](char16_t c, char16_t other) { return lower(c) == other; });
    m_at += isThere ? text.size() : 0;
    return isThere;
}

// How often the letter here stands in a row, as far as a token reaches. They are taken.
std::size_t FormatCompiler::takeRun(std::size_t limit) {
    const char16_t c = lower(peek());
    std::size_t count = 0;
    while (count < limit && m_at < m_source.size() && lower(peek()) == c) {
        ++m_at;
        ++count;
    }
    return count;
}

// The grammar: what a token begins with.
Token FormatCompiler::next() {
    const char16_t c = peek();
    switch (c) {
    case u'0':
    case u'#':
    case u'?': return placeholder(c);
    case u'1':
    case u'2':
    case u'3':
    case u'4':
    case u'5':
    case u'6':
    case u'7':
    case u'8':
    case u'9': return denominatorDigit();
    case u'.': m_section->hasPoint = 1; return mark(Token::Point);
    case u'%': return percent();
    case u'/': return slash();
    case u',': return comma();
    case u'*': return fill();
    case u';': return openSection();
    case u'"': return quoted();
    case u'\\': return escaped();
    case u'_': return blank();
    case u':': ++m_at; return literal(u":");
    case u'@': setKind(Kind::Text); return mark(Token::Text);
    case u'[': return bracket();
    default: return letter();
    }
}

Token FormatCompiler::letter() {
    switch (lower(peek())) {
    case u'a': return halfOrWeekday();
    case u'd': return date(u'D', takeRun(4), Token::Day);
    case u'e': return yearOfEra();
    case u'g': return general();
    case u'h': return hour();
    case u'm': return monthOrMinute();
    case u'r': return date(u'R', takeRun(2), Token::EraYear);
    case u's': return second();
    case u'y': return year();
    default: return refuse("the character has no meaning here: quote it or put a backslash ahead");
    }
}

Token FormatCompiler::openSection() {
    if (m_result.sectionCount == kMaxSections) {
        return refuse("a format has no more than four sections");
    }
    ++m_at;
    closeSection();
    const int index = m_result.sectionCount++;
    ++m_section;
    m_section->sectionIndex = static_cast<unsigned char>(index);
    if (index == kMaxSections - 1) {
        setKind(Kind::Text);
    }
    return Token::Section;
}

void FormatCompiler::closeSection() {
    m_section->compiled.setTo(m_compiled.data(), static_cast<int>(m_length));
    m_section->compiledLength = static_cast<unsigned char>(m_length);
    m_length = 0;
}

// Placeholders and marks.

Token FormatCompiler::placeholder(char16_t c) {
    const bool isZero = c == u'0';
    if (!(isZero && isKind(Kind::Date) && m_section->hasPoint != 0)) {
        setKind(Kind::Number);  // anything else than fractions of a second
    }
    takeBackComma();
    if (!countPlaceholder(isZero)) {
        return refuse("a denominator is either a number or placeholders");
    }
    return mark(isZero ? Token::Zero : c == u'#' ? Token::Sharp : Token::Question);
}

// A comma ahead of a placeholder groups digits; it does not divide.
void FormatCompiler::takeBackComma() {
    if (follows(Token::Comma)) {
        m_section->grouped = 1;
        --m_section->commaCount;
        --m_length;
    }
}

// Which part of the number a placeholder belongs to: exponent, decimals, denominator, integer.
bool FormatCompiler::countPlaceholder(bool isZero) {
    FMT& section = *m_section;
    const auto countIf = [](unsigned char& count, bool counts) {
        count = static_cast<unsigned char>(count + (counts ? 1 : 0));
    };
    if (section.hasExponent != 0) {
        ++section.expPlaces;
        ++section.expAll;
        countIf(section.expZeros, isZero);
    } else if (section.hasPoint != 0) {
        ++section.fracPlaces;
        countIf(section.fracZeros, isZero || peek() == u'?');
    } else if (section.hasSlash != 0) {
        ++section.denominatorDigits;
        if (isZero) {
            foldDenominator(0);
        }
        return isZero || section.fixedDenominator == 0;
    } else {
        ++section.intPlaces;
        ++section.intDigits;
        countIf(section.intZeros, isZero);
    }
    return true;
}

// Wraps at 16 bits.
void FormatCompiler::foldDenominator(unsigned digit) {
    m_section->fixedDenominator =
        static_cast<unsigned short>(m_section->fixedDenominator * 10U + digit);
}

Token FormatCompiler::denominatorDigit() {
    if (m_section->hasSlash == 0) {
        return refuse("a digit other than 0 stands in a denominator only: quote it");
    }
    ++m_section->denominatorDigits;
    foldDenominator(static_cast<unsigned>(peek()) - u'0');
    return mark(Token::Zero);
}

Token FormatCompiler::mark(Token token) {
    append(m_source[m_at++]);
    return token;
}

Token FormatCompiler::percent() {
    ++m_section->percentCount;
    return mark(Token::Percent);
}

// The placeholders right ahead are a numerator and no integer digits.
Token FormatCompiler::slash() {
    FMT& section = *m_section;
    section.hasSlash = 1;
    if (section.intDigits != 0) {
        std::size_t count = 0;
        while (count < m_length && isPlaceholder(m_compiled[m_length - 1 - count])) {
            ++count;
        }
        section.numeratorDigits = static_cast<unsigned char>(count);
        const std::size_t integerDigits =
            section.intDigits - std::min<std::size_t>(count, section.intDigits);
        section.intDigits = static_cast<unsigned char>(integerDigits);
    }
    return mark(Token::Slash);
}

Token FormatCompiler::comma() {
    if (follows(Token::Zero) || follows(Token::Sharp) || follows(Token::Question)
        || follows(Token::Comma)) {
        ++m_section->commaCount;
        return mark(Token::Comma);
    }
    // On purpose: a literal comma swallows the character behind it, whatever that is.
    m_at = std::min(m_at + 2, m_source.size());
    return literal(u",");
}

Token FormatCompiler::fill() {
    append(m_source[m_at++]);
    if (m_at < m_source.size()) {
        append(m_source[m_at++]);
    }
    return Token::Fill;
}

// Literals: a run of them is one quoted string.

Token FormatCompiler::literal(std::u16string_view text) {
    if (follows(Token::Literal) && m_length > 0) {
        --m_length;
    } else {
        append(u'"');
    }
    append(text);
    append(u'"');
    return Token::Literal;
}

Token FormatCompiler::quoted() {
    const std::size_t end = m_source.find(u'"', m_at + 1);
    if (end == std::u16string_view::npos) {
        return refuse("the quotation mark is not closed");
    }
    const std::u16string_view text = m_source.substr(m_at + 1, end - m_at - 1);
    m_at = end + 1;
    return literal(text);
}

Token FormatCompiler::escaped() {
    if (peek(1) == u'"') {
        append(m_source.substr(m_at, 2));
        m_at += 2;
        return Token::EscapedQuote;
    }
    const std::u16string_view text = m_source.substr(m_at + 1, 1);
    m_at += 1 + text.size();
    return literal(text);
}

// "_x", a blank as wide as the x, which is dropped.
Token FormatCompiler::blank() {
    m_at = std::min(m_at + 2, m_source.size());
    return literal(u" ");
}

// Letters.

// A token of a date: `form` is the digit behind its letter, `code` the place among its kind.
Token FormatCompiler::date(char16_t letter, std::size_t form, Token first, std::size_t code) {
    setKind(Kind::Date);
    append(letter);
    append(static_cast<char16_t>(u'0' + form));
    return first + code;
}

Token FormatCompiler::monthOrMinute() {
    if (m_section->hasHour != 0) {
        return date(u'm', takeRun(2), Token::Minute);
    }
    const std::size_t start = m_at;
    const std::size_t count = takeRun(2);
    if (peek() == u':' && lower(peek(1)) == u's') {
        return date(u'm', count, Token::Minute);
    }
    m_at = start;
    return date(u'M', takeRun(5), Token::Month);
}

Token FormatCompiler::year() {
    const std::size_t start = m_at;
    const std::size_t count = takeRun(4);
    if (count == 4) {
        return date(u'Y', 4, Token::LongYear, 0);
    }
    if (count == 1) {
        return refuse("a year is yy or yyyy");
    }
    m_at = start + 2;
    return date(u'Y', 2, Token::ShortYear, 0);
}

Token FormatCompiler::hour() {
    m_section->hasHour = 1;
    return date(u'h', takeRun(2), Token::Hour);
}

Token FormatCompiler::second() {
    return date(u's', takeRun(2), Token::Second);
}

// "E+00", or the year of an era.
Token FormatCompiler::yearOfEra() {
    if (peek(1) == u'+' || peek(1) == u'-') {
        setKind(Kind::Number);
        m_section->hasExponent = 1;
        append(m_source.substr(m_at, 2));
        m_at += 2;
        return Token::Exponent;
    }
    if (!m_isCurrentVersion) {
        return refuse("an exponent has a sign");
    }
    const std::size_t count = takeRun(2);
    return date(u'R', 5 + count, Token::YearOfEra, count - 1);
}

Token FormatCompiler::general() {
    if (skipIfAnyCase(u"general")) {
        append(u'G');
        return Token::General;
    }
    return eraName();
}

Token FormatCompiler::eraName() {
    const char16_t c = peek();
    const std::size_t count = takeRun(3);
    if (count == 1 && !m_isCurrentVersion) {
        return literal({&c, 1});
    }
    return date(u'R', 2 + count, Token::EraName, count - 1);
}

// "AM/PM" and its kin, or a Japanese weekday.
Token FormatCompiler::halfOrWeekday() {
    for (const std::u16string_view half : {u"AM/PM", u"am/pm", u"A/P", u"a/p"}) {
        if (skipIf(half)) {
            setKind(Kind::Date);
            m_section->hasAmPm = 1;
            append(half);
            return Token::DayHalf;
        }
    }
    const std::size_t start = m_at;
    const std::size_t count = takeRun(4);
    if (count >= 3) {
        return date(u'D', count + 2, Token::JapaneseWeekday, count - 3);
    }
    m_at = start;
    if (m_isCurrentVersion) {
        return refuse("halves of a day are AM/PM, am/pm, A/P or a/p, weekdays aaa or aaaa");
    }
    return literal(m_source.substr(m_at++, 1));
}

}  // namespace ZroCommon::internal
