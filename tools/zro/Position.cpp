#include "tools/zro/Position.h"

#include <algorithm>
#include <string_view>

namespace zro {
namespace {

// Any text of the form, "START_TAG": which events there are is the parser's business.
bool isEventName(const UnicodeString& text) {
    const std::u16string_view units(text.getBuffer(), static_cast<std::size_t>(text.length()));
    return !units.empty() && std::all_of(units.begin(), units.end(), [](char16_t unit) {
        return (unit >= u'A' && unit <= u'Z') || unit == u'_';
    });
}

// Takes the last field ", Line 12" off the text. \return its number, 0 without the field
int takeNumber(UnicodeString& text, const UnicodeString& label) {
    const int32_t start = text.lastIndexOf(label);
    if (start < 0) {
        return 0;
    }
    int number = 0;
    for (int32_t index = start + label.length(); index < text.length(); ++index) {
        const int digit = text.charAt(index) - u'0';
        if (digit < 0 || digit > 9) {
            return 0;
        }
        number = number * 10 + digit;
    }
    text.truncate(start);
    return number;
}

}  // namespace

std::optional<Position> parsePosition(const UnicodeString& description) {
    UnicodeString rest = description;
    if (!rest.endsWith(UnicodeString(u"."))) {
        return std::nullopt;
    }
    rest.truncate(rest.length() - 1);
    Position position;
    position.column = takeNumber(rest, u", Col ");
    position.line = takeNumber(rest, u", Line ");
    const int32_t quote = rest.indexOf(u", '");
    if (quote >= 0 && rest.endsWith(UnicodeString(u"'"))) {
        position.name = UnicodeString(rest, quote + 3, rest.length() - quote - 4);
        rest.truncate(quote);
    }
    return isEventName(rest) ? std::optional(position) : std::nullopt;
}

std::optional<Position> takePosition(UnicodeString& message) {
    for (int32_t feed = message.indexOf(u'\n'); feed >= 0;
         feed = message.indexOf(u'\n', feed + 1)) {
        if (auto position = parsePosition(UnicodeString(message, feed + 1))) {
            message.truncate(feed);
            return position;
        }
    }
    return std::nullopt;
}

}  // namespace zro
