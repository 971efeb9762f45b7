// Any spreadsheet format with any number in any width: compiled alone, and shown.
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

#include "zro/text/xls/XlsFormatString.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::fuzzing::require;
using namespace ZroCommon;  // NOLINT(google-build-using-namespace)

// Odd bytes above ASCII stand for units of the East Asian blocks.
UnicodeString formatOf(std::span<const std::uint8_t> bytes) {
    UnicodeString format;
    for (const std::uint8_t byte : bytes) {
        const bool isWide = byte >= 0x80 && byte % 2 == 1;
        format.append(static_cast<char16_t>(isWide ? 0x3000 + byte : byte));
    }
    return format;
}

bool isOdd(void* user, const UnicodeString& text, const ZRLength& /*length*/, int a, int b) {
    require(a == 1 && b == 2);
    ++*static_cast<int*>(user);
    return text.length() % 2 == 1;
}

void checkCompiled(const XlsFormatString& formats, const UnicodeString& format) {
    FMT2 compiled;
    XlsFormatFault fault;
    const bool isValid = formats.fmtget(format, &compiled, &fault) == 1;
    require(isValid == (fault.position == -1));
    require(fault.position < format.length());
    require(compiled.sectionCount >= 1 && compiled.sectionCount <= 4);
    for (int index = 0; isValid && index < compiled.sectionCount; ++index) {
        const FMT& section = compiled.section[static_cast<std::size_t>(index)];
        require(section.sectionIndex == index && section.kind <= 3);
        require(section.compiledLength == section.compiled.length());
    }
}

struct Input {
    unsigned flags = 0;
    int width = 0;
    double number = 0;
    UnicodeString format;
};

UnicodeString show(const XlsFormatString& formats, const Input& input) {
    CELLV cell;
    cell.number = input.number;
    int calls = 0;
    unsigned char color = 0;
    UnicodeString result(u"untouched");
    const bool isMeasured = (input.flags & 4U) != 0;
    const short outcome = formats.fmtnum(&cell, ZRValue(input.width), input.format, result, &color,
                                         isMeasured ? isOdd : nullptr, ZRLength(), 1, 2, &calls);
    require(outcome == 0 || outcome == -3);
    require(calls <= (isMeasured ? 1 : 0));
    require(outcome == 0 || result.length() == (input.width > 0 ? input.width : 0));
    FMT2 compiled;
    if (formats.fmtget(input.format, &compiled) == 0) {
        require(result == UnicodeString(u"untouched"));
    }
    return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kHead = 10;
    const std::span<const std::uint8_t> bytes(data, size);
    if (size < kHead) {
        return 0;
    }
    std::uint64_t bits = 0;
    for (const std::uint8_t byte : bytes.subspan(2, 8)) {
        bits = bits << 8U | byte;
    }
    const Input input{bytes[0], static_cast<std::int8_t>(bytes[1]), std::bit_cast<double>(bits),
                      formatOf(bytes.subspan(kHead))};
    XlsFormatString formats;
    formats.setDate1904(static_cast<int>(input.flags & 1U));
    formats.setFill((input.flags & 2U) != 0);
    formats.bookFlags = (input.flags & 8U) != 0 ? 0x700 : 0x800;
    checkCompiled(formats, input.format);
    require(show(formats, input) == show(formats, input));
    CELLV cell;
    cell.text = input.format;
    UnicodeString text;
    formats.fmtstr(&cell, ZRValue(input.width), input.format, text, nullptr);
    formats.FormatString(input.format, input.number);
    return 0;
}
