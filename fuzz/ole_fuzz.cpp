// Any bytes as a compound file: whatever the size of the pieces, a stream gives the same bytes as
// one that is read position by position, and never more than its size.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

#include "zro/containers/ole/OleCompFile.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::JZStreamIOobj;
using ZroCommon::OleCompFile;
using ZroCommon::OleDirInfo;
using ZroCommon::OleDirPath;
using ZroCommon::OleStream;
using ZroCommon::fuzzing::require;

constexpr std::size_t kEnough = 1U << 16U;  // of what a stream gives

std::string startOf(OleStream& stream, int piece) {
    std::string all;
    std::string bytes(static_cast<std::size_t>(piece), '\0');
    for (int got = piece; got == piece && all.size() < kEnough;) {
        const long before = stream.OLEtell();
        got = stream.OLEread(bytes.data(), piece);
        require(got >= 0 && got <= piece && stream.OLEtell() == before + got);
        all.append(bytes, 0, static_cast<std::size_t>(got));
    }
    return all.substr(0, kEnough);
}

// By positions and the file alone.
void requireAt(OleCompFile& file, OleStream& stream, const std::string& bytes, std::size_t at) {
    char byte = 0;
    require(stream.OLEseek(static_cast<long>(at), 0) == static_cast<long>(at));
    require(file.ReadIO(&byte, 1) == 1 && byte == bytes[at]);
}

void readStream(std::istream& source, OleCompFile& file, long index) {
    OleStream stream(&file);
    source.clear();
    if (!stream.GetStreamChain(index) || stream.OLEseek(0, 0) < 0) {
        return;
    }
    const std::string bytes = startOf(stream, 4096);
    require(stream.GetStreamSize() >= static_cast<long>(bytes.size()));
    for (std::size_t at = 0; at < bytes.size(); at += 1 + at / 2) {
        source.clear();
        requireAt(file, stream, bytes, at);
    }
    source.clear();
    require(bytes.empty() || stream.OLEseek(0, 0) == 0);
    require(bytes.empty() || startOf(stream, 37) == bytes);
    const long end = stream.OLEseek(0, 2);
    require(end == -1 || end == stream.GetStreamSize());
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream source(std::string(reinterpret_cast<const char*>(data), size));
    JZStreamIOobj io(&source);
    OleCompFile file;
    const bool isOpen = file.OLEopen(&io);
    require(isOpen == (file.getRefusal().check == ZroCommon::OleCheck::Passed));
    constexpr long kEntries = 16;
    for (long i = 0; isOpen && i < std::min(file.getDirCount(), kEntries); ++i) {
        readStream(source, file, i);
        OleDirPath path{2, {"s", "x"}};
        require(file.getDirIndex(&path) < file.getDirCount());
        file.OLEcloseStream(file.OLEopenObject(&path));
    }
    source.clear();
    const auto type = OleCompFile::detectOLEDocument(source);
    require(isOpen || type == ZroCommon::OLEDOCUMENT_NONE);
    return 0;
}
