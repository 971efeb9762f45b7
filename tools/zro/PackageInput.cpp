#include "tools/zro/PackageInput.h"

#include <array>
#include <filesystem>
#include <system_error>
#include <utility>

#include "zro/streams/ZRMemStream.h"
#include "zro/uri/ZRUri.h"

#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRMemStream;
using ZroCommon::ZRUri;
using ZroCommon::ZRZipFile;

void complain(Session& session, const Input& input, const std::string& message) {
    Diagnostic diagnostic;
    diagnostic.file = input.shownName();
    diagnostic.message = message;
    session.report(diagnostic);
}

// Why the library has opened nothing.
std::string reasonOf(const Input& input, const UnicodeString& fromLibrary) {
    std::error_code ignored;
    if (!fromLibrary.isEmpty()) {
        return toUtf8(fromLibrary);
    }
    if (input.path().empty()) {
        return "there is no such package or entry";
    }
    if (std::filesystem::is_directory(input.path(), ignored)) {
        return "is a directory";
    }
    return std::filesystem::exists(input.path(), ignored) ? "cannot be read" : "no such file";
}

std::unique_ptr<std::istream> openStream(Session& session, const Input& input) {
    if (input.isStandardInput()) {
        return std::make_unique<ZRMemStream>(&session.standardInput());
    }
    std::unique_ptr<std::istream> stream = session.reopen(input);
    if (stream == nullptr) {
        UnicodeString error;
        session.begin(input);
        stream.reset(
            ZRUri(input.uri(), ZroCommon::URISTR_PATH_OR_URI_CSS).getStream(nullptr, &error));
        session.end(input);
        if (stream == nullptr) {
            complain(session, input, reasonOf(input, error));
            return nullptr;
        }
    }
    if (stream->tellg() >= 0) {
        return stream;
    }
    stream->clear();
    return std::make_unique<ZRMemStream>(stream.release(),
                                         ZroCommon::ZRMemStreamBuf::kDefaultGrowBytes, true);
}

}  // namespace

std::optional<PackageInput> openPackage(Session& session, const std::string& name) {
    const Input input(name);
    PackageInput result{openStream(session, input), {}};
    if (result.stream == nullptr) {
        return std::nullopt;
    }
    if (!ZRZipFile::isZipFile(result.stream.get())) {
        complain(session, input, "is no ZIP package");
        return std::nullopt;
    }
    result.package.open(result.stream.get(), false);
    return result;
}

std::string methodName(const ZroCommon::ZRZipFileEntry& entry) {
    switch (entry.getCompressionMethod()) {
    case ZroCommon::CMETHOD_STORED: return "stored";
    case ZroCommon::CMETHOD_DEFLATE: return "deflate";
    }
    return "method " + std::to_string(entry.getCompressionMethod());
}

}  // namespace zro
