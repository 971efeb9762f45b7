#pragma once

#include <string_view>

#include "zro/text/ZRLang.h"

namespace ZroCommon::internal {

/// The scripts that languages have alphabets of their own in.
enum class LetterScript : unsigned char { Any, Latin, Greek, Cyrillic };

constexpr std::u16string_view kGreekCapitals = u"ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩ";
constexpr std::u16string_view kGreekSmall = u"αβγδεζηθικλμνξοπρστυφχψω";
constexpr std::u16string_view kCyrillicCapitals = u"АБВГДЕЖЗИКЛМНОПРСТУФХЦЧШЩЫЭЮЯ";
constexpr std::u16string_view kCyrillicSmall = u"абвгдежзиклмнопрстуфхцчшщыэюя";

/// The letters that a language counts by, in that order. Empty when it has none in the script.
///
/// A language with a country has none: rows are of languages alone.
std::u16string_view lettersOf(const ZRLang& language, LetterScript script, bool isUpper);

}  // namespace ZroCommon::internal
