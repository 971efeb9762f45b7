// Quoted strings: with CSS escapes, with doubled quotes, or plain.

#include "zro/text/ZRUtil.h"

#include <string_view>

#include "zro/foundation/ZREmptyString.h"
#include "zro/foundation/internal/TextView.h"
#include "zro/text/internal/SkipSpace.h"

namespace ZroCommon {
namespace {

constexpr char16_t kNoQuote = u'\0';

bool has(ZRUtil::QuoteMode mode, ZRUtil::QuoteMode bits) {
    return (static_cast<unsigned>(mode) & static_cast<unsigned>(bits)) != 0;
}

bool isQuote(char16_t c, ZRUtil::QuoteMode mode) {
    return (c == u'"' && has(mode, ZRUtil::QUOTE_DOUBLE))
           || (c == u'\'' && has(mode, ZRUtil::QUOTE_SINGLE));
}

void append(UnicodeString& text, std::u16string_view piece) {
    text.append(piece.data(), static_cast<int32_t>(piece.size()));
}

// Reading.

const char16_t* findStop(const char16_t* next, char16_t quote, bool hasEscapes) {
    while (*next != u'\0' && *next != quote && !(hasEscapes && *next == u'\\')) {
        ++next;
    }
    return next;
}

// Appends what the escape stands for. `next` is behind the backslash; the result, behind all of it.
const char16_t* appendEscaped(UnicodeString& text, const char16_t* next) {
    if (ZRChar::isHexDigit(*next)) {
        constexpr int kMaxDigits = 6;
        constexpr unsigned kLastCodePoint = 0x10FFFF;
        const unsigned code = ZRUtil::parseHexNum(next, &next, kMaxDigits);
        text.append(code <= kLastCodePoint ? static_cast<UChar32>(code) : UChar32{0xFFFD});
        return ZRChar::isCssWhitespace(*next) ? next + 1 : next;
    }
    if (next[0] == u'\r' && next[1] == u'\n') {
        return next + 2;
    }
    if (*next == u'\0') {
        return next;
    }
    // On purpose: a line end of one character stays in the text, unlike the pair above.
    text.append(*next);
    return next + 1;
}

// Reads to behind the closing quote, or to the end of the text where there is no quote. Null when
// the closing quote is missing.
const char16_t* readString(UnicodeString& result, const char16_t* next, char16_t quote,
                           ZRUtil::QuoteMode mode) {
    const bool hasEscapes = has(mode, ZRUtil::QUOTE_BACKSLASH);
    while (true) {
        const char16_t* const stop = findStop(next, quote, hasEscapes);
        append(result, {next, static_cast<std::size_t>(stop - next)});
        if (*stop == u'\0') {
            return quote == kNoQuote ? stop : nullptr;
        }
        next = stop + 1;
        if (*stop != quote) {
            next = appendEscaped(result, next);
        } else if (has(mode, ZRUtil::QUOTE_DOUBLING) && *next == quote) {
            result.append(*next++);
        } else {
            return next;
        }
    }
}

// Writing.

char16_t chooseQuote(const UnicodeString& text, ZRUtil::QuoteMode mode) {
    if (!has(mode, ZRUtil::QUOTE_DOUBLE)) {
        return has(mode, ZRUtil::QUOTE_SINGLE) ? u'\'' : kNoQuote;
    }
    const bool isSingleBetter =
        has(mode, ZRUtil::QUOTE_SINGLE) && text.indexOf(u'"') >= 0 && text.indexOf(u'\'') < 0;
    return isSingleBetter ? u'\'' : u'"';
}

void appendReplacing(UnicodeString& result, std::u16string_view text, char16_t what,
                     std::u16string_view replacement) {
    for (auto at = text.find(what); at != std::u16string_view::npos; at = text.find(what)) {
        append(result, text.substr(0, at));
        append(result, replacement);
        text.remove_prefix(at + 1);
    }
    append(result, text);
}

// The escape of a character, empty where it needs none.
std::u16string_view escapeOf(char16_t c, char16_t quote) {
    switch (c) {
    case u'\n': return u"\\A";
    case u'\f': return u"\\C";
    case u'\r': return u"\\D";
    case u'\\': return u"\\5C";
    case u'"': return quote == c ? u"\\22" : u"";
    case u'\'': return quote == c ? u"\\27" : u"";
    default: return u"";
    }
}

void appendEscaping(UnicodeString& result, std::u16string_view text, char16_t quote) {
    std::size_t run = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::u16string_view escape = escapeOf(text[at], quote);
        if (escape.empty()) {
            continue;
        }
        append(result, text.substr(run, at - run));
        append(result, escape);
        run = at + 1;
        if (run < text.size()
            && (ZRChar::isCssWhitespace(text[run]) || ZRChar::isHexDigit(text[run]))) {
            result.append(u' ');  // it ends the escape, which would go on with what follows
        }
    }
    append(result, text.substr(run));
}

void appendQuote(UnicodeString& text, char16_t quote) {
    if (quote != kNoQuote) {
        text.append(quote);
    }
}

}  // namespace

UnicodeString ZRUtil::parseString(const char16_t* text, const char16_t** end, QuoteMode mode) {
    if (end != nullptr) {
        *end = text;
    }
    const char16_t* next = text;
    char16_t quote = kNoQuote;
    if (has(mode, QUOTE_DOUBLE | QUOTE_SINGLE)) {
        next = internal::skipCssSpace(text);
        if (!isQuote(*next, mode)) {
            return ZRBogusString::BOGUS_VALUE;
        }
        quote = *next++;
    }
    UnicodeString result;
    next = readString(result, next, quote, mode);
    if (next == nullptr) {
        return ZRBogusString::BOGUS_VALUE;
    }
    if (end != nullptr) {
        *end = next;
    }
    return result;
}

UnicodeString ZRUtil::quoteString(const UnicodeString& text, QuoteMode mode) {
    const char16_t quote = chooseQuote(text, mode);
    UnicodeString result;
    appendQuote(result, quote);
    if (has(mode, QUOTE_BACKSLASH)) {
        appendEscaping(result, internal::viewOf(text), quote);
    } else if (quote == kNoQuote) {
        return text;
    } else if (has(mode, QUOTE_DOUBLING)) {
        const char16_t doubled[] = {quote, quote};
        appendReplacing(result, internal::viewOf(text), quote, {doubled, 2});
    } else {
        result.append(text);
    }
    appendQuote(result, quote);
    return result;
}

UnicodeString ZRUtil::unquoteString(const UnicodeString& text, QuoteMode mode) {
    UnicodeString trimmed(text);
    const char16_t* const units = trimmed.trim().getTerminatedBuffer();
    const char16_t* const start = units == nullptr ? u"" : units;
    const char16_t* end = start;
    UnicodeString result = parseString(start, &end, mode);
    if (result.isBogus() || *end == u'\0') {
        return result;
    }
    const int32_t last = trimmed.length() - 1;
    if (has(mode, QUOTE_DOUBLING | QUOTE_BACKSLASH) || trimmed.charAt(last) != *start) {
        return ZRBogusString::BOGUS_VALUE;
    }
    return {trimmed, 1, last - 1};
}

UnicodeString ZRUtil::quoteUri(const UnicodeString& text) {
    UnicodeString result(u"url(\"");
    appendReplacing(result, internal::viewOf(text), u'"', u"%22");
    return result.append(u"\")");
}

}  // namespace ZroCommon
