// A text read as a value by every reader: what a value prints is read as what prints the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "zro/values/ZRValue.h"

#include "fuzz/Utf16Input.h"

namespace {

using namespace ZroCommon;  // NOLINT(google-build-using-namespace)

// Quotation marks are not printed, so a string does not come back as itself.
void check(const UnicodeString& text, const ZRValue& value) {
    fuzz::require(!value.isNull());
    fuzz::require(!value.isUnknownString() || value.toString() == text);
    if (value.isString()) {
        return;
    }
    const UnicodeString printed = value.toString();
    fuzz::require(ZRValue::parse(printed).toString() == printed);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const UnicodeString text = fuzz::utf16(std::span(data, size));
    const ZRValue value = ZRValue::parse(text);
    check(text, value);
    const ZRValue plain = ZRValue::parseNonNumeric(text);
    check(text, plain);
    fuzz::require(plain.isUnknownString() || plain == value);
    fuzz::require(!plain.isNumeric());
    return 0;
}
