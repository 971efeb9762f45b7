#pragma once

#include <cstddef>
#include <istream>
#include <memory>

#include "zro/foundation/StreamBuffer.h"
#include "zro/foundation/Text.h"
#include "zro/platform/http/internal/Http.h"

namespace ZroCommon::internal {

/// The body of what an address answers. The request runs in the constructor.
class ZRUriStreamBuf final : public StreamBuffer {
public:
    explicit ZRUriStreamBuf(const UnicodeString& uri);

    bool isOpen() const { return m_body != nullptr; }
    const UnicodeString& contentType() const { return m_contentType; }
    /// Empty when the stream is open.
    const UnicodeString& errorMessage() const { return m_errorMessage; }

private:
    static constexpr std::size_t kPutback = 16;
    static constexpr std::size_t kBlock = 64UL * 1024;

    int_type underflow() override;

    std::unique_ptr<HttpBody> m_body;
    UnicodeString m_contentType;
    UnicodeString m_errorMessage;
    std::unique_ptr<char[]> m_buffer;
};

/// Reads an address to its end, which also is where its connection was lost. Cannot seek; up to 16
/// bytes can be put back.
class ZRUriStream final : public std::istream {
public:
    explicit ZRUriStream(const UnicodeString& uri) : std::istream(nullptr), m_buffer(uri) {
        init(&m_buffer);
    }

    const ZRUriStreamBuf& buffer() const { return m_buffer; }

private:
    ZRUriStreamBuf m_buffer;
};

}  // namespace ZroCommon::internal
