// Numbers as labels, and as Japanese numerals inside a text.

#include "zro/text/ZRUtil.h"

#include "zro/foundation/internal/TextView.h"
#include "zro/text/ZRLang.h"
#include "zro/text/internal/Kansuji.h"
#include "zro/text/internal/NumberLabel.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

using internal::Kansuji;

namespace {

Kansuji::Method kansujiMethod(ZRNameEnum name) {
    switch (name) {
    case ZRN_grouping: return Kansuji::Method::Grouping;
    case ZRN_readable: return Kansuji::Method::Readable;
    default: return Kansuji::Method::Plain;
    }
}

std::u16string_view kansujiDigits(const ZRName& name) {
    switch (name) {
    case ZRN_kanji: return {};
    case ZRN_latin: return u"０１２３４５６７８９";
    default: return internal::viewOf(name.toString());
    }
}

}  // namespace

UnicodeString ZRUtil::formatNumber(int num, const UnicodeString& format,
                                   const UnicodeString& groupingSeparator, int groupingSize,
                                   // NOLINTNEXTLINE(performance-unnecessary-value-param): given
                                   ZRLang lang, ZRNameEnum /*letterValue*/) {
    const internal::Grouping grouping{groupingSeparator, groupingSize};
    return internal::NumberLabel(num, internal::viewOf(format), grouping, lang).text();
}

UnicodeString ZRUtil::convertKansuji(const UnicodeString& text, const ZRName& method,
                                     const ZRName& digits, const UnicodeString& units,
                                     const UnicodeString& /*spare*/) {
    const internal::KansujiTable table(kansujiDigits(digits), internal::viewOf(units));
    return Kansuji(kansujiMethod(method), table).convert(internal::viewOf(text));
}

}  // namespace ZroCommon
