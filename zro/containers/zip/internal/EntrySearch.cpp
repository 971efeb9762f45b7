#include "zro/containers/zip/internal/EntrySearch.h"

#include <array>
#include <cstdint>

#include "zro/containers/zip/ZRZipEntry.h"
#include "zro/containers/zip/internal/LocalHeader.h"
#include "zro/containers/zip/internal/PackageReader.h"
#include "zro/foundation/ZRResourceLimits.h"
#include "zro/streams/ZRStrStream.h"
#include "zro/streams/compression/ZRInflaterStream.h"

namespace ZroCommon::internal {
namespace {

constexpr std::uint64_t kDescriptorFields = 12;  // what stands behind its signature

std::uint32_t readSignature(PackageReader& reader) {
    std::array<char, 4> bytes{};
    return FieldReader(bytes.data(), reader.read(bytes.data(), bytes.size())).at32(0);
}

std::unique_ptr<std::istream> openData(PackageReader& reader, const LocalHeader& header) {
    StoredBytes stored;
    if (reader.skip(header.extraLength)) {
        stored = readStored(reader, header.compressedSize);
    }
    if (header.method == CMETHOD_DEFLATE) {
        return std::make_unique<ZRInflaterStream>(stored.bytes.get(), stored.size, true);
    }
    return std::make_unique<ZRStrStream>(stored.bytes.get(), stored.size, true);
}

}  // namespace

std::unique_ptr<std::istream> openFirstEntry(std::istream& package, const UnicodeString& name) {
    PackageReader reader(package);
    const std::uint32_t most = ZRResourceLimits::getCurrent().packageEntries;
    std::uint32_t entries = 0;
    for (bool isFirst = true;; isFirst = false) {
        const std::uint32_t signature = readSignature(reader);
        std::uint64_t ahead = kDescriptorFields;
        if (signature == ZRZipEntry::kLocalHeaderSignature) {
            if (most != 0 && entries++ == most) {
                return nullptr;
            }
            const LocalHeader header = LocalHeader::read(reader);
            if (header.fileName == name) {
                return openData(reader, header);
            }
            ahead = std::uint64_t{header.extraLength} + header.compressedSize;
        } else if (isFirst || signature != ZRZipEntry::kDescriptorSignature) {
            return nullptr;
        }
        if (!reader.skip(ahead)) {
            return nullptr;
        }
    }
}

}  // namespace ZroCommon::internal
