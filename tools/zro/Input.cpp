#include "tools/zro/Input.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <unistd.h>
#include <utility>

#include <unicode/uchar.h>

#include "zro/uri/ZRUri.h"

#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRUri;

// A path that the text rules of `ZRUri` would change: a backslash is a separator to them, and
// blanks at the ends are not part of a name.
bool needsEscapes(const std::string& path) {
    return path.find('\\') != std::string::npos || path.back() == ' ' || path.back() == '\t';
}

std::string escapedPath(const std::string& path) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string result = "file:";
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte <= 0x20 || character == '\\' || character == '%') {
            result += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
        } else {
            result += character;
        }
    }
    return result;
}

bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

bool hasScheme(const std::string& argument) {
    return ZRUri(fromUtf8(argument), ZroCommon::URISTR_PATH_OR_URI).isAbsolute();
}

std::string absolutePath(const std::string& argument) {
    std::error_code error;
    const auto absolute = std::filesystem::absolute(argument, error);
    return error ? argument : absolute.string();
}

}  // namespace

BlockBuffer::int_type BlockBuffer::underflow() {
    const std::size_t count = readBlock(m_buffer);
    if (count == 0) {
        return traits_type::eof();
    }
    setg(m_buffer.data(), m_buffer.data(), m_buffer.data() + count);
    return traits_type::to_int_type(m_buffer.front());
}

std::size_t readReady(std::streambuf& source, std::span<char> room) {
    using Traits = std::streambuf::traits_type;
    if (Traits::eq_int_type(source.sgetc(), Traits::eof())) {
        return 0;
    }
    const auto most = static_cast<std::streamsize>(room.size());
    const auto ready = std::clamp<std::streamsize>(source.in_avail(), 1, most);
    return static_cast<std::size_t>(source.sgetn(room.data(), ready));
}

CountingBuffer::CountingBuffer(std::unique_ptr<std::istream> source,
                               std::function<void(std::uint64_t)> count)
    : m_source(std::move(source)), m_count(std::move(count)) {}

std::size_t CountingBuffer::readBlock(std::span<char> room) {
    const std::size_t count = readReady(*m_source->rdbuf(), room);
    if (count > 0) {
        m_total += count;
        m_count(m_total);
    }
    return count;
}

StandardInput::StandardInput(std::function<void(std::uint64_t)> count)
    : m_count(std::move(count)) {}

std::size_t StandardInput::readBlock(std::span<char> room) {
    ssize_t count = 0;
    do {
        count = ::read(STDIN_FILENO, room.data(), room.size());
    } while (count < 0 && errno == EINTR);
    m_error = count < 0 ? errno : 0;
    if (count <= 0) {
        return 0;
    }
    const auto size = static_cast<std::size_t>(count);
    if (m_total == m_kept.size() && m_kept.size() + size <= kKept) {
        m_kept.append(room.data(), size);
    }
    m_total += size;
    m_count(m_total);
    return size;
}

Input::Input(std::string argument)
    : m_argument(std::move(argument)), m_shownName(m_argument), m_baseUri(workingDirectory()) {
    if (isStandardInput()) {
        m_shownName = "<stdin>";
        return;
    }
    if (m_argument.empty()) {
        m_shownName = "''";
    }
    m_uri = absoluteName(m_argument);
    m_path = localPath(m_uri);
}

std::uint64_t Input::size() const {
    std::error_code error;
    const auto size = std::filesystem::file_size(m_path, error);
    return m_path.empty() || error ? 0 : size;
}

UnicodeString absoluteName(const std::string& argument) {
    if (argument.empty() || (hasScheme(argument) && !exists(argument))) {
        return fromUtf8(argument);
    }
    const std::string path = absolutePath(argument);
    return fromUtf8(needsEscapes(path) ? escapedPath(path) : path);
}

std::string localPath(const UnicodeString& uri) {
    const ZRUri parsed(uri, ZroCommon::URISTR_PATH_OR_URI);
    if (!parsed.isFile()) {
        return {};
    }
    std::string path = toUtf8(parsed.getLocalPath());
    if (path.starts_with("\\\\")) {
        std::replace(path.begin(), path.end(), '\\', '/');
        path.erase(0, 1);
    }
    return path;
}

std::string shownPath(const UnicodeString& uri) {
    const std::string path = localPath(uri);
    if (path.empty()) {
        return printable(uri);
    }
    std::error_code error;
    const std::string nearby = std::filesystem::proximate(path, error).string();
    return printable(fromUtf8(error || nearby.starts_with("..") ? path : nearby));
}

UnicodeString withoutJar(const UnicodeString& uri) {
    const UnicodeString jar(u"jar:");
    int32_t start = 0;
    while (uri.caseCompare(start, jar.length(), jar, U_FOLD_CASE_DEFAULT) == 0) {
        start += jar.length();
    }
    return {uri, start};
}

bool isLocal(const UnicodeString& uri) {
    return ZRUri(withoutJar(uri), ZroCommon::URISTR_PATH_OR_URI).isFile();
}

bool isReadableAgain(const UnicodeString& uri) {
    std::error_code error;
    const std::string path = localPath(uri);
    return path.empty() ? ZRUri(uri, ZroCommon::URISTR_PATH_OR_URI).isJarScheme()
                        : std::filesystem::is_regular_file(path, error);
}

UnicodeString workingDirectory() {
    std::error_code ignored;
    const std::string directory = std::filesystem::current_path(ignored).string();
    return fromUtf8(directory.ends_with('/') ? directory : directory + "/");
}

}  // namespace zro
