// Any text as a URI: nothing may crash, and what is normal once stays so.
#include <cstddef>
#include <cstdint>

#include "zro/uri/ZRUri.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::UnicodeString;
using ZroCommon::URISTR_GUESS;
using ZroCommon::URISTRTYPE;
using ZroCommon::ZRUri;
using ZroCommon::fuzzing::require;

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
    const UnicodeString whole = ZroCommon::fuzzing::utf16({data + 1, size - 1});
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
