#pragma once

#include <istream>
#include <memory>
#include <optional>
#include <string>

#include "zro/containers/zip/ZRZipFile.h"

#include "tools/zro/Session.h"

namespace zro {

/// A ZIP package named on the command line, and its entries.
struct PackageInput {
    std::unique_ptr<std::istream> stream;  ///< can seek
    ZroCommon::ZRZipFile package;

    unsigned entries() const { return package.getFileEntryCount(); }
    ZroCommon::ZRZipFileEntry& entry(unsigned index) const { return *package.getFileEntry(index); }
};

/// Opens a package. None, and an error that says why, when there is none.
std::optional<PackageInput> openPackage(Session& session, const std::string& name);

/// "deflate", "stored", or the number of another method.
std::string methodName(const ZroCommon::ZRZipFileEntry& entry);

}  // namespace zro
