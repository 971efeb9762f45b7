#include "zro/uri/internal/UriStream.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

namespace ZroCommon::internal {
namespace {

UnicodeString stepText(const char* step, HttpError error) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s: %04X", step, static_cast<unsigned>(error));
    return UnicodeString::fromUTF8(text.data());
}

// Empty when the answer is one to read.
UnicodeString messageOf(const HttpAnswer& answer) {
    using Step = HttpAnswer::Step;
    switch (answer.failed) {
    case Step::Session: return stepText("Cannot access the Internet", answer.error);
    case Step::Address: return stepText("Cannot open URL", answer.error);
    case Step::Status: return stepText("Cannot get HTTP status", answer.error);
    case Step::Done: break;
    }
    if (answer.status >= 200 && answer.status <= 299) {
        return {};
    }
    return UnicodeString::fromUTF8("HTTP status is " + std::to_string(answer.status));
}

UnicodeString mediaTypeOf(const std::string& contentType) {
    return UnicodeString::fromUTF8(contentType.substr(0, contentType.find(';'))).trim();
}

}  // namespace

ZRUriStreamBuf::ZRUriStreamBuf(const UnicodeString& uri) {
    HttpAnswer answer = requestHttp(uri);
    m_errorMessage = messageOf(answer);
    if (!m_errorMessage.isEmpty()) {
        return;
    }
    m_contentType = mediaTypeOf(answer.contentType);
    m_buffer = std::make_unique_for_overwrite<char[]>(kPutback + kBlock);
    m_body = std::move(answer.body);
}

ZRUriStreamBuf::int_type ZRUriStreamBuf::underflow() {
    if (!isOpen()) {
        return traits_type::eof();
    }
    if (gptr() == egptr()) {
        const std::size_t kept = std::min(kPutback, static_cast<std::size_t>(gptr() - eback()));
        char* const start = m_buffer.get();
        std::copy(gptr() - kept, gptr(), start);
        char* const fresh = start + kept;
        setg(start, fresh, fresh + m_body->read(fresh, kBlock));
    }
    return gptr() < egptr() ? traits_type::to_int_type(*gptr()) : traits_type::eof();
}

}  // namespace ZroCommon::internal
