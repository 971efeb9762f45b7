#pragma once

#include <string_view>

#include "zro/text/xls/internal/CellText.h"

namespace ZroCommon::internal {

/// The East Asian digits and units of a section: `[DBNum1]` 一二三, `[DBNum2]` 壱弐参, `[DBNum3]`
/// full-width digits; without any of them plain ASCII.
class Ideographs {
public:
    /// \param system  1 to 3; anything else is none
    explicit Ideographs(unsigned char system) : m_system(system <= 3 ? system : 0) {}

    bool areUsed() const { return m_system != 0; }

    /// A character of a number; what is no digit stays as it is.
    char16_t digit(char c) const { return areUsed() ? ideograph(c) : static_cast<char16_t>(c); }
    char16_t comma() const { return areUsed() ? u'\uFF0C' : u','; }
    char16_t blank() const { return areUsed() ? u'\u3000' : u' '; }
    void appendDigits(CellText& text, std::string_view number) const;

    /// The number in words, with units of ten, hundred, thousand and ten thousands. Finite and not
    /// negative.
    void appendGeneral(CellText& text, double number, int width) const;

private:
    char16_t ideograph(char c) const;
    void appendMyriad(CellText& text, int number) const;

    unsigned char m_system;
};

}  // namespace ZroCommon::internal
