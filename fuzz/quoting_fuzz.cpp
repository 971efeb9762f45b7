// Any text quoted and unquoted, any bytes in base64 and back: what goes round comes back the same.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "zro/text/ZRUtil.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::UnicodeString;
using ZroCommon::ZRUtil;
using ZroCommon::fuzzing::require;
using Mode = ZRUtil::QuoteMode;

// A text that ends at its first U+0000, as the readers see it.
UnicodeString upToNul(const UnicodeString& text) {
    const int32_t end = text.indexOf(u'\0');
    return end < 0 ? text : UnicodeString(text, 0, end);
}

void quote(const UnicodeString& text, Mode mode) {
    const bool isSafe = (mode & (ZRUtil::QUOTE_DOUBLING | ZRUtil::QUOTE_BACKSLASH)) != 0;
    const bool isQuoted = (mode & (ZRUtil::QUOTE_DOUBLE | ZRUtil::QUOTE_SINGLE)) != 0;
    UnicodeString quoted = ZRUtil::quoteString(text, mode);
    if (!isQuoted) {
        return;
    }
    // Without an escape the text may hold the quote that encloses it; then the raw inside counts.
    require(ZRUtil::unquoteString(quoted, mode) == text);
    const char16_t* end = nullptr;
    const UnicodeString parsed = ZRUtil::parseString(quoted.getTerminatedBuffer(), &end, mode);
    require(!isSafe || (parsed == text && *end == u'\0'));
}

void parse(UnicodeString text, Mode mode) {
    const char16_t* const start = text.getTerminatedBuffer();
    const char16_t* const last = start + text.length();
    const char16_t* end = nullptr;
    const UnicodeString parsed = ZRUtil::parseString(start, &end, mode);
    require(start <= end && end <= last && (!parsed.isBogus() || end == start));
    static_cast<void>(ZRUtil::unquoteString(text, mode));

    const double number = ZRUtil::parseNumber(start, &end);
    require(start <= end && end <= last && (end != start || number == 0));
    ZRUtil::parseHexNum(start, &end, static_cast<int>(mode));
    require(start <= end && end <= last);
    const int rounded = ZRUtil::roundToInteger(number);
    require(rounded >= 0 || number < 0);
}

void encode(const std::string& bytes) {
    std::istringstream in(bytes);
    const UnicodeString base64 = ZRUtil::encodeBase64(in, static_cast<int>(bytes.size()));
    require(base64.length() == static_cast<int32_t>((bytes.size() + 2) / 3 * 4));
    std::ostringstream out;
    ZRUtil::decodeBase64(base64.getBuffer(), base64.length(), out);
    require(out.str() == bytes);
}

// What is decoded is encoded as the text was, but for what is not of the alphabet.
void decode(const UnicodeString& text) {
    std::stringstream bytes;
    ZRUtil::decodeBase64(text.getBuffer(), text.length(), bytes);
    const UnicodeString again = ZRUtil::encodeBase64(bytes, 0);
    std::u16string digits;
    for (int32_t at = 0; at < text.length() && text[at] != u'='; ++at) {
        constexpr std::u16string_view kAlphabet =
            u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        if (kAlphabet.find(text[at]) != std::u16string_view::npos) {
            digits += text[at];
        }
    }
    const auto whole = static_cast<int32_t>(digits.size() / 4 * 4);
    require(again.startsWith(UnicodeString(digits.data(), whole)));
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const auto mode = static_cast<Mode>(data[0] & 15U);
    const UnicodeString text = ZroCommon::fuzzing::utf16({data + 1, size - 1});
    quote(upToNul(text), mode);
    parse(text, mode);
    encode(std::string(reinterpret_cast<const char*>(data), size));
    decode(text);
    return 0;
}
