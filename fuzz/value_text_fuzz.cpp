// A text read as a value by every reader: what a value prints is read as what prints the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "zro/values/ZRValue.h"

#include "fuzz/Input.h"

namespace {

using namespace ZroCommon;  // NOLINT(google-build-using-namespace)

// What is read as an integer has no negative zero, so "-0" of a real comes back as "0".
bool isNegativeZero(const ZRValue& value) {
    return value.getValueType() == ZRValueTypeReal && value.getUnitType() == ZRValueUnitNumber
           && value.toString() == u"-0";
}

// Quotation marks are not printed, so a string does not come back as itself.
void check(const UnicodeString& text, const ZRValue& value) {
    fuzzing::require(!value.isNull());
    fuzzing::require(!value.isUnknownString() || value.toString() == text);
    if (value.isString() || isNegativeZero(value)) {
        return;
    }
    const UnicodeString printed = value.toString();
    fuzzing::require(ZRValue::parse(printed).toString() == printed);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::ExactText exact(fuzzing::utf16(std::span(data, size)));
    const UnicodeString& text = exact.text();
    const ZRValue value = ZRValue::parse(text);
    check(text, value);
    const ZRValue plain = ZRValue::parseNonNumeric(text);
    check(text, plain);
    fuzzing::require(plain.isUnknownString() || plain == value);
    fuzzing::require(!plain.isNumeric());
    return 0;
}
