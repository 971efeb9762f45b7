#include "tools/zro/Text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <unicode/uchar.h>

namespace zro {
namespace {

std::string codePoint(char32_t character) {
    const std::string hex = asHex(static_cast<std::uint32_t>(character));
    return "\\u{" + std::string(hex.size() < 4 ? 4 - hex.size() : 0, '0') + hex + "}";
}

// The C escape of a character, or null.
const char* shortEscape(char32_t character) {
    switch (character) {
    case U'\n': return "\\n";
    case U'\r': return "\\r";
    case U'\t': return "\\t";
    case U'\\': return "\\\\";
    case U'"': return "\\\"";
    default: return nullptr;
    }
}

bool isPlain(char32_t character, bool quoted) {
    constexpr char32_t kReplacement = 0xFFFD;
    if (isUnsafe(character) || character == kReplacement || U_IS_UNICODE_NONCHAR(character)) {
        return false;
    }
    return !quoted || (character != U'"' && character != U'\\');
}

std::string escapedText(const UnicodeString& text, bool quoted) {
    UnicodeString result;
    for (int32_t index = 0; index < text.length(); index = text.moveIndex32(index, 1)) {
        const auto character = static_cast<char32_t>(text.char32At(index));
        if (isPlain(character, quoted)) {
            result.append(static_cast<UChar32>(character));
        } else if (const char* escape = shortEscape(character)) {
            result.append(UnicodeString(escape, -1, US_INV));
        } else {
            result.append(fromUtf8(codePoint(character)));
        }
    }
    return toUtf8(result);
}

}  // namespace

std::string toUtf8(const UnicodeString& text) {
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

std::string toUtf8(std::u32string_view text) {
    UnicodeString units;
    for (const char32_t character : text) {
        units.append(static_cast<UChar32>(character));
    }
    return toUtf8(units);
}

UnicodeString fromUtf8(std::string_view bytes) {
    return UnicodeString::fromUTF8(
        icu::StringPiece(bytes.data(), static_cast<int32_t>(bytes.size())));
}

std::string escaped(const UnicodeString& text) {
    return escapedText(text, true);
}

std::string printable(const UnicodeString& text) {
    return escapedText(text, false);
}

std::string quoted(const std::string& typed) {
    return quoted(fromUtf8(typed));
}

std::string quoted(const UnicodeString& text) {
    return "\"" + printable(text) + "\"";
}

bool isUnsafe(char32_t character) {
    switch (u_charType(static_cast<UChar32>(character))) {
    case U_CONTROL_CHAR:
    case U_FORMAT_CHAR:
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
    case U_SURROGATE: return true;
    default: return false;
    }
}

int displayWidth(char32_t character) {
    const auto code = static_cast<UChar32>(character);
    const int8_t type = u_charType(code);
    if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK) {
        return 0;
    }
    const int32_t width = u_getIntPropertyValue(code, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

std::string asHex(std::uint32_t number) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string hex;
    do {
        hex.insert(hex.begin(), kDigits[number & 15]);
        number >>= 4;
    } while (number != 0);
    return hex;
}

std::string asFixed(double number, int decimals) {
    std::array<char, 64> buffer{};
    const auto end =
        std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::fixed, decimals);
    return {buffer.begin(), end.ptr};
}

std::string withThousands(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t end = digits.size(); end > 3; end -= 3) {
        digits.insert(end - 3, ",");
    }
    return digits;
}

std::string counted(std::uint64_t number, const std::string& thing, const std::string& things) {
    const std::string many = things.empty() ? thing + "s" : things;
    return withThousands(number) + " " + (number == 1 ? thing : many);
}

std::string leftAligned(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string rightAligned(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

std::string asSize(std::uint64_t bytes) {
    if (bytes < 1000) {
        return std::to_string(bytes) + " bytes";
    }
    auto amount = static_cast<double>(bytes);
    const char* unit = "";
    for (const char* next : {"kB", "MB", "GB"}) {
        amount /= 1000;
        unit = next;
        if (amount < 999.95) {
            break;
        }
    }
    return asFixed(amount, 1) + " " + unit;
}

std::string asDuration(double seconds) {
    if (seconds < 0.01) {
        return asFixed(seconds * 1e3, 2) + " ms";
    }
    if (seconds < 1) {
        return asFixed(seconds * 1e3, 1) + " ms";
    }
    return asFixed(seconds, 2) + " s";
}

}  // namespace zro
