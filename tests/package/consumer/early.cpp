#include "early.h"

using ZroCommon::ZRName;
using ZroCommon::ZRNameTable;

namespace {

const Early s_early;

}  // namespace

Early::Early()
    : emptyIsEmpty(ZroCommon::ZREmptyString::EMPTY_VALUE.isEmpty()),
      bogusIsBogus(ZroCommon::ZRBogusString::BOGUS_VALUE.isBogus()),
      builtinName(ZRName(ZroCommon::ZRN_border_color).toString()),
      builtinNumber(ZRNameTable::getBuiltinNameEnum(u"border-color")),
      ownNumber(ZRName(icu::UnicodeString(u"made-before-main"))) {}

const Early& early() {
    return s_early;
}
