// Any text with its numbers in Japanese numerals, by any digits and units.
#include <cstddef>
#include <cstdint>

#include "zro/text/ZRUtil.h"
#include "zro/vocabulary/ZRName.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::UnicodeString;
using ZroCommon::ZRName;
using ZroCommon::ZRNameEnum;
using ZroCommon::ZRUtil;
using ZroCommon::fuzzing::require;

bool isWidened(char16_t unit) {
    return unit > 0x20 && unit < 0x7F;
}

void check(const UnicodeString& text, ZRNameEnum method, ZRNameEnum digits) {
    const UnicodeString result = ZRUtil::convertKansuji(text, method, digits, {}, {});
    for (int32_t at = 0; at < result.length(); ++at) {
        require(!isWidened(result[at]));
    }
    // A digit is one character and has one unit of its own and one of its group at most.
    require(result.length() <= 3 * text.length());
    if (method == ZroCommon::ZRN_EMPTY) {
        require(result.length() == text.length());
    }
    // Nothing is left to be done, as long as the first time has lost nothing.
    require(ZRUtil::convertKansuji(result, method, digits, {}, {}) == result);
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const UnicodeString text = ZroCommon::fuzzing::utf16({data, size});
    for (const auto method :
         {ZroCommon::ZRN_EMPTY, ZroCommon::ZRN_grouping, ZroCommon::ZRN_readable}) {
        check(text, method, ZroCommon::ZRN_kanji);
        check(text, method, ZroCommon::ZRN_latin);
        // The same name each time, so that names do not pile up.
        ZRUtil::convertKansuji(text, method, ZroCommon::ZRN_background, text, text);
    }
    return 0;
}
