#include "zro/platform/http/internal/CurlTransfer.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <new>

#include "zro/platform/internal/SigpipeGuard.h"

// libcurl's headers put macros that check types over these names.
#undef curl_easy_setopt
#undef curl_easy_getinfo

namespace ZroCommon::internal {
namespace {

constexpr const char* kAgent = "Quorrel V4.3 MR2c for Windows (x64) (4,3,2008,0805)";
constexpr long kConnectMilliseconds = 5000;
constexpr long kMostRedirects = 30;
constexpr long kBlock = 256L * 1024;
constexpr std::size_t kMostPending = 256UL * 1024;
constexpr std::size_t kMostContentType = 255;
constexpr std::string_view kTypeHeader = "content-type:";
constexpr std::string_view kBlanks = " \t\r\n";
constexpr int kPollMilliseconds = 1000;
constexpr int kCancelMilliseconds = 100;  // how late a cancellation may be met

char asciiLower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte | 0x20) : byte;
}

bool startsWith(std::string_view line, std::string_view lowerCase) {
    return line.size() >= lowerCase.size()
           && std::equal(lowerCase.begin(), lowerCase.end(), line.begin(),
                         [](char low, char byte) { return low == asciiLower(byte); });
}

// "HTTP/1.1 200 OK" has 200, and 0 is for anything else.
int statusOf(std::string_view line) {
    const std::size_t blank = line.find(' ');
    int status = 0;
    if (blank != std::string_view::npos) {
        std::from_chars(line.data() + blank + 1, line.data() + line.size(), status);
    }
    return status;
}

// Where a "Location" counts; libcurl would follow others too.
bool isRedirect(int status) {
    return (status >= 301 && status <= 303) || status == 307 || status == 308;
}

HttpError errorOf(CURLcode code) {
    switch (code) {
    case CURLE_UNSUPPORTED_PROTOCOL: return HttpError::UnknownScheme;
    case CURLE_URL_MALFORMAT: return HttpError::BadUrl;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY: return HttpError::NameNotResolved;
    case CURLE_COULDNT_CONNECT: return HttpError::CannotConnect;
    case CURLE_OPERATION_TIMEDOUT: return HttpError::TimeOut;
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR: return HttpError::ConnectionAborted;
    case CURLE_WEIRD_SERVER_REPLY: return HttpError::InvalidResponse;
    case CURLE_TOO_MANY_REDIRECTS: return HttpError::RedirectFailed;
    case CURLE_SSL_CONNECT_ERROR: return HttpError::SecureChannel;
    case CURLE_PEER_FAILED_VERIFICATION: return HttpError::BadCertificate;
    default: return HttpError::Internal;
    }
}

}  // namespace

CurlTransfer::CurlTransfer(const CurlLibrary& curl) : m_curl(curl) {
    m_contentType.reserve(kMostContentType);  // libcurl lets no exception through
}

CurlTransfer::~CurlTransfer() {
    const SigpipeGuard guard;
    if (m_multi != nullptr && m_easy != nullptr) {
        m_curl.multiRemoveHandle(m_multi, m_easy);
    }
    if (m_easy != nullptr) {
        m_curl.easyCleanup(m_easy);
    }
    if (m_multi != nullptr) {
        m_curl.multiCleanup(m_multi);
    }
    m_curl.slistFreeAll(m_headers);
}

bool CurlTransfer::start(const std::string& url, const std::string& certificates) {
    m_easy = m_curl.easyInit();
    m_multi = m_curl.multiInit();
    return m_easy != nullptr && m_multi != nullptr && setHeaders() && setTransfer(url, certificates)
           && setCallbacks() && setLimits() && m_curl.multiAddHandle(m_multi, m_easy) == CURLM_OK;
}

bool CurlTransfer::setHeaders() {
    for (const char* line : {"Accept: */*", "Cache-Control: no-cache", "Pragma: no-cache"}) {
        curl_slist* const longer = m_curl.slistAppend(m_headers, line);
        if (longer == nullptr) {
            return false;
        }
        m_headers = longer;
    }
    return set(CURLOPT_HTTPHEADER, m_headers);
}

// The body comes as it is sent: no encoding is asked for, so none is undone.
bool CurlTransfer::setTransfer(const std::string& url, const std::string& certificates) {
    return set(CURLOPT_URL, url.c_str()) && set(CURLOPT_PROTOCOLS_STR, "http,https")
           && set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https") && set(CURLOPT_FOLLOWLOCATION, 1L)
           && set(CURLOPT_MAXREDIRS, kMostRedirects) && set(CURLOPT_USERAGENT, kAgent)
           && set(CURLOPT_CONNECTTIMEOUT_MS, kConnectMilliseconds) && set(CURLOPT_NOSIGNAL, 1L)
           && set(CURLOPT_BUFFERSIZE, kBlock) && set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L)
           && (certificates.empty() || set(CURLOPT_CAINFO, certificates.c_str()));
}

bool CurlTransfer::setCallbacks() {
    return set(CURLOPT_HEADERFUNCTION, &CurlTransfer::onHeader) && set(CURLOPT_HEADERDATA, this)
           && set(CURLOPT_WRITEFUNCTION, &CurlTransfer::onBody) && set(CURLOPT_WRITEDATA, this);
}

