#include "zro/text/ZRLang.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>

#include "zro/text/ZRChar.h"
#include "zro/text/ZRScript.h"

namespace ZroCommon {
namespace {

struct CodePair {
    // Texts that end in a zero: no address, so that loading the library has nothing to relocate.
    char letters[5];
    char canonicalLetters[4];

    constexpr std::string_view code() const { return letters; }
    constexpr std::string_view canonical() const { return canonicalLetters; }
};

// ISO 639-2: bibliographic codes, and the terminology codes that ICU knows. By the first column.
// On purpose: "jav" becomes "jaw", which is a withdrawn code of Javanese.
constexpr auto kCanonicalCodes = std::to_array({
    CodePair{"alb", "sqi"}, CodePair{"arm", "hye"}, CodePair{"baq", "eus"}, CodePair{"bur", "mya"},
    CodePair{"chi", "zho"}, CodePair{"cze", "ces"}, CodePair{"dut", "nld"}, CodePair{"fre", "fra"},
    CodePair{"geo", "kat"}, CodePair{"ger", "deu"}, CodePair{"gre", "ell"}, CodePair{"ice", "isl"},
    CodePair{"jav", "jaw"}, CodePair{"mac", "mkd"}, CodePair{"mao", "mri"}, CodePair{"may", "msa"},
    CodePair{"none", ""},   CodePair{"per", "fas"}, CodePair{"rum", "ron"}, CodePair{"scc", "srp"},
    CodePair{"scr", "hrv"}, CodePair{"slo", "slk"}, CodePair{"tib", "bod"}, CodePair{"wel", "cym"},
});
constexpr auto kCodeLess = [](const CodePair& pair, std::string_view code) {
    return pair.code() < code;
};
static_assert(std::is_sorted(kCanonicalCodes.begin(), kCanonicalCodes.end(),
                             [](const CodePair& left, const CodePair& right) {
                                 return left.code() < right.code();
                             }));

const CodePair* findCode(std::string_view code) {
    const auto* found =
        std::lower_bound(kCanonicalCodes.begin(), kCanonicalCodes.end(), code, kCodeLess);
    return found != kCanonicalCodes.end() && found->code() == code ? found : nullptr;
}

// A language text with its code made canonical. Behind three letters and a separator the rest
// stays as it is.
std::string canonical(std::string text) {
    constexpr std::size_t kCodeLength = 3;
    const bool hasRest = text.size() > kCodeLength && !ZRChar::isAsciiLetter(text[kCodeLength]);
    const std::size_t length = hasRest ? kCodeLength : text.size();
    if (const CodePair* pair = findCode(std::string_view(text).substr(0, length))) {
        text.replace(0, length, pair->canonical());
    }
    return text;
}

std::string narrow(const UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

std::string narrowCountry(const UnicodeString& country) {
    return country == UnicodeString(u"none") ? std::string() : narrow(country);
}

UnicodeString wide(const char* text) {
    return UnicodeString::fromUTF8(text);
}

UnicodeString joined(const char* language, const char* country) {
    UnicodeString text = wide(language);
    if (*country != '\0') {
        text.append(u'-').append(wide(country));
    }
    return text;
}

}  // namespace

ZRLang::ZRLang(const UnicodeString& text) : m_locale(canonical(narrow(text)).c_str()) {}

ZRLang::ZRLang(const char* text) : m_locale(canonical(text == nullptr ? "" : text).c_str()) {}

ZRLang::ZRLang(const UnicodeString& language, const UnicodeString& country)
    : m_locale(canonical(narrow(language)).c_str(), narrowCountry(country).c_str()) {}

UnicodeString ZRLang::getLanguage() const {
    return wide(m_locale.getLanguage());
}

UnicodeString ZRLang::getCountry() const {
    return wide(m_locale.getCountry());
}

UnicodeString ZRLang::getISO3Language() const {
    return wide(m_locale.getISO3Language());
}

UnicodeString ZRLang::getISO3Country() const {
    return wide(m_locale.getISO3Country());
}

UnicodeString ZRLang::toString() const {
    return joined(m_locale.getLanguage(), m_locale.getCountry());
}

UnicodeString ZRLang::toISO3String() const {
    return joined(m_locale.getISO3Language(), m_locale.getISO3Country());
}

ZRScript ZRLang::toScript() const {
    return ZRScript(toISO3String());
}

bool ZRLang::operator<(const ZRLang& other) const {
    const int order = std::strcmp(m_locale.getLanguage(), other.m_locale.getLanguage());
    return order < 0
           || (order == 0 && std::strcmp(m_locale.getCountry(), other.m_locale.getCountry()) < 0);
}

bool ZRLang::isDefaultLocaleJapanese() {
    return std::strcmp(icu::Locale::getJapanese().getISO3Language(),
                       icu::Locale::getDefault().getISO3Language())
           == 0;
}

void ZRLang::cleanup() {}

}  // namespace ZroCommon
