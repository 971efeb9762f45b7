// Deflated and gzip data of any make, read by the streams and by zlib itself: in one step for raw
// data, by its file functions for gzip.
#include <cstdint>
#include <sstream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include <zlib.h>

#include "tests/support/Streams.h"
#include "zro/streams/compression/ZRGzipStream.h"
#include "zro/streams/compression/ZRInflaterStream.h"
#include "zro/streams/compression/internal/GzipReader.h"

#include "fuzz/Input.h"

namespace {

using namespace ZroCommon;
using fuzzing::require;
using testing::restOf;

// More than inputs of the fuzzer's size expand to.
constexpr std::size_t kRoom = std::size_t{1} << 24U;

std::string inOneStep(const std::string& block) {
    static std::vector<char> s_room(kRoom);
    z_stream stream{};
    require(inflateInit2(&stream, -15) == Z_OK);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(block.data()));
    stream.avail_in = static_cast<uInt>(block.size());
    stream.next_out = reinterpret_cast<Bytef*>(s_room.data());
    stream.avail_out = static_cast<uInt>(s_room.size());
    inflate(&stream, Z_FINISH);
    std::string result(s_room.data(), stream.total_out);
    inflateEnd(&stream);
    return result;
}

void readRaw(const std::string& block) {
    ZRInflaterStream stream(block.data(), block.size(), false);
    const std::string expected = inOneStep(block);
    require(restOf(stream) == expected);
    stream.reset();
    require(testing::readsTwice(stream, expected.substr(0, 40000))
            == std::min<std::size_t>(expected.size(), 40000));
}

// What zlib's functions read of a file, and whether they were content.
std::pair<std::string, bool> byFileFunctions(const std::string& bytes) {
    const int number = memfd_create("gzip", 0);
    require(write(number, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
    lseek(number, 0, SEEK_SET);
    const gzFile file = gzdopen(number, "rb");
    std::string result;
    char piece[4096];
    int got = 0;
    while ((got = gzread(file, piece, sizeof(piece))) > 0) {
        result.append(piece, static_cast<std::size_t>(got));
    }
    int code = Z_OK;
    gzerror(file, &code);
    gzclose(file);
    return {result, code == Z_OK || code == Z_BUF_ERROR};
}

std::string byReader(std::unique_ptr<internal::GzipReader> reader) {
    std::vector<char> room(internal::ExpandedBlock::kSize);
    std::string result;
    while (const std::size_t got = reader->read(room)) {
        result.append(room.data(), got);
    }
    return result;
}

void readGzip(const std::string& bytes) {
    const auto [expected, isSound] = byFileFunctions(bytes);
    const std::string file =
        byReader(internal::readGzipFile(std::make_unique<std::istringstream>(bytes)));
    require(isSound ? file == expected : file.starts_with(expected));

    std::istringstream source(bytes);
    ZRGzipStream stream(source);
    const std::string first = restOf(stream);
    // Of data that are cut, a file may give less: what zlib made and did not hand on.
    require(!isSound || first == bytes || file.starts_with(first) || first.starts_with(file));
    source.clear();
    ZRGzipStream again(source);
    const std::size_t piece = 65536 - bytes.size() % 3;
    require(
        testing::readInPieces(again, {piece, 70000, 1, 65536, first.size() + 1}, bytes.size() % 11)
        == first);
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLargest = 8192;
    if (size > 0 && size <= kLargest) {
        const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
        (data[0] & 1U) != 0 ? readRaw(bytes) : readGzip(bytes);
    }
    return 0;
}
