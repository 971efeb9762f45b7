#include "zro/text/xls/internal/NumberWalker.h"

#include <algorithm>
#include <cmath>

#include "zro/text/xls/internal/GeneralNumber.h"

namespace ZroCommon::internal {
namespace {

constexpr unsigned char kNegative = 2;

bool isZeros(std::string_view digits) {
    return digits.find_first_not_of('0') == std::string_view::npos;
}

}  // namespace

bool NumberWalker::walk(double number) {
    m_sign = number < 0 ? kNegative : number > 0 ? 1 : 0;
    m_magnitude = std::fabs(number);
    if (!std::isfinite(number) || !m_parts.prepare(m_section, m_magnitude)) {
        return false;
    }
    const UnicodeString& compiled = m_section.compiled;
    m_format = {compiled.getBuffer(), static_cast<std::size_t>(compiled.length())};
    m_decimals = m_parts.decimals();
    m_fracZerosLeft = m_section.fracZeros;
    m_zerosLeft = m_section.intZeros;
    m_isGrouped = m_section.grouped != 0;
    if (m_section.hasSlash == 0) {
        enter(Stage::Integer, m_parts.integer(), m_section.intPlaces);
    } else if (m_section.intDigits != 0) {
        enter(Stage::Integer, m_parts.integer(), m_section.intDigits);
    } else {
        enter(Stage::Numerator, m_parts.numerator(), m_section.numeratorDigits);
    }
    while (!m_format.empty()) {
        step();
        if (m_text.columns() > m_place.limit) {
            return false;
        }
    }
    return true;
}

void NumberWalker::enter(Stage stage, std::string_view digits, std::size_t places) {
    m_stage = stage;
    m_digits = digits;
    m_placesLeft = places;
}

char16_t NumberWalker::take() {
    const char16_t c = m_format.front();
    m_format.remove_prefix(1);
    return c;
}

void NumberWalker::step() {
    const char16_t c = take();
    switch (c) {
    case u'0':
    case u'#':
    case u'?': writePlaceholder(c); return;
    case u'"': writeQuoted(); return;
    case u'.': writePoint(); return;
    case u'%': m_text.append(c); return;
    case u'*': writeFill(); return;
    case u'/': writeSlash(); return;
    case u'E':
    case u'e': writeExponentMark(c); return;
    case u'G': writeGeneral(); return;
    case u'\\': writeEscaped(); return;
    default: break;  // a comma, or part of a date, which has no meaning here
    }
    if (m_stage == Stage::Denominator && c >= u'1' && c <= u'9') {
        writePlaceholder(c);
    }
}

// Literals and marks.

// The minus goes ahead of the first literal or digit; zeros have none.
void NumberWalker::writeSign() {
    if (m_sign == kNegative) {
        if (!m_parts.isZero()) {
            m_text.append(u'-');
        }
        m_sign = 0;
    }
}

void NumberWalker::writeQuoted() {
    writeSign();
    const std::size_t end = std::min(m_format.find(u'"'), m_format.size());
    m_text.append(m_format.substr(0, end));
    m_format.remove_prefix(std::min(end + 1, m_format.size()));
}

void NumberWalker::writeEscaped() {
    writeSign();
    if (!m_format.empty()) {
        m_text.append(take());
    }
}

void NumberWalker::writeFill() {
    if (m_format.empty()) {
        return;
    }
    if (m_place.isFilled) {
        m_text.fillHere(take());
    } else {
        m_text.append(take());
    }
}

void NumberWalker::writePoint() {
    m_text.append(u'.');
    enter(Stage::Fraction, {}, 0);
}

// Of a fraction that is none, the slash turns into a blank like everything else.
void NumberWalker::writeSlash() {
    if (m_section.hasSlash == 0) {
        m_text.append(u'/');
        return;
    }
    const bool isFirst = m_stage != Stage::Denominator;
    const bool hasMore = isFirst ? !m_parts.denominator().empty() : !m_digits.empty();
    m_text.append(hasMore ? u'/' : u' ');
    if (isFirst) {
        enter(Stage::Denominator, m_parts.denominator(), m_section.denominatorDigits);
    }
}

void NumberWalker::writeExponentMark(char16_t letter) {
    m_text.append(letter);
    const char16_t mark = m_format.empty() ? u'\0' : take();
    if (m_parts.exponentSign() == kNegative) {
        m_text.append(u'-');
    } else if (mark == u'+') {
        m_text.append(u'+');
    }
    enter(Stage::Exponent, m_parts.exponent(), m_section.expPlaces);
    m_decimals = "0";  // of the exponent, for a point behind it
    m_isGrouped = false;
    m_mark = Mark::None;
    m_zerosLeft = m_section.expZeros;
}

// On purpose: the number brings its own sign, and the minus still waits for what follows.
void NumberWalker::writeGeneral() {
    if (m_numerals.areUsed()) {
        m_numerals.appendGeneral(m_text, m_magnitude, m_place.width);
        return;
    }
    DecimalString text;
    const double number = m_valueSign == kNegative ? -m_magnitude : m_magnitude;
    if (internal::writeGeneral(number, m_place.width, text)) {
        m_text.append(text.text());
    } else {
        m_text.append(m_place.width, u'#');
    }
}

// Digits.

void NumberWalker::writePlaceholder(char16_t placeholder) {
    writeSign();
    if (m_stage == Stage::Fraction) {
        writeDecimal(placeholder);
        return;
    }
    if (m_stage == Stage::Integer && m_section.hasSlash != 0 && m_placesLeft == 0) {
        enter(Stage::Numerator, m_parts.numerator(), m_section.numeratorDigits);
    }
    while (m_digits.size() > m_placesLeft) {
        writeDigit();
    }
    if (m_placesLeft == 0) {
        return;
    }
    --m_placesLeft;
    if (m_digits.size() <= m_placesLeft) {
        pad(placeholder);
    } else if (placeholder == u'?' && m_stage == Stage::Integer && m_parts.integer() == "0") {
        m_digits = {};
        m_text.append(m_numerals.blank());
    } else {
        writeDigit();
    }
}

void NumberWalker::writeDigit() {
    m_text.append(m_numerals.digit(m_digits.front()));
    m_digits.remove_prefix(1);
    if (m_isGrouped && m_stage == Stage::Integer) {
        m_mark = Mark::Comma;
        writeMark(m_digits.size());
    }
}

void NumberWalker::writeMark(std::size_t digitsBehind) {
    if (digitsBehind == 0 || digitsBehind % 3 != 0) {
        return;
    }
    if (m_mark == Mark::Comma) {
        m_text.append(m_numerals.comma());
    } else if (m_mark == Mark::Blank) {
        m_text.append(m_numerals.blank());
    }
}

// A place that has no digit.
void NumberWalker::pad(char16_t placeholder) {
    if (m_stage == Stage::Denominator) {
        padDenominator(placeholder);
        return;
    }
    const bool isGroup = m_isGrouped && m_stage == Stage::Integer;
    if (placeholder == u'0' && m_zerosLeft > 0) {
        --m_zerosLeft;
        m_text.append(m_numerals.digit('0'));
        m_mark = isGroup ? Mark::Comma : m_mark;
    } else if (placeholder == u'?') {
        m_text.append(m_numerals.blank());
        m_mark = isGroup ? Mark::Blank : m_mark;
    } else {
        return;
    }
    if (isGroup) {
        writeMark(m_placesLeft);
    }
}

void NumberWalker::padDenominator(char16_t placeholder) {
    if (placeholder == u'?') {
        m_text.append(m_numerals.blank());
    } else if (placeholder != u'#') {
        m_text.append(m_digits.empty() ? u' ' : placeholder);
    }
}

// A place behind the point.
void NumberWalker::writeDecimal(char16_t placeholder) {
    const std::string_view rest = m_decimals;
    m_decimals.remove_prefix(rest.empty() ? 0 : 1);
    if (placeholder == u'#') {
        if (!isZeros(rest)) {
            m_text.append(m_numerals.digit(rest.front()));
        }
        return;
    }
    if (!rest.empty()) {
        m_text.append(m_numerals.digit(rest.front()));
    } else if (m_fracZerosLeft > 0) {
        m_text.append(placeholder == u'0' ? m_numerals.digit('0') : m_numerals.blank());
    }
    m_fracZerosLeft -= m_fracZerosLeft > 0 ? 1 : 0;
}

}  // namespace ZroCommon::internal
