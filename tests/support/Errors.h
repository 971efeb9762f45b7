#pragma once

#include <string>

#include "tests/support/Text.h"
#include "zro/foundation/ZRError.h"

namespace ZroCommon::testing {

/// What `action` throws, as "0x0803 SYSTEM ERROR: x is null. [ZroCommon::Place]"; "nothing" when it
/// throws nothing. Comparing the whole text keeps code, message and source in one expectation.
template <class Action>
std::string errorOf(Action&& action) {
    try {
        action();
    } catch (const ZRError& error) {
        constexpr const char* kDigits = "0123456789ABCDEF";
        std::string result = "0x";
        for (int shift = 12; shift >= 0; shift -= 4) {
            result += kDigits[(error.getErrorCode() >> shift) & 0xF];
        }
        return result + " " + utf8(error.getMessage()) + " [" + utf8(error.getSource()) + "]";
    }
    return "nothing";
}

}  // namespace ZroCommon::testing
