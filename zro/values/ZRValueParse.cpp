#include "zro/values/ZRValue.h"

#include "zro/foundation/internal/TextView.h"
#include "zro/values/internal/ValueReader.h"

namespace ZroCommon {
namespace {

using internal::TokenKind;
using internal::ValueReader;

// All but the end and single characters.
bool isValueKind(int kind) {
    return kind < 0 && kind != TokenKind::kEnd;
}

ZRValue unknownString(const UnicodeString& text) {
    return ZRValue(text.isBogus() ? UnicodeString() : text);
}

}  // namespace

ZRValue ZRValue::parse(const UnicodeString& text) {
    const std::u16string_view units = internal::viewOf(text);
    if (const auto rgb = internal::wholeHexColor(units)) {
        return internal::colorValue(*rgb);
    }
    ValueReader reader(units);
    ZRValue value = reader.nextSigned();
    if (!isValueKind(reader.token().kind) || !reader.isAtEnd()) {
        value = unknownString(text);
    }
    return value;
}

ZRValue ZRValue::parseNonNumeric(const UnicodeString& text) {
    ValueReader reader(text);
    ZRValue value = reader.nextValue();
    const int kind = reader.token().kind;
    if ((kind != TokenKind::kString && kind != TokenKind::kName) || !reader.isAtEnd()) {
        value = unknownString(text);
    }
    return value;
}

}  // namespace ZroCommon
