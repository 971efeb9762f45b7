#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "zro/foundation/ZRResourceLimits.h"
#include "zro/platform/http/internal/CurlLibrary.h"
#include "zro/platform/http/internal/Http.h"

namespace ZroCommon::internal {

/// One GET request and the body of its answer. Of the body no more is held than one round of the
/// network gives: when nobody reads, the server waits.
class CurlTransfer final : public HttpBody {
public:
    explicit CurlTransfer(const CurlLibrary& curl);
    ~CurlTransfer() override;

    /// \param certificates  a file to trust in place of the system's, or empty
    /// \return false without memory for it
    bool start(const std::string& url, const std::string& certificates);
    /// Runs until bytes of the body are here or the transfer has ended.
    void waitForBody();
    std::size_t read(char* buffer, std::size_t size) override;

    /// Why there is no answer; `None` also when its body broke off.
    HttpError error() const;
    int status() const;
    /// Of the answer that the body belongs to; empty when it has none, or one above 255 bytes.
    const std::string& contentType() const { return m_contentType; }

private:
    template <typename Value>
    bool set(CURLoption option, Value value) {
        return m_curl.easySetopt(m_easy, option, value) == CURLE_OK;
    }
    bool setHeaders();
    bool setTransfer(const std::string& url, const std::string& certificates);
    bool setCallbacks();
    bool setLimits();
    bool isCancelled() const;
    bool hasPending() const { return m_at < m_pending.size(); }
    void runOnce();
    void takeResult();
    bool noteHeader(std::string_view line);
    void noteContentType(std::string_view value);
    std::size_t noteBody(const char* data, std::size_t size);

    static std::size_t onHeader(char* data, std::size_t unit, std::size_t count, void* self);
    static std::size_t onBody(char* data, std::size_t unit, std::size_t count, void* self);

    const CurlLibrary& m_curl;
    const ZRResourceLimits m_limits = ZRResourceLimits::getCurrent();
    std::uint64_t m_received = 0;
    CURL* m_easy = nullptr;
    CURLM* m_multi = nullptr;
    curl_slist* m_headers = nullptr;

    std::vector<char> m_pending;  // came, and is not read yet
    std::size_t m_at = 0;
    bool m_isPaused = false;
    bool m_isOutOfMemory = false;

    bool m_isDone = false;
    CURLcode m_result = CURLE_OK;
    bool m_sawStatus = false;  // any status line came
    bool m_isInHeader = false;
    bool m_isRedirect = false;     // the last header says where to go on
    bool m_isFinalHeader = false;  // the last header is whole, and no other follows
    int m_headerStatus = 0;
    std::string m_contentType;
};

}  // namespace ZroCommon::internal
