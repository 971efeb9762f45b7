// HTTP for builds without a client.
#include "zro/platform/http/internal/Http.h"

namespace ZroCommon::internal {

HttpAnswer requestHttp(const UnicodeString& /*uri*/) {
    HttpAnswer answer;
    answer.failed = HttpAnswer::Step::Session;
    answer.error = HttpError::Internal;
    return answer;
}

void setHttpCertificates(const std::string& /*fileName*/) {}

}  // namespace ZroCommon::internal
