// Any text as a data: URI: its parts lie where they say, and its data can be decoded.
#include <cstddef>
#include <cstdint>
#include <sstream>

#include "zro/text/ZRUtil.h"
#include "zro/uri/ZRDataUri.h"

#include "fuzz/Input.h"

namespace {

using namespace ZroCommon;
using fuzzing::require;

void ask(const ZRDataUri& uri) {
    const UnicodeString& text = uri.toString();
    const int32_t data = uri.getDataPos();
    require(data == -1 || (data > 5 && data <= text.length() && text[data - 1] == u','));
    require(uri.getPageNumber() >= 0 && (uri.getPageNumber() == 0 || uri.isBase64()));
    require(uri.getMediaType().indexOf(u';') < 0 && uri.getMediaType().indexOf(u',') < 0);
    const bool isData = text.startsWith(u"data:");
    require(isData || (data == -1 && !uri.isBase64() && uri.getMediaType().isEmpty()));
    require(!isData || uri.getMediaType().isEmpty() || text.indexOf(uri.getMediaType()) >= 0);
    require(!isData || (data == -1) == (text.indexOf(u',') < 0));
    if (data >= 0) {
        std::ostringstream decoded;
        ZRUtil::decodeBase64(text.getBuffer() + data, text.length() - data, decoded);
        require(decoded.str().size() <= static_cast<std::size_t>(text.length()));
    }
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const auto type = static_cast<URISTRTYPE>(data[0] & 3U);
    const UnicodeString text = fuzzing::utf16({data + 1, size - 1});
    const ZRDataUri uri(text, type);
    ask(uri);
    ask(ZRDataUri(ZRUri(u"http://h/d/", URISTR_GUESS), text, type));
    ask(ZRDataUri(u"data:" + text, type));
    return 0;
}
