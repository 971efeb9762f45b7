#pragma once

#include "zro/values/ZRValue.h"

namespace ZroCommon::internal {

/// A parameter "key=argument".
struct Parameter {
    ZRName key;  // of the text in lower case
    UnicodeString argument;
};

/// The parameter that an item is; false when it has no "=" behind at least one character.
bool readParameter(const UnicodeString& item, Parameter& parameter);

/// Adds what the PDF parameters of a fragment say ("page=3&view=fit") to a compound value. The
/// first empty item ends them; what is not known is skipped.
void readOpenParameters(const UnicodeString& fragment, ZRValue& target);

/// A whole name from "fit" to "fitv".
bool isFitName(const ZRValue& value);

}  // namespace ZroCommon::internal
