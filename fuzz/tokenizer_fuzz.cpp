// Calls on a tokenizer in any order: a byte for their number, the bytes for them, then the text.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "zro/values/ZRTokenizer.h"

#include "fuzz/Input.h"

namespace {

using namespace ZroCommon;  // NOLINT(google-build-using-namespace)

void call(ZRTokenizer& tokenizer, unsigned operation, char16_t separator) {
    switch (operation) {
    case 0: tokenizer.nextToken(); return;
    case 1: tokenizer.nextTokenValue(); return;
    case 2: tokenizer.nextTokenValueSigned(); return;
    case 3: tokenizer.nextTokenValueExp(); return;
    case 4: tokenizer.nextTokenValueFunc(); return;
    case 5: tokenizer.nextTokenDoubleExp(); return;
    case 6: fuzzing::require(tokenizer.nextSeparatedValue(separator) == tokenizer.sval); return;
    case 7: {
        const bool isThere = tokenizer.scanSeparator(separator);
        const bool isSpace = separator == u' ' || separator == u'\t';
        fuzzing::require(tokenizer.skipSeparator(separator) == isThere || isSpace);
        return;
    }
    case 8: tokenizer.pushBack(); return;
    case 9: tokenizer = ZRTokenizer(tokenizer); return;
    case 10: tokenizer.ttype = separator; return;
    case 11: tokenizer.sval = UnicodeString(separator); return;
    default: tokenizer.nval = -1e300; return;
    }
}

void readToTheEnd(ZRTokenizer& tokenizer) {
    tokenizer.nextToken();  // what may have been pushed back
    while (tokenizer.nextToken() != -1) {
        fuzzing::require(tokenizer.ttype >= -6 && tokenizer.ttype != -4);
    }
    fuzzing::require(*tokenizer.getPtr() == 0);
    fuzzing::require(tokenizer.nextTokenValueFunc().isNull());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span input(data, size);
    const std::size_t calls = input.empty() ? 0 : std::min<std::size_t>(input[0], size - 1);
    const UnicodeString text = fuzzing::utf16(input.subspan(std::min(size, calls + 1)));
    ZRTokenizer tokenizer(text);
    const std::size_t length = std::char_traits<char16_t>::length(tokenizer.getPtr());
    for (const std::uint8_t byte : input.subspan(input.empty() ? 0 : 1, calls)) {
        call(tokenizer, byte % 13U, u" ,&\t("[byte / 13U % 5U]);
        fuzzing::require(std::char_traits<char16_t>::length(tokenizer.getPtr()) <= length);
    }
    readToTheEnd(tokenizer);
    return 0;
}
