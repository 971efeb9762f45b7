#include "zro/text/internal/Alphabets.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "zro/foundation/internal/PackedTexts.h"

namespace ZroCommon::internal {
namespace {

using Script = LetterScript;

struct Row {
    std::string_view language;
    Script script;
    std::u16string_view upper;
    std::u16string_view lower;
};

// For the compiler alone, by language. On purpose: German has no capitals of its own, Finnish and
// Belarusian have fewer capitals than small letters, and many a row leaves letters out that its
// language has.
constexpr Row kRows[] = {
    {"be", Script::Cyrillic, u"АБВГДЖЗІКЛМНОПРСТУФХЦЧШЫЬЭ", u"абвгдежзіклмнопрстуфхцчшыьэюя"},
    {"bg", Script::Cyrillic, u"АБВГДЕЖЗИКЛМНОПРСТУФХЦЧШЩЪЬЮЯ", u"абвгдежзиклмнопрстуфхцчшщъьюя"},
    {"cs", Script::Latin, u"AÁBCČDĎEÉĚFGHIÍJKLMNŃOÓPQRŘSŚTŤUÚŮVWXYÝZŽ",
     u"aábcčdďeéěfghiíjklmnńoópqrřsśtťuúůvwxyýzž"},
    {"da", Script::Latin, u"ABCDEFGHIJKLMNOPQRSTUVWXYZÆØÅ", u"abcdefghijklmnopqrstuvwxyzæøå"},
    {"de", Script::Latin, u"", u"abcdefghijklmnopqrstuvwxyzß"},
    {"el", Script::Greek, kGreekCapitals, kGreekSmall},
    {"eo", Script::Latin, u"ABCĈDEFGĜHĤIJĴKLMNOPRSŜTUŬVZ", u"abcĉdefgĝhĥijĵklmnoprsŝtuŭvz"},
    {"es", Script::Latin, u"ABCDEFGHIJKLMNÑOPQRSTUVWXYZ", u"abcdefghijklmnñopqrstuvwxyz"},
    {"et", Script::Latin, u"ABCDEFGHIJKLMNOPQRSŠZŽTUVWÕÄÖÜXY", u"abcdefghijklmnopqrsšzžtuvwõäöüxy"},
    {"eu", Script::Latin, u"ABCDEFGHIJKLMNÑOPQRSTUVWXYZ", u"abcdefghijklmnñopqrstuvwxyz"},
    {"fi", Script::Latin, u"ADEHIJKLMNOPRSTUVYÄÖ", u"adeghijklmnoprstuvyäö"},
    {"ga", Script::Latin, u"ABCDEFGHILMNOPRSTU", u"abcdefghilmnoprstu"},
    {"hu", Script::Latin, u"AÁBCDEÉFGHIÍJKLMNOÓÖŐPRSTUÚÜŰVZ", u"aábcdeéfghiíjklmnoóöőprstuúüűvz"},
    {"is", Script::Latin, u"AÁBCDÐEÉFGHIÍJKLMNOÓPRSTUÚVXYÝZÞÆÖ",
     u"aábcdðeéfghiíjklmnoóprstuúvxyýzþæö"},
    {"it", Script::Latin, u"ABCDEFGHILMNOPQRSTUVZ", u"abcdefghilmnopqrstuvz"},
    {"lt", Script::Latin, u"AĄBCČDEĘĖFGHIĮYJKLMNOPRSŚTUŲŪVZŽ", u"aąbcčdeęėfghiįyjklmnoprsśtuųūvzž"},
    {"lv", Script::Latin, u"AĀBCČDEĒFGĢHIĪJKĶLĻMNŅOPRSŠTUŪVZŽ",
     u"aābcčdeēfgģhiījkķlļmnņoprsštuūvzž"},
    {"mk", Script::Cyrillic, u"АБВГДЃЕЖЗЅИЈКЛЉМНЊОПРСТЌУФХЦЧЏШ",
     u"абвгдѓежзѕијклљмнњопрстќуфхцчџш"},
    {"mt", Script::Latin, u"ABĊDEFĠGHĦIJKLMNOPQRSTUVWXŻZ", u"abċdefġghħijklmnopqrstuvwxżz"},
    {"nl", Script::Latin, u"ABCDEFGHIJKLMNOPQRSTUVWXYĲZ", u"abcdefghijklmnopqrstuvwxyĳz"},
    {"no", Script::Latin, u"ABCDEFGHIJKLMNOPQRSTUVWXYZÆØÅ", u"abcdefghijklmnopqrstuvwxyzæøå"},
    {"pl", Script::Latin, u"AĄBCĆDEĘFGHIJKLŁMNŃOÓPRSŚTUWYZŹŻ", u"aąbcćdeęfghijklłmnńoóprsśtuwyzźż"},
    {"ro", Script::Latin, u"AĂÂBCDEFGHIÎJKLMNOPRSŞTŢUVXZ", u"aăâbcdefghiîjklmnoprsştţuvxz"},
    {"ru", Script::Cyrillic, kCyrillicCapitals, kCyrillicSmall},
    {"sk", Script::Latin, u"AÁÄBCČDĎEÉFGHIÍJKLĹĽMNŃOÓÔPQRSŚTŤUÚVWXYÝZŽ",
     u"aáäbcčdďeéfghiíjklĺľmnńoóôpqrsśtťuúvwxyýzž"},
    {"sl", Script::Latin, u"ABCČDEFGHIJKLMNOPRSŚTUVZŽ", u"abcčdefghijklmnoprsśtuvzž"},
    {"sq", Script::Latin, u"ABCÇDEËFGHIJKLMNOPQRSTUVXYZ", u"abcçdeëfghijklmnopqrstuvxyz"},
    {"sr", Script::Cyrillic, u"АБВГДЂЕЖЗИЈКЛЉМНЊОПРСТЋУФХЦЧЏШ", u"абвгдђежзијклљмнњопрстћуфхцчџш"},
    {"sv", Script::Latin, u"ABCDEFGHIJKLMNOPQRSTUVWXYZÅÄÖ", u"abcdefghijklmnopqrstuvwxyzåäö"},
    {"tg", Script::Cyrillic, u"АБВГДЕЖЗИКЛМНОПРСТУФХЧШЪЬЭЮЯҒӢҚӮҲҶ",
     u"абвгдежзиклмнопрстуфхчшъьэюяғӣқӯҳҷ"},
    {"tr", Script::Latin, u"ABCÇDEFGĞHIİJKLMNOÖPRSŞTUÜVYZ", u"abcçdefgğhıijklmnoöprsştuüvyz"},
    {"uk", Script::Cyrillic, u"АБВГЃДЕЄЖЗИІЇКЛМНОПРСТУФХЦЧШЩЮЯЬ",
     u"абвгѓдеєжзиіїклмнопрстуфхцчшщюяь"},
    {"uz", Script::Cyrillic, u"АБВГДЕЖЗИКЛМНОПРСТУФХЧШЪЭЮЯҚҒҲ", u"абвгдежзиклмнопрстуфхчшъэюяқғҳ"},
    {"vi", Script::Latin, u"AĂÂBCDĐEÊGHIKLMNOÔƠPQRSTUƯVXY", u"aăâbcdđeêghiklmnoôơpqrstuưvxy"},
};
struct Entry {
    std::array<char, 2> code;
    Script script;

