#pragma once

#include <istream>
#include <memory>
#include <optional>
#include <string>

#include "zro/containers/zip/ZRZipFile.h"

#include "tools/zro/Checksum.h"
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

/// The size of entries whose size has no room in the header. The library does not read their field.
constexpr std::uint32_t kInZip64Field = 0xFFFFFFFF;

/// Whether the size of an entry stands only behind its data. Then it reads as empty, and if it is
/// not, nothing behind it is found.
bool isSizeBehindData(const ZroCommon::ZRZipFileEntry& entry);

/// What is wrong with the data of an entry by its size and CRC-32 in the header, as in "is damaged
/// behind byte 7 of 9". Empty when nothing is known to be.
/// \param given  the data as the library expands it
std::string faultOfData(std::istream& package, const ZroCommon::ZRZipFileEntry& entry,
                        const Checksum& given);

/// The signature of the record at a place; 0 where there is none.
std::uint32_t signatureAt(std::istream& package, std::int64_t position);

/// "deflate", "stored", or the number of another method.
std::string methodName(const ZroCommon::ZRZipFileEntry& entry);

}  // namespace zro
