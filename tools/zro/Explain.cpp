#include "tools/zro/Explain.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "zro/xml/ZRXmlParser.h"

#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRError;
using ZroCommon::ZRXmlParser;

std::string argumentOf(const ZRError& error) {
    const std::string message = toUtf8(error.getRawMessage());
    const std::size_t colon = message.find(": ");
    return colon == std::string::npos ? std::string() : message.substr(colon + 2);
}

// What stands between the first pair of single quotation marks.
std::string quotedIn(const ZRError& error) {
    const std::string message = toUtf8(error.getRawMessage());
    const std::size_t begin = message.find('\'') + 1;
    return message.substr(begin, message.find('\'', begin) - begin);
}

std::u32string wide(const std::string& text) {
    const UnicodeString units = fromUtf8(text);
    std::u32string result;
    for (int32_t index = 0; index < units.length(); index = units.moveIndex32(index, 1)) {
        result += static_cast<char32_t>(units.char32At(index));
    }
    return result;
}

// The message adds a ";" to what was read of a reference.
std::string referenceIn(const ZRError& error) {
    std::string reference = argumentOf(error);
    if (!reference.empty()) {
        reference.pop_back();
    }
    return reference;
}

// How far behind the end of a token the parser may stand: some look-ahead, and behind a reference
// in an entity's value at the end of the whole literal.
constexpr std::size_t kLookAhead = 3;
constexpr std::size_t kLiteral = 200;

std::optional<Excerpt> namedPlace(const ZRError& error, const SourceText& source) {
    switch (plainCode(error)) {
    case 0x1801:  // what the end of the input came too early for
    case 0x1811:
    case 0x1812:
    case 0x181A:
    case 0x182D:
    case 0x182F: return source.behindPosition();
    case 0x1802: return source.lastOf(U"<", kLookAhead);
    case 0x1806: return source.lastOf(wide("</" + quotedIn(error)), kLookAhead);
    case 0x1807: return source.prefixInTag(wide(argumentOf(error)));
    case 0x1808: return source.attributeInTag(wide(argumentOf(error)));
    case 0x1810: return source.lastOf(U"]]>", kLookAhead);
    case 0x1814:
    case 0x1815: return source.lastOf(U"<!DOCTYPE", kLookAhead);
    case 0x1821: return source.lastOf(U"<?xml", kLookAhead);
    case 0x181B: return source.lastOf(U"&", kLookAhead);
    case 0x182B:
    case 0x182C: return source.lastOf(wide(argumentOf(error)), kLookAhead);
    case 0x181D:
    case 0x181E: return source.lastOf(wide(argumentOf(error)), kLiteral);
    case 0x181C:
    case 0x1831:
    case 0x1832:
    case 0x1833: return source.lastOf(wide(referenceIn(error)), kLiteral);
    default: return std::nullopt;
    }
}

struct KnownPrefix {
    std::string_view prefix;
    std::string_view uri;
};
constexpr std::array kKnownPrefixes = {
    KnownPrefix{"fo", "http://www.w3.org/1999/XSL/Format"},
    KnownPrefix{"xsl", "http://www.w3.org/1999/XSL/Transform"},
    KnownPrefix{"svg", "http://www.w3.org/2000/svg"},
    KnownPrefix{"xlink", "http://www.w3.org/1999/xlink"},
    KnownPrefix{"m", "http://www.w3.org/1998/Math/MathML"},
    KnownPrefix{"mml", "http://www.w3.org/1998/Math/MathML"},
};

std::string adviceOnPrefix(const std::string& prefix) {
    const auto known = std::find_if(kKnownPrefixes.begin(), kKnownPrefixes.end(),
                                    [&](const auto& row) { return row.prefix == prefix; });
    const std::string uri = known == kKnownPrefixes.end() ? "..." : std::string(known->uri);
    return "declare it on this element or around it: xmlns:" + prefix + "=\"" + uri + "\"";
}

