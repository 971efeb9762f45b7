// Any text as a URI: nothing may crash, and what is normal once stays so.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "zro/uri/ZRUri.h"

namespace {

using ZroCommon::UnicodeString;
using ZroCommon::URISTR_GUESS;
using ZroCommon::URISTRTYPE;
using ZroCommon::ZRUri;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

UnicodeString unitsOf(const std::uint8_t* data, std::size_t size) {
    UnicodeString text;
    for (std::size_t i = 0; i < size; ++i) {
        // Two bytes make a unit only now and then: most of what matters is ASCII.
        const bool isWide = data[i] >= 0xF0 && i + 1 < size;
        text.append(static_cast<char16_t>(isWide ? data[i] << 8 | data[i + 1] : data[i]));
        i += isWide ? 1 : 0;
    }
    return text;
}

void ask(ZRUri uri, const UnicodeString& other) {
    require(!uri.toString().isBogus());
    require(uri.isAbsolute() == !uri.getScheme().isEmpty());
    require(uri.isFile() || uri.isAbsolute());
    require(uri.isSameFile(uri) == uri.isFile());
    require(uri.toString().endsWith(uri.getExtension()));
    require(uri.isFile() || uri.getLocalPath() == uri.toString());
    static_cast<void>(uri.getBaseString());
    static_cast<void>(uri.getFileName());
    static_cast<void>(uri.getRelativeUri(other));

    const UnicodeString extension = uri.getExtension();
    ZRUri changed(uri);
    if (changed.setExtension(u".tmp") == extension && !extension.isEmpty()) {
        changed.setExtension(extension);
        require(changed.toString() == uri.toString());
    }
    const UnicodeString before = uri.toString();
    const UnicodeString fragment = uri.removeFragment();
    require(uri.toString() + fragment == before && uri.toString().indexOf(u'#') < 0);
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const auto type = static_cast<URISTRTYPE>(data[0] & 3U);
    const UnicodeString whole = unitsOf(data + 1, size - 1);
    const int32_t cut = whole.indexOf(u'\n');
    const UnicodeString first(whole, 0, cut < 0 ? whole.length() : cut);
    const UnicodeString second(whole, cut < 0 ? 0 : cut + 1);

    const ZRUri base(first, type);
    ask(base, second);
    ask(ZRUri(base, second, type), first);
    require(ZRUri(base, UnicodeString(), type).isEmpty());
    // Type 0 reads a normal text as a URI again, unless a drive or a backslash makes it a path.
    const ZRUri again(base.toString(), URISTR_GUESS);
    require(ZRUri(again.toString(), URISTR_GUESS).toString() == again.toString()
            || again.toString().indexOf(u'\\') >= 0);
    require(ZRUri::unescape(first).indexOf(u'%') >= 0 || first.indexOf(u"%25") < 0);
    return 0;
}
