// Reads the texts of properties as values: lengths with their units, colours, and a space of three
// parts, with some arithmetic on each.
//
//     property_values
#include <iostream>
#include <string>

#include <zro/ZroCommon.h>

namespace zro = ZroCommon;

namespace {

std::string utf8(const zro::UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

void print(const char* what, const zro::ZRValue& value) {
    std::cout << what << ": " << utf8(value.toString()) << "\n";
}

/// Numbers keep their unit. Arithmetic brings both sides to one unit, points for lengths; a
/// percentage is a number when something is multiplied by it.
void lengths() {
    const zro::ZRValue size = zro::ZRValue::parse(u"12pt");
    const zro::ZRValue indent = zro::ZRValue::parse(u"0.5in");
    print("font size", size);
    print("line height", size * zro::ZRValue::parse(u"150%"));
    print("indent less 6mm", indent - zro::ZRValue::parse(u"6mm"));
    std::cout << "indent in cm: " << indent.getRealValue(zro::ZRValueUnitCm) << "\n";
    std::cout << "indent in points: " << indent.getLengthValue() << "\n";
    const zro::ZRValue sum = indent + zro::ZRValue::parse(u"2em");
    std::cout << "a length and a font's size: " << (sum.isNull() ? "no sum" : "a sum") << "\n";
}

/// A keyword stays a name until a colour is made of it; a colour may have a form for print.
void colors() {
    const zro::ZRValue red = zro::ZRValue::parseColor(u"rgb(100%, 0, 0)", true);
    const zro::ZRValue name = zro::ZRValue::parseColor(u"NavajoWhite", true);
    const zro::ZRValue ink =
        zro::ZRValue::parseColor(u"#8B0000 icc-color(#CMYK, 0, 1, 1, 0.45)", true);
    print("background", red);
    print("border, dark", zro::ZRValue(red.getColorValue().getDark()));
    print("text", zro::ZRValue(zro::ZRColor(name.getNameValue())));
    std::cout << "ink: black " << ink.getColorValue().getK() << ", on screen "
              << utf8(zro::ZRColor(ink.getColorValue().getRGB()).toString(true)) << "\n";
}

/// "space-before.minimum" and its like, gathered in one value.
void compounds() {
    zro::ZRValue space;
    space.setNamedItem(zro::ZRN_minimum, zro::ZRValue::parse(u"3pt"));
    space.setNamedItem(zro::ZRN_optimum, zro::ZRValue::parse(u"2mm"));
    space.setNamedItem(zro::ZRN_maximum, zro::ZRValue::parse(u"1pc"));
    print("space before", space);
    print("its maximum", space.getNamedItem(zro::ZRN_maximum));
    print("what it lacks", space.getNamedItem(zro::ZRN_precedence));
}

}  // namespace

int main() {
    lengths();
    colors();
    compounds();
    return 0;
}
