#include "zro/values/ZRValue.h"

#include "zro/values/internal/TerminatedText.h"
#include "zro/values/internal/ValueReader.h"

namespace ZroCommon {
namespace {

using internal::TokenKind;
using internal::ValueReader;

ZRValue unknownString(const UnicodeString& text) {
    return ZRValue(text.isBogus() ? UnicodeString() : text);
}

}  // namespace

ZRValue ZRValue::parse(const UnicodeString& text) {
    const internal::TerminatedText terminated(text);
    ValueReader reader(terminated.data());
    ZRValue value = reader.nextSigned();
    switch (reader.token().kind) {
    case TokenKind::kNumber:
    case TokenKind::kName:
    case TokenKind::kString:
    case TokenKind::kColor:
        if (reader.isAtEnd()) {
            return value;
        }
        break;
    default: break;
    }
    return unknownString(text);
}

ZRValue ZRValue::parseNonNumeric(const UnicodeString& text) {
    const internal::TerminatedText terminated(text);
    ValueReader reader(terminated.data());
    ZRValue value = reader.nextValue();
    const int kind = reader.token().kind;
    const bool isTaken = kind == TokenKind::kString || kind == TokenKind::kName;
    return isTaken && reader.isAtEnd() ? value : unknownString(text);
}

}  // namespace ZroCommon
