#include "zro/text/ZRUtil.h"

#include <array>

#include <unicode/locid.h>
#include <unicode/ucnv.h>

#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {
namespace {

// Names that ICU does not know, or that mean what another one is preferred for.
ZRNameEnum canonicalPartner(ZRNameEnum name) {
    switch (name) {
    case ZRN_EMPTY: return ZRN_UTF_8;
    case ZRN_ANSI_X3_4: return ZRN_ANSI_X3_4_1968;
    case ZRN_CHINESEBIG5: return ZRN_BIG5;
    case ZRN_CHINESEGBK: return ZRN_GBK;
    case ZRN_ISO_646_IRV: return ZRN_ISO_646_IRV_1991;
    case ZRN_KOREANKSC: return ZRN_KS_C_5601_1987;
    default: return name;
    }
}

// Null when ICU knows no encoding of that name.
const char* ianaName(const UnicodeString& name) {
    std::array<char, UCNV_MAX_CONVERTER_NAME_LENGTH> narrow{};
    if (name.length() >= static_cast<int32_t>(narrow.size())) {
        return nullptr;
    }
    const char16_t* units = name.getBuffer();
    for (int32_t i = 0; i < name.length(); ++i) {
        if (units[i] == 0 || units[i] > 0x7F) {
            return nullptr;
        }
        narrow[static_cast<std::size_t>(i)] = static_cast<char>(units[i]);
    }
    UErrorCode status = U_ZERO_ERROR;
    return ucnv_getStandardName(narrow.data(), "IANA", &status);
}

}  // namespace

UnicodeString ZRUtil::getStandardEncoding(const UnicodeString& name) {
    UnicodeString upper(name);
    upper.trim().toUpper(icu::Locale::getRoot());
    const ZRName asked = canonicalPartner(ZRName(upper));
    const char* const answer = ianaName(asked.toString());
    if (answer == nullptr) {
        return {};
    }
    // Without a byte order mark, what the library holds in memory and files is little-endian.
    const ZRName standard(UnicodeString(answer, -1, US_INV));
    switch (static_cast<ZRNameEnum>(standard)) {
    case ZRN_UTF_16: return ZRName(ZRN_UTF_16LE).toString();
    case ZRN_UTF_32: return ZRName(ZRN_UTF_32LE).toString();
    default: return standard.toString();
    }
}

void ZRUtil::cleanup() {}

void ZRUtil::checkLink() {}

}  // namespace ZroCommon
