#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The body of an answer, taken from the network as it is read.
class HttpBody {
public:
    HttpBody() = default;
    HttpBody(const HttpBody&) = delete;
    HttpBody& operator=(const HttpBody&) = delete;
    /// Closes the connection.
    virtual ~HttpBody() = default;

    /// The next bytes, as soon as there are any. \param size  at least 1
    /// \return how many came; 0 at the end, and where the connection was lost
    virtual std::size_t read(char* buffer, std::size_t size) = 0;
};

/// Why a request has no answer, in the numbers that error texts show.
enum class HttpError : std::uint16_t {
    None = 0,
    TimeOut = 12002,
    Internal = 12004,
    BadUrl = 12005,
    UnknownScheme = 12006,
    NameNotResolved = 12007,
    CannotConnect = 12029,
    ConnectionAborted = 12030,
    ConnectionReset = 12031,
    HeaderNotFound = 12150,
    InvalidResponse = 12152,
    RedirectFailed = 12156,
    SecureChannel = 12157,
    BadCertificate = 12175,
};

/// What came of a request: a status with its body, or the step that failed.
struct HttpAnswer {
    enum class Step : unsigned char {
        Done,     ///< `status` and `body` are set
        Session,  ///< there is no HTTP client
        Address,  ///< nothing came from the address
        Status,   ///< what came has no status
    };
    Step failed = Step::Done;
    HttpError error = HttpError::None;

    int status = 0;
    /// As the server gave it; empty when it gave none, or one of 256 bytes and more.
    std::string contentType;
    std::unique_ptr<HttpBody> body;
};

/// Sends a GET request and waits for the first bytes of the body, or its end. Redirects are
/// followed, connecting takes 5 seconds at most, and the answer all the time it needs.
///
/// Only "http" and "https" are asked for, behind a redirect too. From any thread.
/// \throws std::bad_alloc
HttpAnswer requestHttp(const UnicodeString& uri);

/// For tests: a file of certificates to trust in place of the system's; empty for the system's.
void setHttpCertificates(const std::string& fileName);

}  // namespace ZroCommon::internal
