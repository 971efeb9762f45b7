#pragma once

#include <cstdint>

#include <unicode/locid.h>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

class ZRScript;

/// A language with its country, as `xml:lang`, `language` and `country` tell them.
///
/// A value around an ICU locale: copy it freely. Language texts are BCP 47 tags or ISO 639 codes;
/// the bibliographic codes of ISO 639-2 ("ger", "fre") are read as their terminology twins ("deu",
/// "fra"), and "none" is no language. Any text is accepted; what ICU cannot read has no language or
/// no ISO code, and then the texts are empty. Nothing throws.
class ZRO_API ZRLang {
public:
    /// Windows' number of a locale.
    using LanguageID = std::uint32_t;

    /// The null language.
    ZRLang() : m_locale("") {}
    ZRLang(const icu::Locale& locale) : m_locale(locale) {}
    ZRLang(const UnicodeString& text);
    /// \param text  in UTF-8; a null pointer is the empty text
    ZRLang(const char* text);
    /// \param country  an ISO 3166 code; "none" counts as empty
    ZRLang(const UnicodeString& language, const UnicodeString& country);
    ZRLang(ZRName name) : ZRLang(name.toString()) {}
    ZRLang(ZRNameEnum name) : ZRLang(ZRName(name)) {}

    /// The code as ICU has it: the shortest there is, "de" for "deu" too.
    UnicodeString getLanguage() const;
    UnicodeString getCountry() const;
    /// Three letters; empty for a code that ICU does not know.
    UnicodeString getISO3Language() const;
    UnicodeString getISO3Country() const;
    /// `getISO3Language` as a name.
    ZRName getLanguageName() const { return getISO3Language(); }
    const icu::Locale& getLocale() const { return m_locale; }
    /// 0 for a language that Windows has no number for.
    LanguageID getLCID() const { return m_locale.getLCID(); }
    /// Without a language; it may have a country.
    bool isNullLang() const { return *m_locale.getLanguage() == '\0'; }

    /// "de" or "de-CH".
    UnicodeString toString() const;
    /// "deu" or "deu-CHE".
    UnicodeString toISO3String() const;
    /// The script that the language is written in. Automatic for the null language, and for one
    /// without an ISO code.
    ZRScript toScript() const;

    /// Whole locales: variants and keywords count.
    bool operator==(const ZRLang& other) const { return m_locale == other.m_locale; }
    /// By language, then by country; nothing else counts.
    bool operator<(const ZRLang& other) const;

    /// The process's default.
    static ZRLang getDefaultLocale() { return icu::Locale::getDefault(); }
    static bool isDefaultLocaleJapanese();

    /// Does nothing: languages hold no state of the process. Part of the library's `cleanup`.
    static void cleanup();

private:
    icu::Locale m_locale;
};

}  // namespace ZroCommon
