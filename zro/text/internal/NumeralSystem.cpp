#include "zro/text/internal/NumeralSystem.h"

#include <algorithm>
#include <array>

#include "zro/text/internal/Numerals.h"

namespace ZroCommon::internal {
namespace {

using Kind = NumeralSystem::Kind;

constexpr std::u16string_view kLatinCapitals = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::u16string_view kLatinSmall = u"abcdefghijklmnopqrstuvwxyz";
constexpr std::u16string_view kFullWidthCapitals =
    u"ＡＢＣＤＥＦＧＨＩＪＫＬＭＮＯＰＱＲＳＴＵＶＷＸＹＺ";
constexpr std::u16string_view kFullWidthSmall =
    u"ａｂｃｄｅｆｇｈｉｊｋｌｍｎｏｐｑｒｓｔｕｖｗｘｙｚ";
constexpr std::u16string_view kArabic = u"أبتثجحخدذرزسشصضطظعغفقكلمنهوي";
constexpr std::u16string_view kHiragana =
    u"あいうえおかきくけこさしすせそたちつてとなにぬねのはひふへほまみむめもやゆよらりるれろわをん";
constexpr std::u16string_view kHiraganaIroha = u"いろはにほへとちりぬるをわかよたれそつねならむうゐ"
                                               u"のおくやまけふこえてあさきゆめみしゑひもせす";
constexpr std::u16string_view kKatakana =
    u"アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワヲン";
constexpr std::u16string_view kKatakanaIroha = u"イロハニホヘトチリヌルヲワカヨタレソツネナラムウヰ"
                                               u"ノオクヤマケフコエテアサキユメミシヱヒモセス";
constexpr std::u16string_view kHalfWidthKatakana =
    u"ｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜｦﾝ";
// On purpose: two letters fewer than in full width, where ヰ and ヱ have no half-width form.
constexpr std::u16string_view kHalfWidthIroha = u"ｲﾛﾊﾆﾎﾍﾄﾁﾘﾇﾙｦﾜｶﾖﾀﾚｿﾂﾈﾅﾗﾑｳﾉｵｸﾔﾏｹﾌｺｴﾃｱｻｷﾕﾒﾐｼﾋﾓｾｽ";
constexpr std::u16string_view kJamo = u"ㄱㄴㄷㄹㅁㅂㅅㅇㅈㅊㅋㅌㅍㅎ";
constexpr std::u16string_view kHangul = u"가나다라마바사아자차카타파하";
// On purpose: the thousand is a small letter among small ones, the signs above it are the same.
constexpr std::u16string_view kRomanFormsCapitals =
    u"\u2160\u2164\u2169\u216C\u216D\u216E\u2180\u2181\u2182";
constexpr std::u16string_view kRomanFormsSmall =
    u"\u2170\u2174\u2179\u217C\u217D\u217E\u217F\u2181\u2182";
constexpr std::u16string_view kArmenianCapitals = u"ԱԲԳԴԵԶԷԸԹԺԻԼԽԾԿՀՁՂՃՄՅՆՇՈՉՊՋՌՍՎՏՐՑՒՓՔ";
constexpr std::u16string_view kArmenianSmall = u"աբգդեզէըթժիլխծկհձղճմյնշոչպջռսվտրցւփք";
// On purpose: of the ten thousands only one has a letter.
constexpr std::u16string_view kGeorgian = u"აბგდევზჱთიკლმნჲოპჟრსტუფქღყშჩცძწჭხჴჯჰჵ";

static_assert(kHiragana.size() == 46 && kHiraganaIroha.size() == 47 && kKatakana.size() == 46
              && kKatakanaIroha.size() == 47 && kHalfWidthKatakana.size() == 46
              && kHalfWidthIroha.size() == 45 && kJamo.size() == 14 && kHangul.size() == 14
              && kArabic.size() == 28 && kArmenianCapitals.size() == 36
              && kArmenianSmall.size() == 36 && kGeorgian.size() == 37);

constexpr char16_t kArabicZero = u'\u0660';
constexpr char16_t kIdeographicZero = u'〇';
constexpr char16_t kHangulZero = u'영';
constexpr char16_t kFullWidthZero = u'０';

constexpr NumeralSystem languageLetters(char16_t token, LetterScript script,
                                        std::u16string_view letters, bool isUpper) {
    return {token, Kind::LanguageLetters, u'0', letters, script, isUpper};
}

// By token.
constexpr auto kSystems = std::to_array({
    languageLetters(u'A', LetterScript::Any, kLatinCapitals, true),
    NumeralSystem{u'I', Kind::Roman, u'0', u"IVXLCDM"},
    languageLetters(u'a', LetterScript::Any, kLatinSmall, false),
    NumeralSystem{u'i', Kind::Roman, u'0', u"ivxlcdm"},
    languageLetters(u'Α', LetterScript::Greek, kGreekCapitals, true),
    languageLetters(u'α', LetterScript::Greek, kGreekSmall, false),
    languageLetters(u'А', LetterScript::Cyrillic, kCyrillicCapitals, true),
    languageLetters(u'а', LetterScript::Cyrillic, kCyrillicSmall, false),
    NumeralSystem{u'Ա', Kind::Additive, u'0', kArmenianCapitals},
    NumeralSystem{u'ա', Kind::Additive, u'0', kArmenianSmall},
    NumeralSystem{u'א', Kind::Hebrew, u'0'},
    NumeralSystem{u'أ', Kind::Letters, kArabicZero, kArabic},
    NumeralSystem{u'ა', Kind::Additive, u'0', kGeorgian},
    NumeralSystem{u'\u2160', Kind::RomanForms, u'0', kRomanFormsCapitals},
    NumeralSystem{u'\u2170', Kind::RomanForms, u'0', kRomanFormsSmall},
    NumeralSystem{u'あ', Kind::Letters, kIdeographicZero, kHiragana},
    NumeralSystem{u'い', Kind::Letters, kIdeographicZero, kHiraganaIroha},
    NumeralSystem{u'ア', Kind::Letters, kIdeographicZero, kKatakana},
    NumeralSystem{u'イ', Kind::Letters, kIdeographicZero, kKatakanaIroha},
    NumeralSystem{u'ㄱ', Kind::Letters, kHangulZero, kJamo},
    NumeralSystem{u'子', Kind::Letters, kIdeographicZero, kEarthlyBranches},
    NumeralSystem{u'甲', Kind::Letters, kIdeographicZero, kHeavenlyStems},
    NumeralSystem{u'가', Kind::Letters, kHangulZero, kHangul},
    // On purpose: full-width letters are the same in every language.
    NumeralSystem{u'Ａ', Kind::Letters, kFullWidthZero, kFullWidthCapitals},
    NumeralSystem{u'Ｉ', Kind::Roman, kFullWidthZero, u"ＩＶＸＬＣＤＭ"},
    NumeralSystem{u'ａ', Kind::Letters, kFullWidthZero, kFullWidthSmall},
    NumeralSystem{u'ｉ', Kind::Roman, kFullWidthZero, u"ｉｖｘｌｃｄｍ"},
    NumeralSystem{u'ｱ', Kind::Letters, kIdeographicZero, kHalfWidthKatakana},
    NumeralSystem{u'ｲ', Kind::Letters, kIdeographicZero, kHalfWidthIroha},
});
static_assert(std::is_sorted(kSystems.begin(), kSystems.end(),
                             [](const NumeralSystem& left, const NumeralSystem& right) {
                                 return left.token < right.token;
                             }));

}  // namespace

const NumeralSystem* findNumeralSystem(char16_t token) {
    const auto* system = std::lower_bound(
        kSystems.begin(), kSystems.end(), token,
        [](const NumeralSystem& left, char16_t right) { return left.token < right; });
    return system != kSystems.end() && system->token == token ? system : nullptr;
}

}  // namespace ZroCommon::internal
