#include "zro/platform/http/internal/HttpUrl.h"

#include <string_view>

namespace ZroCommon::internal {
namespace {

bool isHttp(std::string_view uri) {
    constexpr std::string_view kScheme = "https";
    const std::string_view scheme = uri.substr(0, uri.find(':'));
    if (scheme.size() == uri.size() || (scheme.size() != 4 && scheme.size() != 5)) {
        return false;
    }
    for (std::size_t i = 0; i < scheme.size(); ++i) {
        if ((scheme[i] | 0x20) != kScheme[i]) {
            return false;
        }
    }
    return true;
}

bool mustEscape(char byte) {
    constexpr std::string_view kForbidden = "\"<>\\^`{|}";
    return byte <= ' ' || byte > '~' || kForbidden.find(byte) != std::string_view::npos;
}

}  // namespace

std::optional<std::string> httpUrlOf(const UnicodeString& uri) {
    std::string bytes;
    uri.toUTF8String(bytes);
    if (!isHttp(bytes)) {
        return std::nullopt;
    }
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string url;
    for (const char byte : std::string_view(bytes).substr(0, bytes.find('#'))) {
        if (!mustEscape(byte)) {
            url += byte;
            continue;
        }
        const auto number = static_cast<unsigned char>(byte);
        url += '%';
        url += kDigits[number >> 4U];
        url += kDigits[number & 0xFU];
    }
    return url;
}

}  // namespace ZroCommon::internal
