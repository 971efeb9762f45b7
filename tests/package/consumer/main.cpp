// Uses the library through its umbrella header: constants and names before `main`, and an error
// that crosses the library's border.
#include <cstdio>

#include "early.h"

namespace {

int s_failures = 0;

void expect(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "failed: %s\n", what);
        ++s_failures;
    }
}

bool errorCrossesTheBorder() {
    try {
        ZroCommon::ZRError(0x0803, u"thrown").throwFatalError();
    } catch (const ZroCommon::ZRError& error) {
        return error.getErrorCode() == 0x0803;
    }
    return false;
}

}  // namespace

int main() {
    expect(early().emptyIsEmpty, "the empty text is there before main");
    expect(early().bogusIsBogus, "the bogus text is there before main");
    expect(early().builtinName == u"border-color", "builtin names are there before main");
    expect(early().builtinNumber == ZroCommon::ZRN_border_color, "and their numbers");
    expect(early().ownNumber == ZroCommon::ZRName(icu::UnicodeString(u"made-before-main")),
           "a name made before main keeps its number");
    expect(errorCrossesTheBorder(), "an error is caught outside of the library");
    return s_failures == 0 ? 0 : 1;
}
