#include "tools/zro/PackageInput.h"

#include "zro/foundation/ZRResourceLimits.h"

#include "tools/zro/Opening.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRZipEntry;
using ZroCommon::ZRZipFileEntry;

constexpr unsigned kEncrypted = 1;
constexpr unsigned kSizesBehindData = 8;

std::uint32_t signatureBehind(std::istream& package, const ZRZipFileEntry& entry) {
    return signatureAt(package, entry.getDataPosition() + entry.getCompressedSize());
}

// Why the data do not come out as they were packed in; empty when they do.
std::string reasonNotUnpacked(const ZRZipFileEntry& entry) {
    if ((entry.getFlags() & kEncrypted) != 0) {
        return "is encrypted, which is not undone";
    }
    const auto method = entry.getCompressionMethod();
    return method == ZroCommon::CMETHOD_STORED || method == ZroCommon::CMETHOD_DEFLATE
               ? ""
               : "is packed by " + methodName(entry) + ", which is not undone";
}

// Behind an entry without data stands its descriptor, if it has one, and else the directory.
bool isEmpty(std::istream& package, const ZRZipFileEntry& entry) {
    const std::uint32_t signature = signatureBehind(package, entry);
    return signature == ZRZipEntry::kDescriptorSignature
           || (signature == ZRZipEntry::kDirectorySignature && entry.getCrc32() == 0);
}

// Some writers leave noughts where they have descriptors.
bool isChecked(const ZRZipFileEntry& entry) {
    return (entry.getFlags() & kSizesBehindData) == 0 || entry.getCrc32() != 0;
}

// The library reads on to the limit; one entry more shows that there are such.
bool isCutByLimit(const PackageInput& input) {
    const unsigned most = ZroCommon::ZRResourceLimits::getCurrent().packageEntries;
    return most != 0 && input.entries() == most
           && signatureBehind(*input.stream, input.entry(most - 1))
                  == ZRZipEntry::kLocalHeaderSignature;
}

}  // namespace

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
    if (isCutByLimit(result)) {
        session.fail(input.shownName(),
                     "is cut by --limits behind " + counted(result.entries(), "entry", "entries"));
    }
    return result;
}

bool isSizeBehindData(const ZRZipFileEntry& entry) {
    return (entry.getFlags() & kSizesBehindData) != 0 && entry.getCompressedSize() == 0;
}

std::string faultOfData(std::istream& package, const ZRZipFileEntry& entry, const Checksum& given) {
    if (isSizeBehindData(entry) && !isEmpty(package, entry)) {
        return "has its size only behind its data: zro zip why tells";
    }
    if (std::string reason = reasonNotUnpacked(entry); !reason.empty()) {
        return reason;
    }
    if (entry.getCompressedSize() == kInZip64Field) {
        return given.crc32() == entry.getCrc32()
                   ? ""
                   : "has its size only in a ZIP64 field, which is not read";
    }
    if (entry.getUncompressedSize() == kInZip64Field) {
        return wrongCrc32(given, entry.getCrc32());
    }
    const bool isStored = entry.getCompressionMethod() == ZroCommon::CMETHOD_STORED;
    const std::uint64_t size =
        isChecked(entry) || !isStored ? entry.getUncompressedSize() : entry.getCompressedSize();
    if (given.size() < size) {
        return damagedBehind(given.size(), size);
    }
    if (!isChecked(entry)) {
        return "";
    }
    return given.size() > size ? "is damaged: it has " + counted(given.size(), "byte") + ", and "
                                     + withThousands(size) + " by its header"
                               : wrongCrc32(given, entry.getCrc32());
}

std::uint32_t signatureAt(std::istream& package, std::int64_t position) {
    package.clear();
    package.seekg(position);
    return ZRZipEntry::getSignature(package);
}

std::string methodName(const ZroCommon::ZRZipFileEntry& entry) {
    switch (entry.getCompressionMethod()) {
    case ZroCommon::CMETHOD_STORED: return "stored";
    case ZroCommon::CMETHOD_DEFLATE: return "deflate";
    }
    return "method " + std::to_string(entry.getCompressionMethod());
}

}  // namespace zro
