// A text read as a colour, and the colour through its print, its value and its conversions.
#include <cstddef>
#include <cstdint>
#include <span>

#include "zro/values/ZRColor.h"
#include "zro/values/ZRValue.h"

#include "fuzz/Input.h"

namespace {

using namespace ZroCommon;  // NOLINT(google-build-using-namespace)

void checkColor(const ZRColor& color) {
    fuzzing::require(ZRValue(color).getColorValue() == color);
    const UnicodeString printed = color.toString(false);
    if (color.getRGB() <= 0xFFFFFF) {  // without RGB, a profile by name prints what nothing reads
        fuzzing::require(ZRValue::parseColor(printed, true).toString() == printed);
    }
    color.toString(true);
    fuzzing::require(color.getSeparationRGB() <= 0xFFFFFF || color.getSeparationTint() >= 1);
    fuzzing::require(!color.getDark().isInvalid() && !color.getLight().isInvalid());
    fuzzing::require(ZRColor::reverseRGB(color.getBGR()) == color.getRGB());
    const ZRName name = color.getColorName();
    fuzzing::require(name.isEmpty() || ZRColor(name).getRGB() == color.getRGB());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::ExactText exact(fuzzing::utf16(std::span(data, size)));
    const UnicodeString& text = exact.text();
    const ZRValue plain = ZRValue::parseColor(text, false);
    const ZRValue extended = ZRValue::parseColor(text, true);
    fuzzing::require(plain.isUnknownString() || plain == extended);
    for (const ZRValue& value : {plain, extended}) {
        fuzzing::require(value.isColor() || value.isName() || value.toString() == text);
        if (value.isColor()) {
            checkColor(value.getColorValue());
        }
    }
    checkColor(ZRColor(ZRName(text)));
    return 0;
}
