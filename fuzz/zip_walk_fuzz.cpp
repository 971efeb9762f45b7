// Any bytes as a ZIP package: the walk over a stream that can seek and the search in one that
// cannot must find the same, and no entry holds more than the file has.
#include <cstddef>
#include <cstdint>
#include <istream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>

#include "tests/support/Streams.h"
#include "zro/containers/zip/ZRZipFile.h"
#include "zro/containers/zip/internal/EntrySearch.h"
#include "zro/streams/ZRMemStream.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::ZRMemStream;
using ZroCommon::ZRZipFile;
using ZroCommon::ZRZipFileEntry;
using ZroCommon::fuzzing::require;

constexpr std::size_t kEnough = 1U << 20U;  // of what an entry expands to

std::string startOf(std::istream& stream) {
    std::string bytes(kEnough, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

void askEntry(ZRZipFileEntry& entry, const std::string& bytes) {
    require(startOf(*entry.getCompressedStream(false)).size() <= bytes.size());
    const std::string data = startOf(*entry.getUncompressedStream(false));
    const std::unique_ptr<std::istream> again(entry.getUncompressedStream(true));
    require(startOf(*again) == data);
}

// The way of URIs: forward only, and into nothing that begins with a data descriptor.
void searchForward(ZRZipFileEntry& entry, bool isZip, const std::string& bytes) {
    ZroCommon::testing::ShortReadBuf forward(bytes, 7);
    std::istream stream(&forward);
    const auto found = ZroCommon::internal::openFirstEntry(stream, entry.getFileName());
    require((found != nullptr) == isZip);
    require(!isZip || startOf(*found) == startOf(*entry.getUncompressedStream(false)));
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::istringstream stream(bytes);
    const bool isZip = ZRZipFile::isZipFile(&stream);
    const ZRZipFile package(&stream, false);
    require(isZip || package.getFileEntryCount() == 0 || bytes.starts_with("PK\7\10"));
    constexpr unsigned kEntries = 16;
    for (unsigned i = 0; i < package.getFileEntryCount() && i < kEntries; ++i) {
        ZRZipFileEntry& entry = *package.getFileEntry(i);
        askEntry(entry, bytes);
        if (package.getFileEntry(entry.getFileName()) == &entry) {
            searchForward(entry, isZip, bytes);
        }
    }
    require(package.getFileEntry(package.getFileEntryCount()) == nullptr);
    ZRMemStream memory;
    memory.append(bytes);
    require(ZRZipFile(&memory, false).getFileEntryCount() == package.getFileEntryCount());
    return 0;
}
