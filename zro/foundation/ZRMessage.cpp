#include "zro/foundation/ZRMessage.h"

#include <array>

#include <unicode/fmtable.h>
#include <unicode/msgfmt.h>

namespace ZroCommon {

ZRMessage::ZRMessage(const UnicodeString& pattern, const UnicodeString& arg0,
                     const UnicodeString& arg1, const UnicodeString& arg2,
                     const UnicodeString& arg3) {
    const std::array<icu::Formattable, 4> arguments = {
        icu::Formattable(arg0), icu::Formattable(arg1), icu::Formattable(arg2),
        icu::Formattable(arg3)};
    // A failure leaves the text as ICU left it, which is what callers get.
    UErrorCode status = U_ZERO_ERROR;
    icu::MessageFormat::format(pattern, arguments.data(), static_cast<int32_t>(arguments.size()),
                               m_text, status);
}

}  // namespace ZroCommon
