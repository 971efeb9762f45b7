// Tells where the sides of a box lie on the page: "before" and "start" depend on the writing mode,
// "top" and "left" do not.
//
//     relative_sides tb-rl [degrees]
#include <iostream>
#include <sstream>
#include <string>

#include <zro/ZroCommon.h>

namespace zro = ZroCommon;

namespace {

std::string utf8(const zro::UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

void print(zro::ZRSide side, zro::ZRWritingMode mode, zro::ZROrientation turn) {
    const zro::ZRSide place = side.toAbsolute(mode);
    const zro::ZRName property = side.concatName(zro::ZRN_border_width);
    std::cout << utf8(side.getName().toString()) << ": " << utf8(place.getName().toString())
              << ", turned " << utf8(place.rotate(turn).getName().toString()) << ", "
              << utf8(property.toString()) << " is "
              << utf8(zro::ZRSide::toAbsoluteName(property, mode).toString()) << "\n";
}

}  // namespace

int main(int count, char** arguments) {
    const zro::ZRName name(zro::UnicodeString::fromUTF8(count > 1 ? arguments[1] : ""));
    const zro::ZRWritingMode mode(name);
    int degrees = 0;
    const bool isNumber = count < 3 || bool(std::istringstream(arguments[2]) >> degrees);
    if (count > 3 || mode.getName() != name || !isNumber || degrees % 90 != 0) {
        std::cerr << "usage: relative_sides WRITING-MODE [DEGREES]\n"
                     "WRITING-MODE is lr-tb, rl-tb, tb-rl and the like, DEGREES a multiple of 90\n";
        return 2;
    }
    const zro::ZROrientation turn(degrees);
    std::cout << utf8(mode.getName().toString()) << ", turned by " << int{turn} << " degrees\n";
    for (const zro::ZRNameEnum side :
         {zro::ZRN_before, zro::ZRN_after, zro::ZRN_start, zro::ZRN_end}) {
        print(side, mode, turn);
    }
    return 0;
}
