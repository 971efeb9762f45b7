#pragma once

#include <cstdint>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/uri/ZRUri.h"

namespace ZroCommon {

/// A `data:` URI (RFC 2397) and where its parts are. Decoding the data is left to the caller (see
/// `ZRUtil::decodeBase64`), as is opening it: `getStream` opens none unless a resolver does.
///
/// The text is held unescaped behind "data:", and positions refer to that. A URI of another kind is
/// allowed: it has no data, and nothing of it is changed. A value, as `ZRUri` is.
class ZRO_API ZRDataUri : public ZRUri {
public:
    /// See the constructors of `ZRUri`.
    ZRDataUri(const UnicodeString& str, URISTRTYPE type);
    ZRDataUri(const ZRUri& base, const UnicodeString& str, URISTRTYPE type);

    ZRDataUri(const ZRDataUri&) = default;
    ZRDataUri(ZRDataUri&&) noexcept = default;
    ZRDataUri& operator=(const ZRDataUri&) = default;
    ZRDataUri& operator=(ZRDataUri&&) noexcept = default;
    ~ZRDataUri() override;

    /// The index in the text of the first character of the data, which is behind the comma; -1 when
    /// there is none.
    int32_t getDataPos() const { return m_dataPos; }

    /// True when anything stands between media type and data, which is taken for "base64".
    bool isBase64() const { return m_base64; }

    /// The media type as written, without white space around it; empty when none is given.
    const UnicodeString& getMediaType() const { return m_mediaType; }

    /// The parameter "page" of the media type, such as "image/tiff;page=3"; 0 without one.
    int getPageNumber() const { return m_pageNumber; }

private:
    void init();
    void readParameter(const UnicodeString& piece);

    int32_t m_dataPos = -1;
    bool m_base64 = false;
    UnicodeString m_mediaType;
    int32_t m_pageNumber = 0;
};

}  // namespace ZroCommon
