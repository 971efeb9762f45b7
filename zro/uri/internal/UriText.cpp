#include "zro/uri/internal/UriText.h"

#include <algorithm>
#include <array>
#include <string>

#include <unicode/uchar.h>

namespace ZroCommon::internal {
namespace {

constexpr std::u16string_view kFileScheme = u"file:";
constexpr char16_t kFirstFree = 160;  // from here on everything is allowed

constexpr bool isLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

constexpr bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

// The allowed characters of the first 160. The percent sign is not among them.
constexpr auto kAllowed = [] {
    std::array<bool, kFirstFree> allowed{};
    for (char16_t unit = 0; unit < kFirstFree; ++unit) {
        allowed[unit] = isLetter(unit) || isDigit(unit);
    }
    for (const char16_t unit : std::u16string_view(u"!#$&'()*+,-./:;=?@[]_~")) {
        allowed[unit] = true;
    }
    return allowed;
}();

bool isAllowed(char16_t unit) {
    return unit >= kFirstFree || kAllowed[unit];
}

int hexValue(char16_t unit) {
    if (isDigit(unit)) {
        return unit - u'0';
    }
    const int lower = unit | 0x20;
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

// No white space lies above U+FFFF, so units can be asked one by one.
bool isSpace(char16_t unit) {
    return unit == u' ' || u_isWhitespace(unit) != 0;
}

bool isQuote(char16_t unit) {
    return unit == u'"' || unit == u'\'';
}

// A quotation mark alone is its own end, and gives the empty text.
std::u16string_view withoutQuotes(std::u16string_view text) {
    if (text.empty() || !isQuote(text.front()) || text.back() != text.front()) {
        return text;
    }
    return text.substr(1, std::max<std::size_t>(text.size(), 2) - 2);
}

constexpr std::u16string_view kUrlFunction = u"url(";

bool isUrlFunction(std::u16string_view text) {
    return text.starts_with(kUrlFunction) && text.ends_with(u')');
}

void appendEscape(UnicodeString& text, char16_t unit) {
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    text.append(u'%').append(kDigits[unit >> 4]).append(kDigits[unit & 0xF]);
}

// The byte that an escape at `index` stands for, or -1.
int escapedByte(std::u16string_view text, std::size_t index) {
    if (text[index] != u'%' || text.size() - index < 3) {
        return -1;
    }
    const int high = hexValue(text[index + 1]);
    const int low = hexValue(text[index + 2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

}  // namespace

ClassifiedUri classifyUri(const UnicodeString& text, URISTRTYPE type) {
    ClassifiedUri uri{text, UriKind::PathOrUri};
    if (type == URISTR_GUESS || type == URISTR_GUESS_CSS) {
        // The text is judged as it stands, before anything is taken off.
        const bool isPath = isDriveAt(viewOf(text), 0) || text.indexOf(u'\\') >= 0;
        uri.kind = isPath ? UriKind::Path : UriKind::Uri;
    }
    if (type == URISTR_GUESS_CSS || type == URISTR_PATH_OR_URI_CSS) {
        const std::u16string_view view = viewOf(text);
        const std::u16string_view inside = unwrapped(view);
        uri.kind = isUrlFunction(view) ? UriKind::Uri : uri.kind;
        uri.text = inside.size() == view.size() ? text : textOf(inside);
    }
    return uri;
}

std::u16string_view unwrapped(std::u16string_view text) {
    if (isUrlFunction(text)) {
        text = trimmed(text.substr(kUrlFunction.size(), text.size() - kUrlFunction.size() - 1));
    }
    return withoutQuotes(text);
}

std::u16string_view trimmed(std::u16string_view text) {
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::size_t schemeLength(std::u16string_view text) {
    if (text.empty() || !isLetter(text[0])) {
        return 0;
    }
    std::size_t length = 1;
    while (length < text.size()
           && (isLetter(text[length]) || isDigit(text[length]) || text[length] == u'+'
               || text[length] == u'-' || text[length] == u'.')) {
        ++length;
    }
    return length >= 2 && length < text.size() && text[length] == u':' ? length : 0;
}

bool isDriveAt(std::u16string_view text, std::size_t index) {
    const std::u16string_view drive = text.substr(std::min(index, text.size()), 2);
    return drive.size() == 2 && drive[1] == u':' && isLetter(drive[0]);
}

bool startsWithIgnoringCase(std::u16string_view text, std::u16string_view prefix) {
    return text.size() >= prefix.size()
           && std::equal(prefix.begin(), prefix.end(), text.begin(), [](char16_t a, char16_t b) {
                  return a == b || (isLetter(b) && a == (b | 0x20));
              });
}

UnicodeString escapeUri(const UnicodeString& text) {
    const std::u16string_view view = viewOf(text);
    auto run = view.begin();
    auto bad = std::find_if_not(run, view.end(), isAllowed);
    if (bad == view.end()) {
        return text;
    }
    UnicodeString escaped;
    while (bad != view.end()) {
        escaped.append(&*run, 0, static_cast<int32_t>(bad - run));
        appendEscape(escaped, *bad);
        run = bad + 1;
        bad = std::find_if_not(run, view.end(), isAllowed);
    }
    return escaped.append(text, static_cast<int32_t>(run - view.begin()), INT32_MAX);
}

bool isWellFormedUri(const UnicodeString& text) {
    const std::u16string_view view = viewOf(text);
    if (schemeLength(view) != 0) {
        return true;
    }
    for (std::size_t i = 0; i < view.size(); ++i) {
        if (!isAllowed(view[i]) && escapedByte(view, i) < 0) {
            return false;
        }
    }
    return true;
}

UnicodeString unescapeUri(const UnicodeString& text) {
    if (text.indexOf(u'%') < 0) {
        return text;
    }
    // Escapes are ASCII, so they can be undone before the rest becomes UTF-8; but the bytes of one
    // character may come from both, so all of it is decoded together.
    std::string bytes;
    const std::u16string_view view = viewOf(text);
    std::size_t run = 0;
    const auto appendRun = [&](std::size_t end) {
        UnicodeString(false, view.data() + run, static_cast<int32_t>(end - run))
            .toUTF8String(bytes);
    };
    for (std::size_t i = view.find(u'%'); i != std::u16string_view::npos; i = view.find(u'%', i)) {
        const int byte = escapedByte(view, i);
        if (byte < 0) {
            ++i;
            continue;
        }
        appendRun(i);
        bytes += static_cast<char>(byte);
        i += 3;
        run = i;
    }
    appendRun(view.size());
    return UnicodeString::fromUTF8(bytes);
}

void replaceUnits(UnicodeString& text, char16_t from, char16_t to) {
    for (int32_t i = text.indexOf(from); i >= 0; i = text.indexOf(from, i + 1)) {
        text.setCharAt(i, to);
    }
}

UnicodeString pathToUri(const UnicodeString& path) {
    UnicodeString slashed(path);
    replaceUnits(slashed, u'\\', u'/');
    if (isDriveAt(viewOf(slashed), 0)) {
        return UnicodeString(u"file:///").append(escapeUri(slashed));
    }
    if (viewOf(slashed).starts_with(u"//")) {
        return UnicodeString(u"file:").append(escapeUri(slashed));
    }
    return slashed;
}

UnicodeString normalizeUri(const UnicodeString& text, UriKind kind) {
    UnicodeString uri(text);
    uri.trim();
    if (uri.isEmpty()) {
        return {};
    }
    if (kind == UriKind::Uri || (kind == UriKind::PathOrUri && schemeLength(viewOf(uri)) != 0)) {
        return isWellFormedUri(uri) ? uri : escapeUri(uri);
    }
    uri = pathToUri(uri);
    if (uri[0] == u'/') {
        return UnicodeString(u"file:").append(escapeUri(uri));
    }
    return startsWithIgnoringCase(viewOf(uri), kFileScheme) ? uri : escapeUri(uri);
}

UnicodeString localPathOf(const UnicodeString& uri) {
    const std::u16string_view view = viewOf(uri);
    if (!startsWithIgnoringCase(view, kFileScheme)) {
        return schemeLength(view) != 0 ? uri : unescapeUri(uri);
    }
    const std::size_t behindSlashes =
        std::min(view.find_first_not_of(u'/', kFileScheme.size()), view.size());
    const bool hasDrive = isDriveAt(view, behindSlashes);
    if (!hasDrive && behindSlashes < kFileScheme.size() + 2) {
        return unescapeUri(textOf(view.substr(kFileScheme.size())));
    }
    UnicodeString path = unescapeUri(textOf(view.substr(behindSlashes)));
    replaceUnits(path, u'/', u'\\');
    return hasDrive ? path : UnicodeString(u"\\\\").append(path);
}

}  // namespace ZroCommon::internal