bool CurlTransfer::setLimits() {
    constexpr long kOneByte = 1;
    return set(CURLOPT_TIMEOUT, static_cast<long>(m_limits.fetchSeconds))
           && (m_limits.idleSeconds == 0
               || (set(CURLOPT_LOW_SPEED_LIMIT, kOneByte)
                   && set(CURLOPT_LOW_SPEED_TIME, static_cast<long>(m_limits.idleSeconds))));
}

bool CurlTransfer::isCancelled() const {
    return m_limits.cancelFlag != nullptr && *m_limits.cancelFlag;
}

void CurlTransfer::waitForBody() {
    while (!hasPending() && !m_isDone) {
        if (isCancelled()) {
            m_result = CURLE_ABORTED_BY_CALLBACK;
            m_isDone = true;
            break;
        }
        runOnce();
    }
    if (m_isOutOfMemory) {
        throw std::bad_alloc();
    }
}

void CurlTransfer::runOnce() {
    const SigpipeGuard guard;
    if (m_isPaused) {
        m_isPaused = false;
        m_curl.easyPause(m_easy, CURLPAUSE_CONT);
    }
    int running = 0;
    if (m_curl.multiPerform(m_multi, &running) != CURLM_OK) {
        m_result = CURLE_FAILED_INIT;
        m_isDone = true;
    } else if (running == 0) {
        takeResult();
    } else if (!hasPending()) {
        m_curl.multiPoll(m_multi, nullptr, 0,
                         m_limits.cancelFlag == nullptr ? kPollMilliseconds : kCancelMilliseconds,
                         nullptr);
    }
}

void CurlTransfer::takeResult() {
    m_isDone = true;
    int left = 0;
    while (const CURLMsg* message = m_curl.multiInfoRead(m_multi, &left)) {
        if (message->msg == CURLMSG_DONE) {
            m_result = message->data.result;
        }
    }
}

std::size_t CurlTransfer::read(char* buffer, std::size_t size) {
    waitForBody();
    const std::size_t count = std::min(size, m_pending.size() - m_at);
    std::copy_n(m_pending.data() + m_at, count, buffer);
    m_at += count;
    if (!hasPending()) {
        m_pending.clear();
        m_at = 0;
    }
    return count;
}

HttpError CurlTransfer::error() const {
    if (m_isFinalHeader) {
        return HttpError::None;
    }
    if (m_result == CURLE_OK) {
        return HttpError::ConnectionAborted;  // within the header, which libcurl lets pass
    }
    if (m_result == CURLE_UNSUPPORTED_PROTOCOL && !m_sawStatus) {
        return HttpError::InvalidResponse;  // the URL has a right scheme, the answer has no status
    }
    long cause = 0;
    m_curl.easyGetinfo(m_easy, CURLINFO_OS_ERRNO, &cause);
    return m_result == CURLE_RECV_ERROR && cause == ECONNRESET ? HttpError::ConnectionReset
                                                               : errorOf(m_result);
}

int CurlTransfer::status() const {
    long status = 0;
    m_curl.easyGetinfo(m_easy, CURLINFO_RESPONSE_CODE, &status);
    return static_cast<int>(status);
}

// Several headers may come, one for each redirect and each interim answer. What looks like header
// lines elsewhere says nothing. False when no more of the answer is wanted.
bool CurlTransfer::noteHeader(std::string_view line) {
    if (!m_isInHeader && !m_isFinalHeader && startsWith(line, "http/")) {
        m_isInHeader = true;
        m_sawStatus = true;
        m_isRedirect = false;
        m_headerStatus = statusOf(line);
        m_contentType.clear();
    } else if (!m_isInHeader) {
        return true;
    } else if (startsWith(line, kTypeHeader)) {
        noteContentType(line.substr(kTypeHeader.size()));
    } else if (isRedirect(m_headerStatus) && startsWith(line, "location:")) {
        m_isRedirect = line.find_first_not_of(kBlanks, 9) != line.npos;
    } else if (line == "\r\n" || line == "\n") {
        m_isInHeader = false;
        m_isFinalHeader = m_headerStatus >= 200 && !m_isRedirect;
        return !m_isFinalHeader || m_headerStatus / 100 == 2;
    }
    return true;
}

// The last one counts, but for empty ones.
void CurlTransfer::noteContentType(std::string_view value) {
    const std::size_t start = value.find_first_not_of(kBlanks);
    if (start != value.npos) {
        value = value.substr(start, value.find_last_not_of(kBlanks) + 1 - start);
        m_contentType = value.size() <= kMostContentType ? value : "";
    }
}

std::size_t CurlTransfer::noteBody(const char* data, std::size_t size) {
    if (m_pending.size() >= kMostPending) {
        m_isPaused = true;
        return CURL_WRITEFUNC_PAUSE;
    }
    m_received += size;
    if (m_limits.fetchedBytes != 0 && m_received > m_limits.fetchedBytes) {
        return 0;  // ends the transfer
    }
    try {
        m_pending.insert(m_pending.end(), data, data + size);
    } catch (const std::bad_alloc&) {
        m_isOutOfMemory = true;
        return 0;
    }
    return size;
}

std::size_t CurlTransfer::onHeader(char* data, std::size_t unit, std::size_t count, void* self) {
    return static_cast<CurlTransfer*>(self)->noteHeader({data, unit * count}) ? unit * count : 0;
}

std::size_t CurlTransfer::onBody(char* data, std::size_t unit, std::size_t count, void* self) {
    return static_cast<CurlTransfer*>(self)->noteBody(data, unit * count);
}

}  // namespace ZroCommon::internal
