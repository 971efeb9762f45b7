// HTTP by libcurl.
#include <mutex>

#include "zro/platform/http/internal/CurlTransfer.h"
#include "zro/platform/http/internal/Http.h"
#include "zro/platform/http/internal/HttpUrl.h"

namespace ZroCommon::internal {
namespace {

std::mutex s_certificatesLock;
std::string& certificatesFile() {
    static std::string s_fileName;
    return s_fileName;
}

std::string certificates() {
    const std::lock_guard guard(s_certificatesLock);
    return certificatesFile();
}

HttpAnswer failure(HttpAnswer::Step step, HttpError error) {
    HttpAnswer answer;
    answer.failed = step;
    answer.error = error;
    return answer;
}

}  // namespace

HttpAnswer requestHttp(const UnicodeString& uri) {
    using Step = HttpAnswer::Step;
    const CurlLibrary* curl = CurlLibrary::get();
    if (curl == nullptr) {
        return failure(Step::Session, HttpError::Internal);
    }
    const auto url = httpUrlOf(uri);
    if (!url) {
        return failure(Step::Address, HttpError::UnknownScheme);
    }
    auto transfer = std::make_unique<CurlTransfer>(*curl);
    if (!transfer->start(*url, certificates())) {
        return failure(Step::Address, HttpError::Internal);
    }
    transfer->waitForBody();
    if (const HttpError error = transfer->error(); error != HttpError::None) {
        return failure(Step::Address, error);
    }
    HttpAnswer answer;
    answer.status = transfer->status();
    if (answer.status == 0) {
        return failure(Step::Status, HttpError::HeaderNotFound);
    }
    answer.contentType = transfer->contentType();
    answer.body = std::move(transfer);
    return answer;
}

void setHttpCertificates(const std::string& fileName) {
    const std::lock_guard guard(s_certificatesLock);
    certificatesFile() = fileName;
}

}  // namespace ZroCommon::internal
