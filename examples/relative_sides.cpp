// Tells where the sides of a box lie on the page: "before" and "start" depend on the writing mode,
// "top" and "left" do not.
//
//     relative_sides tb-rl [degrees]
#include <cstdlib>
#include <iostream>
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
    if (count < 2) {
        std::cerr << "usage: relative_sides WRITING-MODE [DEGREES]\n";
        return 2;
    }
    const zro::ZRWritingMode mode{zro::ZRName(zro::UnicodeString::fromUTF8(arguments[1]))};
    const zro::ZROrientation turn(count > 2 ? std::atoi(arguments[2]) : 0);
    std::cout << utf8(mode.getName().toString()) << ", turned by " << int{turn} << " degrees\n";
    for (const zro::ZRNameEnum side :
         {zro::ZRN_before, zro::ZRN_after, zro::ZRN_start, zro::ZRN_end}) {
        print(side, mode, turn);
    }
    return 0;
}
