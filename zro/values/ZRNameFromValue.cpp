// The one member of ZRName that needs values.

#include "zro/vocabulary/ZRName.h"

#include "zro/values/ZRValue.h"

namespace ZroCommon {

ZRName::ZRName(const ZRValue& value)
    : ZRName(value.isName() ? value.getNameValue() : ZRName(value.toString())) {}

}  // namespace ZroCommon
