#include "zro/text/internal/Alphabets.h"

#include <algorithm>
#include <array>

namespace ZroCommon::internal {
namespace {

using Script = LetterScript;

struct Row {
    std::string_view language;
    Script script;
    std::u16string_view upper;
    std::u16string_view lower;
};

// By language. On purpose: German has no capitals of its own, Finnish and Belarusian have fewer
// capitals than small letters, and many a row leaves letters out that its language has.
constexpr std::array kRows = {
    Row{"be", Script::Cyrillic, u"АБВГДЖЗІКЛМНОПРСТУФХЦЧШЫЬЭ", u"абвгдежзіклмнопрстуфхцчшыьэюя"},
    Row{"bg", Script::Cyrillic, u"АБВГДЕЖЗИКЛМНОПРСТУФХЦЧШЩЪЬЮЯ", u"абвгдежзиклмнопрстуфхцчшщъьюя"},
    Row{"cs", Script::Latin, u"AÁBCČDĎEÉĚFGHIÍJKLMNŃOÓPQRŘSŚTŤUÚŮVWXYÝZŽ",
        u"aábcčdďeéěfghiíjklmnńoópqrřsśtťuúůvwxyýzž"},
    Row{"da", Script::Latin, u"ABCDEFGHIJKLMNOPQRSTUVWXYZÆØÅ", u"abcdefghijklmnopqrstuvwxyzæøå"},
    Row{"de", Script::Latin, u"", u"abcdefghijklmnopqrstuvwxyzß"},
    Row{"el", Script::Greek, kGreekCapitals, kGreekSmall},
    Row{"eo", Script::Latin, u"ABCĈDEFGĜHĤIJĴKLMNOPRSŜTUŬVZ", u"abcĉdefgĝhĥijĵklmnoprsŝtuŭvz"},
    Row{"es", Script::Latin, u"ABCDEFGHIJKLMNÑOPQRSTUVWXYZ", u"abcdefghijklmnñopqrstuvwxyz"},
    Row{"et", Script::Latin, u"ABCDEFGHIJKLMNOPQRSŠZŽTUVWÕÄÖÜXY",
        u"abcdefghijklmnopqrsšzžtuvwõäöüxy"},
    Row{"eu", Script::Latin, u"ABCDEFGHIJKLMNÑOPQRSTUVWXYZ", u"abcdefghijklmnñopqrstuvwxyz"},
    Row{"fi", Script::Latin, u"ADEHIJKLMNOPRSTUVYÄÖ", u"adeghijklmnoprstuvyäö"},
    Row{"ga", Script::Latin, u"ABCDEFGHILMNOPRSTU", u"abcdefghilmnoprstu"},
    Row{"hu", Script::Latin, u"AÁBCDEÉFGHIÍJKLMNOÓÖŐPRSTUÚÜŰVZ",
        u"aábcdeéfghiíjklmnoóöőprstuúüűvz"},
    Row{"is", Script::Latin, u"AÁBCDÐEÉFGHIÍJKLMNOÓPRSTUÚVXYÝZÞÆÖ",
        u"aábcdðeéfghiíjklmnoóprstuúvxyýzþæö"},
    Row{"it", Script::Latin, u"ABCDEFGHILMNOPQRSTUVZ", u"abcdefghilmnopqrstuvz"},
    Row{"lt", Script::Latin, u"AĄBCČDEĘĖFGHIĮYJKLMNOPRSŚTUŲŪVZŽ",
        u"aąbcčdeęėfghiįyjklmnoprsśtuųūvzž"},
    Row{"lv", Script::Latin, u"AĀBCČDEĒFGĢHIĪJKĶLĻMNŅOPRSŠTUŪVZŽ",
        u"aābcčdeēfgģhiījkķlļmnņoprsštuūvzž"},
    Row{"mk", Script::Cyrillic, u"АБВГДЃЕЖЗЅИЈКЛЉМНЊОПРСТЌУФХЦЧЏШ",
        u"абвгдѓежзѕијклљмнњопрстќуфхцчџш"},
    Row{"mt", Script::Latin, u"ABĊDEFĠGHĦIJKLMNOPQRSTUVWXŻZ", u"abċdefġghħijklmnopqrstuvwxżz"},
    Row{"nl", Script::Latin, u"ABCDEFGHIJKLMNOPQRSTUVWXYĲZ", u"abcdefghijklmnopqrstuvwxyĳz"},
    Row{"no", Script::Latin, u"ABCDEFGHIJKLMNOPQRSTUVWXYZÆØÅ", u"abcdefghijklmnopqrstuvwxyzæøå"},
    Row{"pl", Script::Latin, u"AĄBCĆDEĘFGHIJKLŁMNŃOÓPRSŚTUWYZŹŻ",
        u"aąbcćdeęfghijklłmnńoóprsśtuwyzźż"},
    Row{"ro", Script::Latin, u"AĂÂBCDEFGHIÎJKLMNOPRSŞTŢUVXZ", u"aăâbcdefghiîjklmnoprsştţuvxz"},
    Row{"ru", Script::Cyrillic, kCyrillicCapitals, kCyrillicSmall},
    Row{"sk", Script::Latin, u"AÁÄBCČDĎEÉFGHIÍJKLĹĽMNŃOÓÔPQRSŚTŤUÚVWXYÝZŽ",
        u"aáäbcčdďeéfghiíjklĺľmnńoóôpqrsśtťuúvwxyýzž"},
    Row{"sl", Script::Latin, u"ABCČDEFGHIJKLMNOPRSŚTUVZŽ", u"abcčdefghijklmnoprsśtuvzž"},
    Row{"sq", Script::Latin, u"ABCÇDEËFGHIJKLMNOPQRSTUVXYZ", u"abcçdeëfghijklmnopqrstuvxyz"},
    Row{"sr", Script::Cyrillic, u"АБВГДЂЕЖЗИЈКЛЉМНЊОПРСТЋУФХЦЧЏШ",
        u"абвгдђежзијклљмнњопрстћуфхцчџш"},
    Row{"sv", Script::Latin, u"ABCDEFGHIJKLMNOPQRSTUVWXYZÅÄÖ", u"abcdefghijklmnopqrstuvwxyzåäö"},
    Row{"tg", Script::Cyrillic, u"АБВГДЕЖЗИКЛМНОПРСТУФХЧШЪЬЭЮЯҒӢҚӮҲҶ",
        u"абвгдежзиклмнопрстуфхчшъьэюяғӣқӯҳҷ"},
    Row{"tr", Script::Latin, u"ABCÇDEFGĞHIİJKLMNOÖPRSŞTUÜVYZ", u"abcçdefgğhıijklmnoöprsştuüvyz"},
    Row{"uk", Script::Cyrillic, u"АБВГЃДЕЄЖЗИІЇКЛМНОПРСТУФХЦЧШЩЮЯЬ",
        u"абвгѓдеєжзиіїклмнопрстуфхцчшщюяь"},
    Row{"uz", Script::Cyrillic, u"АБВГДЕЖЗИКЛМНОПРСТУФХЧШЪЭЮЯҚҒҲ",
        u"абвгдежзиклмнопрстуфхчшъэюяқғҳ"},
    Row{"vi", Script::Latin, u"AĂÂBCDĐEÊGHIKLMNOÔƠPQRSTUƯVXY", u"aăâbcdđeêghiklmnoôơpqrstuưvxy"},
};
constexpr auto kRowLess = [](const Row& left, const Row& right) {
    return left.language < right.language;
};
static_assert(std::is_sorted(kRows.begin(), kRows.end(), kRowLess));

}  // namespace

std::u16string_view lettersOf(const ZRLang& language, LetterScript script, bool isUpper) {
    const icu::Locale& locale = language.getLocale();
    // On purpose: a country makes the row miss, as "de-DE" is no row.
    if (*locale.getCountry() != '\0') {
        return {};
    }
    const std::string_view code = locale.getLanguage();
    const auto* row = std::lower_bound(
        kRows.begin(), kRows.end(), code,
        [](const Row& left, std::string_view right) { return left.language < right; });
    const bool isFound = row != kRows.end() && row->language == code
                         && (script == Script::Any || script == row->script);
    if (!isFound) {
        return {};
    }
    return isUpper ? row->upper : row->lower;
}

}  // namespace ZroCommon::internal
