#pragma once

#include <cstddef>
#include <string_view>

#include "zro/foundation/Text.h"
#include "zro/text/ZRLang.h"
#include "zro/text/internal/DecimalLabel.h"
#include "zro/text/internal/NumeralSystem.h"

namespace ZroCommon::internal {

/// The text of a number by a format as XSLT has it: "(a)", "01.", "***".
class NumberLabel {
public:
    NumberLabel(int number, std::u16string_view format, const Grouping& grouping,
                const ZRLang& language)
        : m_number(number), m_format(format), m_grouping(grouping), m_language(language) {}

    UnicodeString text();

private:
    void writeDecimal(DigitSet digits = DigitSet(), std::size_t minLength = 1) {
        appendDecimal(m_text, m_number, minLength, digits, m_grouping);
    }
    void writeMarks();
    void writeBody(std::u16string_view token);
    bool writeSystem(std::u16string_view token);
    void writeNumeral(const NumeralSystem& system);
    std::u16string_view lettersFor(const NumeralSystem& system) const;
    void append(std::u16string_view units);

    int m_number;
    std::u16string_view m_format;
    const Grouping& m_grouping;
    const ZRLang& m_language;
    UnicodeString m_text;
};

}  // namespace ZroCommon::internal
