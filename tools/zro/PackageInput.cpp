#include "tools/zro/PackageInput.h"

#include "tools/zro/Opening.h"

namespace zro {

std::optional<PackageInput> openPackage(Session& session, const std::string& name) {
    const Input input(name);
    PackageInput result{openSeekableInput(session, input), {}};
    if (result.stream == nullptr) {
        return std::nullopt;
    }
    if (!ZroCommon::ZRZipFile::isZipFile(result.stream.get())) {
        session.fail(input.shownName(), "is no ZIP package");
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
