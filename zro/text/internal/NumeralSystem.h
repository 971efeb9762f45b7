#pragma once

#include <string_view>

#include "zro/text/internal/Alphabets.h"

namespace ZroCommon::internal {

/// What a token of one character counts by.
struct NumeralSystem {
    enum class Kind : unsigned char {
        Letters,          ///< the letters, bijectively
        LanguageLetters,  ///< those of the language, else `letters`
        Roman,
        RomanForms,  ///< with characters of their own for 1 to 12
        Additive,    ///< a letter for each digit
        Hebrew,
    };

    char16_t token = 0;
    Kind kind = Kind::Letters;
    char16_t zero = u'0';  ///< stands for every number below 1
    std::u16string_view letters = {};
    LetterScript script = LetterScript::Any;
    bool isUpper = false;
};

/// Null for a character that no system begins with.
const NumeralSystem* findNumeralSystem(char16_t token);

}  // namespace ZroCommon::internal
