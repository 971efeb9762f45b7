#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "zro/text/xls/XlsFormat.h"
#include "zro/text/xls/internal/CellPlace.h"
#include "zro/text/xls/internal/CellText.h"
#include "zro/text/xls/internal/DecimalString.h"
#include "zro/text/xls/internal/Fraction.h"
#include "zro/text/xls/internal/Ideographs.h"

namespace ZroCommon::internal {

/// The digits of a number, taken apart as a section shows them. Texts lie inside the object.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what is read was written
class NumberParts {
public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the same
    NumberParts() = default;
    NumberParts(const NumberParts&) = delete;
    NumberParts& operator=(const NumberParts&) = delete;

    /// `magnitude` is finite and not negative. False for a fraction that no double holds.
    bool prepare(const FMT& section, double magnitude);

    std::string_view integer() const { return m_integer; }
    std::string_view decimals() const { return m_decimals; }
    std::string_view exponent() const { return m_exponent; }
    std::string_view numerator() const { return m_numerator; }
    std::string_view denominator() const { return m_denominator; }
    /// 0 none, 1 positive, 2 negative.
    unsigned char exponentSign() const { return m_exponentSign; }
    /// Whether nothing but zeros would be shown, which take no minus.
    bool isZero() const { return m_isZero; }

private:
    void prepareExponent(const FMT& section, double magnitude);
    void writeExponent(int exponent, bool isShifted);
    bool prepareFraction(const FMT& section);
    double fractionalValue(bool isMixed) const;
    bool writeFraction(const Fraction& fraction, bool isWhole);

    DecimalString m_mantissa;
    std::string_view m_integer;
    std::string_view m_decimals;
    std::string_view m_exponent;
    std::string_view m_numerator;
    std::string_view m_denominator;
    std::array<char, 340> m_fractionText;
    std::array<char, 8> m_exponentText;
    int m_power = 0;
    unsigned char m_exponentSign = 0;
    bool m_isZero = false;
};

/// Writes a number through the compiled text of a section.
class NumberWalker {
public:
    /// \param valueSign  of the cell, which `General` shows: 0 zero, 1 positive, 2 negative
    NumberWalker(const FMT& section, const CellPlace& place, unsigned char valueSign,
                 CellText& text)
        : m_section(section),
          m_place(place),
          m_text(text),
          m_numerals(section.dbNum),
          m_valueSign(valueSign) {}

    /// False when the text is too wide, as what is not finite always is.
    bool walk(double number);

    /// 2 while a minus sign is still to be written, else the sign of the number.
    unsigned char signState() const { return m_sign; }
    unsigned char exponentSign() const { return m_parts.exponentSign(); }

private:
    enum class Stage { Integer, Fraction, Exponent, Numerator, Denominator };
    enum class Mark { None, Comma, Blank };  // that parts groups of three digits

    void step();
    void enter(Stage stage, std::string_view digits, std::size_t places);
    char16_t take();
    void writeSign();
    void writeQuoted();
    void writeEscaped();
    void writeFill();
    void writePoint();
    void writeSlash();
    void writeExponentMark(char16_t letter);
    void writeGeneral();

    void writePlaceholder(char16_t placeholder);
    void writeDecimal(char16_t placeholder);
    void writeDigit();
    void pad(char16_t placeholder);
    void padDenominator(char16_t placeholder);
    void writeMark(std::size_t digitsBehind);

    const FMT& m_section;
    const CellPlace& m_place;
    CellText& m_text;
    Ideographs m_numerals;
    NumberParts m_parts;
    double m_magnitude = 0;
    unsigned char m_valueSign;
    unsigned char m_sign = 0;

    std::u16string_view m_format;  // what is still to be walked
    Stage m_stage = Stage::Integer;
    std::string_view m_digits;     // of the part being written, not yet written
    std::size_t m_placesLeft = 0;  // of that part, not yet met
    int m_zerosLeft = 0;           // that may still be padded
    std::string_view m_decimals;   // not yet written
    int m_fracZerosLeft = 0;
    bool m_isGrouped = false;
    Mark m_mark = Mark::None;
};

}  // namespace ZroCommon::internal
