#include "tools/zro/Opening.h"

#include <filesystem>
#include <sstream>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "zro/containers/zip/ZRZipFile.h"
#include "zro/streams/ZRMemStream.h"
#include "zro/text/ZRUtil.h"
#include "zro/uri/ZRDataUri.h"

#include "tools/zro/NetworkError.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::URISTR_PATH_OR_URI_CSS;
using ZroCommon::ZRDataUri;
using ZroCommon::ZRMemStream;
using ZroCommon::ZRUri;
using ZroCommon::ZRZipFile;

constexpr const char* kNoName = "the name is empty";

std::string reasonOfFile(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (error == std::errc::permission_denied) {
        return "permission denied";  // on the way to it
    }
    if (!std::filesystem::exists(status)) {
        return "no such file";
    }
    if (std::filesystem::is_directory(status)) {
        return "is a directory";
    }
    return access(path.c_str(), R_OK) == 0 ? "cannot be read" : "permission denied";
}

bool isPackage(std::unique_ptr<std::istream> stream) {
    ZRMemStream seekable(stream.get(), ZroCommon::ZRMemStreamBuf::kDefaultGrowBytes, false);
    return ZRZipFile::isZipFile(&seekable);
}

std::string reasonOfResource(const UnicodeString& uri, const UnicodeString& fromLibrary) {
    if (!fromLibrary.isEmpty()) {
        return explainedNumber(printable(fromLibrary));
    }
    if (ZRUri(uri, URISTR_PATH_OR_URI_CSS).isDataScheme() && uri.indexOf(u',') < 0) {
        return "a data: URI needs a comma";
    }
    if (!isSchemeOpened(uri)) {
        return "neither http: nor https:";
    }
    if (uri.isEmpty()) {
        return kNoName;
    }
    const std::string path = localPath(uri);
    return path.empty() ? "nothing is there" : reasonOfFile(path);
}

// Each "!/" is a step into a package; the last one leads to the entry.
std::string reasonInPackage(Session& session, const UnicodeString& uri) {
    const UnicodeString separator(u"!/");
    const int32_t first = uri.indexOf(separator);
    const UnicodeString outer = withoutJar(UnicodeString(uri, 0, first));
    std::string name = shownPath(outer);
    for (int32_t end = first; end >= 0;) {
        auto stream = session.openFreely(UnicodeString(uri, 0, end));
        if (stream == nullptr) {
            return end == first ? name + ": " + reasonOfResource(outer, session.failure())
                                : "no such entry: " + name;
        }
        if (!isPackage(std::move(stream))) {
            return name + ": is no ZIP package";
        }
        const int32_t start = end + separator.length();
        end = uri.indexOf(separator, start);
        name = printable(UnicodeString(uri, start, end < 0 ? uri.length() - start : end - start));
    }
    return "no such entry: " + name;
}

// Null when it is no such URI.
std::unique_ptr<std::istream> openData(const UnicodeString& text) {
    const ZRDataUri uri(text, URISTR_PATH_OR_URI_CSS);
    if (uri.getDataPos() < 0) {
        return nullptr;
    }
    const UnicodeString data(uri.toString(), uri.getDataPos());
    if (!uri.isBase64()) {
        return std::make_unique<std::istringstream>(toUtf8(data));
    }
    auto stream = std::make_unique<std::stringstream>();
    ZroCommon::ZRUtil::decodeBase64(data.getBuffer(), data.length(), *stream);
    return stream;
}

bool isData(const Input& input) {
    return ZRUri(input.uri(), URISTR_PATH_OR_URI_CSS).isDataScheme();
}

}  // namespace

bool isSchemeOpened(const UnicodeString& uri) {
    const ZRUri inner(withoutJar(uri), URISTR_PATH_OR_URI_CSS);
    const UnicodeString scheme = inner.getScheme().toLower();
    return inner.isFile() || scheme == u"http" || scheme == u"https";
}

std::string reasonNotOpened(Session& session, const UnicodeString& uri,
                            const UnicodeString& fromLibrary) {
    const ZRUri parsed(uri, URISTR_PATH_OR_URI_CSS);
    return parsed.isJarScheme() && parsed.toString().indexOf(u"!/") >= 0
               ? reasonInPackage(session, parsed.toString())
               : reasonOfResource(withoutJar(parsed.toString()), fromLibrary);
}

std::string reasonNotWritten(const std::string& path) {
    if (path.empty()) {
        return kNoName;
    }
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        return "is a directory";
    }
    const auto folder = std::filesystem::path(path).parent_path();
    if (!folder.empty() && !std::filesystem::is_directory(folder, error)
        && error != std::errc::permission_denied) {
        return "no such directory: " + printable(fromUtf8(folder.string()));
    }
    return access(path.c_str(), W_OK) == 0 ? "cannot be written" : "permission denied";
}

std::unique_ptr<std::istream> openInput(Session& session, const Input& input) {
    const bool isInline = isData(input);
    auto stream = isInline ? openData(input.uri()) : session.open(input);
    if (stream != nullptr) {
        return stream;
    }
    session.end(input);
    session.fail(input.shownName(),
                 input.isStandardInput()
                     ? session.standardInputFailure()
                     : reasonNotOpened(session, input.uri(),
                                       isInline ? UnicodeString() : session.failure()));
    return nullptr;
}

std::unique_ptr<std::istream> openSeekableInput(Session& session, const Input& input) {
    if (!input.isStandardInput()) {
        auto direct = session.reopen(input);
        if (direct != nullptr && direct->tellg() >= 0) {
            return direct;
        }
    }
    return seekable(openInput(session, input), 0);
}

std::unique_ptr<std::istream> seekable(std::unique_ptr<std::istream> stream, std::size_t most) {
    if (stream == nullptr || stream->tellg() >= 0) {
        return stream;
    }
    stream->clear();
    auto held = std::make_unique<ZRMemStream>(stream.release(),
                                              ZroCommon::ZRMemStreamBuf::kDefaultGrowBytes, true);
    held->setHeldLimit(most);
    return held;
}

}  // namespace zro