// The MathML table has the names that people know from HTML.
std::string adviceOnEntity(const std::string& reference) {
    const std::string name = reference.size() < 3 ? "" : reference.substr(1, reference.size() - 2);
    const UnicodeString& value = ZRXmlParser::getMathMLEntity(fromUtf8(name));
    const std::string replacement =
        value.length() == 1 ? "&#x" + asHex(value.charAt(0)) + ";" : "a character reference";
    return "XML itself knows lt, gt, amp, apos and quot only; write " + replacement
           + ", or declare the entity in the DOCTYPE";
}

std::string adviceOnOpen(const std::vector<OpenElement>& open) {
    constexpr std::size_t kShown = 5;
    if (open.empty()) {
        return {};
    }
    std::string list = open.size() > kShown ? "... " : "";
    for (std::size_t index = open.size() - std::min(kShown, open.size()); index < open.size();
         ++index) {
        list += "<" + open[index].name + "> ";
    }
    return "still open: " + list + "(the last one from line " + std::to_string(open.back().line)
           + ")";
}

std::string adviceOnEndTag(const std::vector<OpenElement>& open) {
    if (open.empty()) {
        return "no element is open here";
    }
    return "the open element is <" + open.back().name + ">, from line "
           + std::to_string(open.back().line);
}

std::string adviceOnTopLevelText(const std::string& firstBytes) {
    if (firstBytes.starts_with("PK\x03\x04")) {
        return "this is a ZIP package; an entry of it is named jar:FILE!/ENTRY";
    }
    if (firstBytes.starts_with("\x1F\x8B")) {
        return "this is a gzip file; unpack it first";
    }
    if (!firstBytes.empty() && firstBytes.front() != '<') {
        return "text can only stand inside the root element";
    }
    return {};
}

// Advice that depends on nothing but the code.
std::string_view fixedAdvice(int code) {
    switch (code) {
    case 0x1004: return "the input is empty";
    case 0x1802: return "a document has one root element; put one around all of them";
    case 0x1804:
    case 0x180D: return "write a less-than sign in text as &lt;";
    case 0x180A: return "an attribute needs a value: name=\"value\"";
    case 0x180B: return "put a blank between the attributes";
    case 0x1810: return "write ]]> in text as ]]&gt;";
    case 0x1813: return "a comment cannot hold two hyphens in a row";
    case 0x181B:
    case 0x181C: return "write an ampersand in text as &amp;";
    case 0x1821: return "an XML declaration can only be the very first thing in a file";
    case 0x182C: return "white space is asked for even when nothing follows: <?target ?>";
    case 0x182E: return "put quotation marks around the value";
    case 0x1830: return "write a less-than sign in an attribute as &lt;";
    case 0x1833: return "of the control characters only 9, 10 and 13 can be in a document";
    case 0x1839: return "the byte order mark at the start of the file says otherwise";
    case 0x183A: return "the option --limits sets this limit, or none";
    default: return {};
    }
}

// What is missing at the end of a document is more than the one thing that the error is about.
bool asksForMore(int code) {
    constexpr std::array kCodes = {0x1804, 0x1805, 0x180A, 0x182E, 0x182F};
    return std::find(kCodes.begin(), kCodes.end(), code) != kCodes.end();
}

}  // namespace

int plainCode(const ZRError& error) {
    return error.getErrorCode() & 0xF8FF;
}

Excerpt placeOf(const ZRError& error, const SourceText& source) {
    return namedPlace(error, source).value_or(source.atPosition());
}

std::string adviceOn(const ZRError& error, const std::vector<OpenElement>& open,
                     const SourceText* source) {
    const int code = plainCode(error);
    if (source != nullptr && source->isAtEnd() && asksForMore(code)) {
        return "the document ends here; is it cut off?";
    }
    switch (code) {
    case 0x1801: return adviceOnOpen(open);
    case 0x1806: return adviceOnEndTag(open);
    case 0x1807: return adviceOnPrefix(printable(fromUtf8(argumentOf(error))));
    case 0x180E: return adviceOnTopLevelText(source != nullptr ? source->firstBytes() : "");
    case 0x181E: return adviceOnEntity(argumentOf(error));
    default: return std::string(fixedAdvice(code));
    }
}

}  // namespace zro
