#include "zro/uri/ZRDataUri.h"

#include <string_view>

#include "zro/foundation/internal/TextView.h"
#include "zro/values/ZRTokenizer.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon {
namespace {

constexpr std::u16string_view kScheme = u"data:";
constexpr int kNameToken = -3;

// The index of the next ";" or ",", or -1.
int32_t findMark(const UnicodeString& text, int32_t from) {
    const std::size_t found =
        internal::viewOf(text).find_first_of(u";,", static_cast<std::size_t>(from));
    return found == std::u16string_view::npos ? -1 : static_cast<int32_t>(found);
}

}  // namespace

ZRDataUri::ZRDataUri(const UnicodeString& str, URISTRTYPE type) : ZRUri(str, type) {
    init();
}

ZRDataUri::ZRDataUri(const ZRUri& base, const UnicodeString& str, URISTRTYPE type)
    : ZRUri(base, str, type) {
    init();
}

ZRDataUri::~ZRDataUri() = default;

void ZRDataUri::init() {
    constexpr auto kStart = static_cast<int32_t>(kScheme.size());
    // On purpose: "DATA:" is such a URI too for `isDataScheme`, but not here.
    if (!internal::viewOf(m_uri).starts_with(kScheme)) {
        return;
    }
    m_uri = UnicodeString(m_uri, 0, kStart) + unescape(UnicodeString(m_uri, kStart));

    int32_t mark = findMark(m_uri, kStart);
    if (mark < 0) {
        return;
    }
    m_mediaType = UnicodeString(m_uri, kStart, mark - kStart).trim();
    // On purpose: any parameter says that the data is base64.
    m_base64 = m_uri[mark] == u';';
    while (m_uri[mark] == u';') {
        const int32_t start = mark + 1;
        mark = findMark(m_uri, start);
        if (mark < 0) {
            return;
        }
        // On purpose: the last parameter, which should be "base64", is not read.
        if (m_uri[mark] == u';') {
            readParameter(UnicodeString(m_uri, start, mark - start));
        }
    }
    m_dataPos = mark + 1;
}

void ZRDataUri::readParameter(const UnicodeString& piece) {
    ZRTokenizer tokens(piece);
    if (tokens.nextToken() != kNameToken || tokens.sval != u"page" || tokens.nextToken() != u'=') {
        return;
    }
    const int page = ZRValue::parse(tokens.nextSeparatedValue(u';')).getIntegerValue();
    if (page > 0) {
        m_pageNumber = page;
    }
}

}  // namespace ZroCommon
