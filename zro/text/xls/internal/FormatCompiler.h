#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "zro/text/xls/XlsFormat.h"

namespace ZroCommon::internal {

/// What a piece of a format is; the first of a row of forms stands for all (`Month` + 2 is "mmm").
enum class Token : unsigned char {
    Invalid = 0,
    Section = 2,
    Zero = 3,
    Sharp = 4,
    Question = 5,
    Point = 6,
    Exponent = 7,
    Slash = 8,
    Percent = 9,
    Comma = 10,
    DBNum = 11,
    Month = 14,
    Minute = 19,
    ElapsedMinute = 21,
    Day = 23,
    JapaneseWeekday = 27,
    EraYear = 29,
    EraName = 31,
    YearOfEra = 34,
    ShortYear = 36,
    LongYear = 37,
    Hour = 38,
    ElapsedHour = 40,
    Second = 42,
    ElapsedSecond = 44,
    DayHalf = 46,
    Color = 47,
    Condition = 48,
    Fill = 49,
    Text = 51,
    General = 52,
    Literal = 53,
    EscapedQuote = 54,
    Locale = 55,
};

/// Turns the text of a format into its sections, token by token.
class FormatCompiler {
public:
    /// \param isCurrentVersion  of the book; the grammar of others has no "e"
    FormatCompiler(std::u16string_view format, bool isCurrentVersion, FMT2& result);

    /// False for an invalid format, of which `fault()` tells.
    bool compile();
    const XlsFormatFault& fault() const { return m_fault; }

private:
    enum class Kind : unsigned char { Open, Number, Date, Text };

    // The source. Behind its end there is U+0000, which no token begins with.
    char16_t peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_source.size() ? m_source[m_at + ahead] : u'\0';
    }
    bool skipIf(std::u16string_view text);
    bool skipIfAnyCase(std::u16string_view text);
    std::size_t takeRun(std::size_t limit);

    Token next();
    Token letter();
    Token openSection();
    void closeSection();
    Token refuse(const char* reason);

    // Placeholders and marks.
    Token placeholder(char16_t c);
    void takeBackComma();
    bool countPlaceholder(bool isZero);
    void foldDenominator(unsigned digit);
    Token denominatorDigit();
    Token mark(Token token);
    Token percent();
    Token slash();
    Token comma();
    Token fill();

    // Literals.
    Token literal(std::u16string_view text);
    Token quoted();
    Token escaped();
    Token blank();

    // Letters.
    Token date(char16_t letter, std::size_t form, Token first, std::size_t code);
    Token date(char16_t letter, std::size_t form, Token first) {
        return date(letter, form, first, form - 1);
    }
    Token monthOrMinute();
    Token year();
    Token hour();
    Token second();
    Token yearOfEra();
    Token general();
    Token eraName();
    Token halfOrWeekday();

    // Brackets.
    Token bracket();
    Token bracketKeyword(std::size_t keyword);
    Token closed(Token token);
    Token numberedColor();
    Token condition(unsigned char comparison);
    Token elapsed(char16_t letter, Token first);
    Token locale();

    void append(char16_t c);
    void append(std::u16string_view text);
    void setKind(Kind kind) { m_section->kind = static_cast<unsigned char>(kind); }
    bool isKind(Kind kind) const { return m_section->kind == static_cast<unsigned char>(kind); }
    bool follows(Token token) const {
        return m_section->lastToken == static_cast<unsigned char>(token);
    }

    static constexpr std::size_t kMaxCompiled = 255;

    std::u16string_view m_source;
    std::size_t m_at = 0;
    bool m_isCurrentVersion;
    FMT2& m_result;
    FMT* m_section;
    XlsFormatFault m_fault;
    std::array<char16_t, kMaxCompiled + 1> m_compiled;
    std::size_t m_length = 0;  // one more than there is room for: too long
};

}  // namespace ZroCommon::internal