    constexpr std::string_view language() const { return {code.data(), code.size()}; }
};

constexpr auto kEntries = [] {
    std::array<Entry, std::size(kRows)> entries{};
    std::transform(std::begin(kRows), std::end(kRows), entries.begin(), [](const Row& row) {
        return Entry{{row.language[0], row.language[1]}, row.script};
    });
    return entries;
}();
static_assert(std::is_sorted(kEntries.begin(), kEntries.end(),
                             [](const Entry& left, const Entry& right) {
                                 return left.language() < right.language();
                             }));

// Of each row the capitals, and behind them the small letters.
constexpr auto kViews = [] {
    std::array<std::u16string_view, 2 * std::size(kRows)> views{};
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        views[2 * row] = kRows[row].upper;
        views[2 * row + 1] = kRows[row].lower;
    }
    return views;
}();
constexpr PackedTexts<kViews> kLetters;

}  // namespace

std::u16string_view lettersOf(const ZRLang& language, LetterScript script, bool isUpper) {
    const icu::Locale& locale = language.getLocale();
    // On purpose: a country makes the row miss, as "de-DE" is no row.
    if (*locale.getCountry() != '\0') {
        return {};
    }
    const std::string_view code = locale.getLanguage();
    const auto* const entry = std::lower_bound(
        kEntries.begin(), kEntries.end(), code,
        [](const Entry& left, std::string_view right) { return left.language() < right; });
    const bool isFound = entry != kEntries.end() && entry->language() == code
                         && (script == Script::Any || script == entry->script);
    if (!isFound) {
        return {};
    }
    const auto row = static_cast<std::size_t>(entry - kEntries.begin());
    return kLetters[2 * row + (isUpper ? 0 : 1)];
}

}  // namespace ZroCommon::internal
