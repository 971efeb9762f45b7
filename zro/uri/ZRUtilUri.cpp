#include "zro/text/ZRUtil.h"

#include "zro/uri/ZRUri.h"

namespace ZroCommon {

UnicodeString ZRUtil::unquoteUri(const UnicodeString& text) {
    return ZRUri(text, URISTR_GUESS_CSS).toString();
}

}  // namespace ZroCommon
