#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "zro/foundation/Text.h"

namespace zro {

using ZroCommon::UnicodeString;

std::string toUtf8(const UnicodeString& text);
std::string toUtf8(std::u32string_view text);
UnicodeString fromUtf8(std::string_view bytes);

/// The text on one line that a reader and a script can take apart: `"`, `\`, line feed, carriage
/// return and tab as in C, other invisible characters as `\u{200B}`, and so U+FFFD, which stands
/// for what could not be read, and what Unicode leaves out for good.
std::string escaped(const UnicodeString& text);

/// The same character set for running text: quotation marks and backslashes stay as they are.
std::string printable(const UnicodeString& text);

/// Running text between quotation marks; what somebody typed, say.
std::string quoted(const UnicodeString& text);
std::string quoted(const std::string& typed);

/// Whether a terminal might act on the character instead of showing it: controls, and the marks
/// that turn the direction of writing.
bool isUnsafe(char32_t character);

/// Columns that a character takes on a terminal: 0, 1 or 2.
int displayWidth(char32_t character);

/// "1A2B"
std::string asHex(std::uint32_t number);

/// "3.14", whatever the locale.
std::string asFixed(double number, int decimals);

/// "1,234,567"
std::string withThousands(std::uint64_t number);

/// "1 element", "2 elements"; with a plural of its own "2 entries"
std::string counted(std::uint64_t number, const std::string& thing, const std::string& things = "");

/// The text with blanks behind it or before it, as wide as that at least.
std::string leftAligned(std::string text, std::size_t width);
std::string rightAligned(const std::string& text, std::size_t width);

/// "512 bytes", "1.9 MB"; 1 MB is 10^6 bytes.
std::string asSize(std::uint64_t bytes);

/// "0.4 ms", "12.3 s"
std::string asDuration(double seconds);

}  // namespace zro
