// Any number by any format in any language, in any groups.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include <unicode/uchar.h>

#include "zro/text/ZRLang.h"
#include "zro/text/ZRUtil.h"
#include "zro/vocabulary/ZRName.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::UnicodeString;
using ZroCommon::ZRLang;
using ZroCommon::ZRUtil;
using ZroCommon::fuzzing::require;

struct Input {
    int number = 0;
    int groupSize = 0;
    UnicodeString language;
    UnicodeString separator;
    UnicodeString format;

    UnicodeString label(const UnicodeString& between) const {
        return ZRUtil::formatNumber(number, format, between, groupSize, ZRLang(language),
                                    ZroCommon::ZRN_EMPTY);
    }
};

bool isMark(const UnicodeString& format) {
    UnicodeString copy(format);
    return format.length() >= 2
           && copy.findAndReplace(UnicodeString(format, 0, 1), UnicodeString()).isEmpty();
}

bool isTokenUnit(char16_t unit) {
    return u_isalnum(unit) != 0 || (unit >= 0x2160 && unit <= 0x2183);
}

// What stands around the token stands around the label.
void checkAround(const UnicodeString& format, const UnicodeString& label) {
    int32_t first = 0;
    while (first < format.length() && !isTokenUnit(format[first])) {
        ++first;
    }
    int32_t last = first;
    while (last < format.length() && isTokenUnit(format[last])) {
        ++last;
    }
    require(label.startsWith(UnicodeString(format, 0, first)));
    require(label.endsWith(UnicodeString(format, last)));
}

// Separators are all that groups add.
void checkGroups(const Input& input, const UnicodeString& plain) {
    UnicodeString grouped = input.label(input.separator);
    for (int32_t at = 0; at < input.separator.length(); ++at) {
        if (plain.indexOf(input.separator[at]) >= 0) {
            return;
        }
    }
    if (!input.separator.isEmpty()) {
        require(grouped.findAndReplace(input.separator, UnicodeString()) == plain);
    }
}

// As C prints it, filled up with zeros.
void checkDecimal(const Input& input) {
    constexpr int kMaxWidth = 40;
    const int width = input.format.length();
    if (width < 2 || width > kMaxWidth || input.format[0] != u'0'
        || input.format[width - 1] != u'1') {
        return;
    }
    for (int32_t at = 0; at < width; ++at) {
        if (!isTokenUnit(input.format[at])) {
            return;
        }
    }
    std::string digits(kMaxWidth + 2, '\0');
    digits.resize(static_cast<std::size_t>(
        std::snprintf(digits.data(), digits.size(), "%0*d", width, input.number)));
    require(input.label({}) == UnicodeString::fromUTF8(digits));
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kHead = 5;
    if (size < kHead) {
        return 0;
    }
    std::uint32_t bits = 0;
    for (std::size_t at = 0; at < 4; ++at) {
        bits = bits << 8U | data[at];
    }
    const UnicodeString text = ZroCommon::fuzzing::utf16({data + kHead, size - kHead});
    const int32_t first = text.indexOf(u'|');
    const int32_t second = first < 0 ? first : text.indexOf(u'|', first + 1);
    if (second < 0) {
        return 0;
    }
    const Input input{
        static_cast<int>(bits), static_cast<std::int8_t>(data[4]), UnicodeString(text, 0, first),
        UnicodeString(text, first + 1, second - first - 1), UnicodeString(text, second + 1)};
    const UnicodeString label = input.label({});
    require(!label.isBogus() && label == input.label({}));
    if (!isMark(input.format) && input.format != UnicodeString(u'1')) {
        checkAround(input.format, label);
    }
    checkGroups(input, label);
    checkDecimal(input);
    return 0;
}
