#include "tools/zro/NetworkError.h"

#include <array>
#include <string_view>

namespace zro {
namespace {

struct Meaning {
    std::string_view number;
    std::string_view words;
};

// All the numbers that a request can end with.
constexpr std::array kMeanings = {
    Meaning{"2EE2", "no answer in time"},
    Meaning{"2EE4", "the HTTP client failed, or there is none: it is libcurl"},
    Meaning{"2EE5", "the address is malformed"},
    Meaning{"2EE6", "neither http: nor https:"},
    Meaning{"2EE7", "no host of that name is found"},
    Meaning{"2EFD", "no connection: refused, or no way there"},
    Meaning{"2EFE", "the connection ended before the answer did"},
    Meaning{"2EFF", "the connection was reset"},
    Meaning{"2F76", "the answer has no status"},
    Meaning{"2F78", "the answer is no HTTP"},
    Meaning{"2F7C", "too many redirects"},
    Meaning{"2F7D", "no secure connection could be made"},
    Meaning{"2F8F", "the certificate is not trusted"},
};

}  // namespace

std::string explainedNumber(const std::string& message) {
    for (const auto& [number, words] : kMeanings) {
        if (message.ends_with(": " + std::string(number))) {
            return message + " (" + std::string(words) + ")";
        }
    }
    return message;
}

}  // namespace zro
