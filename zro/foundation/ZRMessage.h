#pragma once

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

/// A text made from an ICU `MessageFormat` pattern with the arguments {0} to {3}.
class ZRO_API ZRMessage {
public:
    /// A pattern that ICU refuses leaves the text as ICU left it; nothing is thrown.
    explicit ZRMessage(const UnicodeString& pattern, const UnicodeString& arg0 = UnicodeString(),
                       const UnicodeString& arg1 = UnicodeString(),
                       const UnicodeString& arg2 = UnicodeString(),
                       const UnicodeString& arg3 = UnicodeString());

    const UnicodeString& toString() const { return m_text; }
    operator const UnicodeString&() const { return m_text; }

private:
    UnicodeString m_text;
};

}  // namespace ZroCommon
