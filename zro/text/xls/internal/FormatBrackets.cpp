// What stands in brackets: colours, conditions, elapsed times, numerals and locales.

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "zro/foundation/internal/PackedTexts.h"
#include "zro/text/ZRUtil.h"
#include "zro/text/xls/internal/FormatCompiler.h"

namespace ZroCommon::internal {
namespace {

// The first that the text begins with wins.
constexpr std::u16string_view kRows[] = {
    u"Black", u"White", u"Red",    u"Green",  u"Blue",   u"Yellow", u"Magenta", u"Cyan",
    u"Color", u">=",    u"<=",     u"<>",     u"<",      u">",      u"=",       u"h",
    u"m",     u"s",     u"DBNum1", u"DBNum2", u"DBNum3", u"$"};
constexpr PackedTexts<kRows> kKeywords;
constexpr std::size_t kColor = 8;
constexpr std::size_t kFirstCondition = 9;
constexpr std::size_t kHour = 15;
constexpr std::size_t kMinute = 16;
constexpr std::size_t kSecond = 17;
constexpr std::size_t kFirstDBNum = 18;
constexpr std::size_t kLocale = 21;

bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

// A number with a sign, as values have it: of single precision, NaN where the text is no number.
double numberIn(std::u16string_view text) {
    const std::u16string terminated(text);
    const char16_t* end = nullptr;
    const double number = ZRUtil::parseNumber(terminated.c_str(), &end);
    if (text.empty() || end != terminated.c_str() + text.size()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    constexpr double kMax = std::numeric_limits<float>::max();
    // On purpose: "[>=0.1]" does not hold for 0.1, which lies below the float next to it.
    return std::fabs(number) > kMax ? std::copysign(HUGE_VAL, number)
                                    : static_cast<double>(static_cast<float>(number));
}

}  // namespace

Token FormatCompiler::bracket() {
    ++m_at;
    for (std::size_t keyword = 0; keyword < kKeywords.kCount; ++keyword) {
        if (skipIf(kKeywords[keyword])) {
            return bracketKeyword(keyword);
        }
    }
    return refuse("the brackets hold no colour, condition, elapsed time, DBNum or locale");
}

Token FormatCompiler::bracketKeyword(std::size_t keyword) {
    if (keyword < kColor) {
        constexpr unsigned kFirstColor = 120;
        m_section->colorIndex = static_cast<unsigned char>(kFirstColor + keyword);
        return closed(Token::Color);
    }
    if (keyword >= kFirstCondition && keyword < kHour) {
        return condition(static_cast<unsigned char>(keyword - kFirstCondition + 1));
    }
    switch (keyword) {
    case kColor: return numberedColor();
    case kHour: m_section->hasHour = 1; return elapsed(u'h', Token::ElapsedHour);
    case kMinute: return elapsed(u'm', Token::ElapsedMinute);
    case kSecond: return elapsed(u's', Token::ElapsedSecond);
    case kLocale: return locale();
    default: break;
    }
    const std::size_t system = keyword - kFirstDBNum;
    setKind(Kind::Number);
    m_section->dbNum = static_cast<unsigned char>(system + 1);
    return closed(static_cast<Token>(static_cast<std::size_t>(Token::DBNum) + system));
}

Token FormatCompiler::closed(Token token) {
    return skipIf(u"]") ? token : refuse("the bracket is not closed behind its keyword");
}

Token FormatCompiler::numberedColor() {
    constexpr unsigned kMaxColor = 56;
    constexpr unsigned kFirstColor = 7;
    unsigned number = 0;
    for (; isDigit(peek()); ++m_at) {
        number = std::min(number * 10 + (static_cast<unsigned>(peek()) - u'0'), kMaxColor + 1);
    }
    if (number < 1 || number > kMaxColor) {
        return refuse("numbered colours go from 1 to 56");
    }
    m_section->colorIndex = static_cast<unsigned char>(number + kFirstColor);
    return closed(Token::Color);
}

Token FormatCompiler::condition(unsigned char comparison) {
    constexpr int kLastWithCondition = 1;
    if (m_section->sectionIndex > kLastWithCondition || isKind(Kind::Text)) {
        return refuse("only the first two sections have conditions, and none for text");
    }
    const std::size_t start = m_at;
    bool hasPoint = false;
    bool hasDigit = false;
    for (; isDigit(peek()) || peek() == u'.' || peek() == u'-' || peek() == u'+'; ++m_at) {
        const bool isPoint = peek() == u'.';
        const bool isSign = !isPoint && !isDigit(peek());
        if ((isPoint && hasPoint) || (isSign && (hasDigit || hasPoint))) {
            return refuse("the condition has no number");
        }
        hasPoint = hasPoint || isPoint;
        hasDigit = hasDigit || isDigit(peek());
    }
    m_section->condition = comparison;
    m_section->conditionValue = numberIn(m_source.substr(start, m_at - start));
    return closed(Token::Condition);
}

// "[h]" or "[hh]", of which the first letter has been taken.
Token FormatCompiler::elapsed(char16_t letter, Token first) {
    const std::size_t more = peek() == letter ? 1 : 0;
    m_at += more;
    return closed(date(letter, 3 + more, first, more));
}

// "[$text-409]": the text is a literal, the locale of no effect.
Token FormatCompiler::locale() {
    const std::size_t end = m_source.find(u']', m_at);
    if (end == std::u16string_view::npos) {
        return refuse("the bracket is not closed");
    }
    const std::u16string_view content = m_source.substr(m_at, end - m_at);
    const std::u16string_view text = content.substr(0, content.find(u'-'));
    m_at = end + 1;
    if (!text.empty()) {
        literal(text);
    }
    return Token::Locale;
}

}  // namespace ZroCommon::internal
