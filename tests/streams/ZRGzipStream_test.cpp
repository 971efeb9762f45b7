#include "zro/streams/compression/ZRGzipStream.h"

#include <filesystem>
#include <fstream>

#include "tests/support/Deflate.h"
#include "tests/support/Skips.h"
#include "tests/support/Streams.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "zro/streams/compression/internal/Crc32.h"

namespace ZroCommon::testing {
namespace {

using namespace std::string_literals;

std::string fromStream(const std::string& bytes) {
    std::istringstream source(bytes);
    ZRGzipStream stream(source);
    return restOf(stream);
}

std::string fromFile(const TempFolder& folder, const std::string& bytes) {
    ZRGzipStream stream(folder.write("file", bytes));
    return stream.is_open() ? restOf(stream) : "not open";
}

std::string packed(const std::string& bytes) {
    return deflated(bytes, kGzip);
}

// A member whose header says what `flags` and `extra` do, and its check value last if it has one.
std::string member(char flags, const std::string& extra, const std::string& bytes) {
    const std::string header = "\x1F\x8B\x08"s + flags + "\0\0\0\0\0\xFF"s + extra;
    const std::string check = (flags & 2) != 0 ? numberBytes(crcOf(header) & 0xFFFFU, 2) : "";
    return header + check + deflated(bytes) + trailer(bytes);
}

void expectContents(Rows<std::string, std::string, std::string> files) {
    const TempFolder folder;
    for (const auto& [bytes, ofStream, ofFile] : files) {
        EXPECT_EQ(fromStream(bytes), ofStream) << bytes.substr(0, 40);
        EXPECT_EQ(fromFile(folder, bytes), ofFile) << bytes.substr(0, 40);
    }
}

TEST(ZRGzipStream, ReadsWhatIsPackedAndWhatIsNot) {
    const std::string longText = noise(100000);
    for (const auto& [bytes, content] : Rows<std::string, std::string>{
             {"", ""},
             {"a", "a"},
             {"\x1F", "\x1F"},
             {longText, longText},
             {packed(""), ""},
             {packed(longText), longText},
             {deflated(longText, kGzip, 0), longText},
             {member('\x08', "name\0"s, "abc"), "abc"},
             {member('\x1C', "\x02\0xyname\0comment\0"s, "abc"), "abc"},
             {member('\x04', "\x00\x01"s + std::string(256, 'x'), longText), longText},
             {member('\x1E', "\x02\0xyname\0comment\0"s, "abc"), "abc"},
             {packed("abc") + "garbage", "abc"},
         }) {
        expectContents({{bytes, content, content}});
    }
}

// The two roads differ here: a stream has one member, and a header that is none is text.
TEST(ZRGzipStream, ReadsOneMemberOfAStreamAndAllOfAFile) {
    expectContents({{packed("abc") + packed("def"), "abc", "abcdef"},
                    {packed("") + packed("def"), "", "def"},
                    {packed("abc") + "\x1F", "abc", "abc"},
                    {"\x1F\x8B\x07 method"s, "\x1F\x8B\x07 method"s, ""},
                    {"\x1F\x8B\x08\x20 flag"s, "\x1F\x8B\x08\x20 flag"s, ""},
                    {"\x1F\x8B", "\x1F\x8B", ""},
                    {"\x1F\x8B\x08", "\x1F\x8B\x08", ""},
                    {packed("abc") + "\x1F\x8B\x07"s, "abc", "abc"}});
}

TEST(ZRGzipStream, TellsWhetherAFileIsOpen) {
    const TempFolder folder;
    EXPECT_FALSE(ZRGzipStream(folder.file("missing")).is_open());
    EXPECT_FALSE(ZRGzipStream(text(folder.path())).is_open()) << "a folder";
    EXPECT_FALSE(ZRGzipStream(static_cast<const char*>(nullptr)).is_open());
    EXPECT_FALSE(ZRGzipStreamBuf(static_cast<const char16_t*>(nullptr)).is_open());
    const UnicodeString path = folder.write("\xC3\xBC.gz", packed("abc"));
    EXPECT_TRUE(ZRGzipStream(path).is_open());
    EXPECT_TRUE(ZRGzipStreamBuf(UnicodeString(path).getTerminatedBuffer()).is_open());
    ZRGzipStream narrow((folder.path() + "/\xC3\xBC.gz").c_str());
    EXPECT_EQ(restOf(narrow), "abc");
}

// Whole blocks go past the get area, but for their end.
TEST(ZRGzipStream, PutsBackTenBytesBehindPiecesOfAnySize) {
    const std::string bytes = noise(6 * 65536 + 5);
    const std::string file = packed(bytes);
    const TempFolder folder;
    const UnicodeString path = folder.write("a", file);
    std::vector<std::size_t> singly(20, 1);
    singly.insert(singly.begin(), 65530);
    singly.push_back(500000);
    for (const std::vector<std::size_t>& pieces : {singly,
                                                   {65536, 65536, 131072, 200000},
                                                   {1, 500000},
                                                   {65530, 65545, 3, 65536, 300000},
                                                   {65536, 4, 65537, 5, 131072, 1, 200000}}) {
        std::istringstream source(file);
        std::istringstream plain(bytes);
        ZRGzipStream streams[] = {source, plain, path};
        for (ZRGzipStream& stream : streams) {
            EXPECT_EQ(readInPieces(stream, pieces, 10), bytes);
            EXPECT_EQ(stream.get(), EOF);
        }
    }
}

TEST(ZRGzipStream, BeginsAtTheStartOfAStreamAndGoesOnByBlocks) {
    const std::string file = packed(noise(30000)) + noise(9000);
    std::istringstream source(file);
    source.seekg(100);
    ZRGzipStream stream(source);
    EXPECT_EQ(source.tellg(), 10);
    EXPECT_EQ(restOf(stream).size(), 30000U);
    EXPECT_EQ((source.tellg() - std::streamoff{10}) % 4096, 0);
    StreamOver<NoSeekBuf> unable(file);
    ZRGzipStream none(unable);
    EXPECT_EQ(restOf(none), "") << "it has to be able to seek";
}

// On purpose: zlib's own file functions hold the last run back too.
TEST(ZRGzipStream, AFaultInAFileHoldsBackTheLastRun) {
    const TempFolder folder;
    const std::string bytes = noise(40000);
    std::string file = packed(noise(100000));
    file[file.size() - 8] ^= 1;  // the check value
    EXPECT_EQ(fromFile(folder, file).size(), 6U * 16384);
    file = packed(bytes);
    file[file.size() - 8] ^= 1;
    EXPECT_EQ(fromStream(file), bytes) << "which nobody looks at in a stream";
    EXPECT_EQ(fromFile(folder, file), bytes.substr(0, 32768));
    file[file.size() - 8] ^= 1;
    file[file.size() - 1] ^= 1;  // the size
    EXPECT_EQ(fromFile(folder, file + packed("abc")), bytes.substr(0, 32768));
    file = packed(bytes.substr(0, 32768));
    file[file.size() - 8] ^= 1;
    EXPECT_EQ(fromFile(folder, file), bytes.substr(0, 16384)) << "a whole run, with the fault";
    file = packed("abc");
    file[file.size() - 8] ^= 1;
    EXPECT_EQ(fromFile(folder, file), "abc") << "unless it is all there is";
}

// On purpose: zlib's file functions look at it too.
TEST(ZRGzipStream, AWrongHeaderCheckEndsAFileAndNoStream) {
    std::string wrong = member('\x02', "", "abc");
    wrong[10] ^= 1;
    expectContents({{wrong, "abc", ""}, {packed("def") + wrong, "def", "def"}});
    wrong[10] ^= 1;
    wrong[11] ^= 1;
    expectContents({{wrong, "abc", ""}});
}

TEST(ZRGzipStream, CutDataGivesWhatIsThere) {
    const TempFolder folder;
    const std::string bytes = noise(150);
    const std::string file = member('\x1E', "\x02\0xyname\0comment\0"s, bytes);
    for (std::size_t size = 4; size < file.size(); ++size) {
        const std::string got = fromStream(file.substr(0, size));
        ASSERT_TRUE(bytes.starts_with(got)) << size;
        ASSERT_EQ(fromFile(folder, file.substr(0, size)), got) << size;
        ASSERT_TRUE(got.size() == 150 || size < file.size() - 8);
    }
}

TEST(ZRGzipOStream, WritesWhatTheReadersRead) {
    const TempFolder folder;
    for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 300000U}) {
        const std::string bytes = noise(size);
        std::ostringstream target;
        ZRGzipOStream(target) << bytes;
        EXPECT_EQ(fromStream(target.str()), bytes);
        ZRGzipOStream(folder.file("out")) << bytes;
        EXPECT_EQ(folder.read("out"), target.str());
    }
    std::ofstream full("/dev/full");
    EXPECT_TRUE(ZRGzipOStream(full) << noise(100000)) << "only the file below can tell";
    EXPECT_FALSE(full);
    EXPECT_TRUE(ZRGzipOStream(text(folder.path())) << noise(10000));
}

// On purpose: a flush cannot stand in the middle of the data.
TEST(ZRGzipOStream, AFlushEndsTheData) {
    std::ostringstream target;
    {
        ZRGzipOStream stream(target);
        stream << "abc" << std::endl << "lost" << std::flush << noise(10000);
        EXPECT_TRUE(stream.good());
    }
    EXPECT_EQ(fromStream(target.str()), "abc\n");
    EXPECT_EQ(target.str().size(), packed("abc\n").size());
}

TEST(Crc32, IsThatOfZlib) {
    const std::string bytes = noise(5000);
    for (std::size_t size = 0; size < 400; ++size) {
        const auto expected = crc32(7, reinterpret_cast<const Bytef*>(bytes.data() + size % 17),
                                    static_cast<uInt>(size));
        ASSERT_EQ(internal::extendCrc32(7, {bytes.data() + size % 17, size}), expected) << size;
    }
    EXPECT_EQ(internal::extendCrc32(internal::extendCrc32(0, {bytes.data(), 1234}),
                                    {bytes.data() + 1234, 3766}),
              crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), 5000));
}

// Crafted files.
const std::filesystem::path kCorners = ZRO_TEST_DATA_DIR "/corner/gzip";

// How many bytes come of a stream and of a file; one number if it is the same.
std::string sizes(const std::string& name) {
    std::ifstream source(kCorners / name, std::ios::binary);
    const std::string streamed = fromStream(restOf(source));
    ZRGzipStream file((kCorners / name).c_str());
    const std::string whole = restOf(file);
    EXPECT_TRUE(whole.starts_with(streamed) || streamed.starts_with(whole)) << name;
    const std::string size = std::to_string(whole.size());
    return whole == streamed ? size : std::to_string(streamed.size()) + " and " + size;
}

TEST(GzipCorners, ReadAsTheyShould) {
    if (!exists(kCorners)) {
        GTEST_SKIP() << noData(kCorners.string());
    }
    expectTexts(
        sizes,
        {// Sound ones, and what is none.
         "empty-member.gz -> 0", "empty-then-data.gz -> 0 and 1198",
         "fextra-fname-fcomment-fhcrc.gz -> 1198", "fname.gz -> 38866", "huffman-only.gz -> 1198",
         "not-gzip.txt -> 1198", "one-byte.gz -> 1", "plain.gz -> 1198", "raw-deflate.bin -> 678",
         "stored.gz -> 9000", "tool-bgzip.gz -> 38866", "tool-gzip-N.gz -> 38866",
         "tool-pigz.gz -> 38866", "two-members.gz -> 1198 and 40064", "zeros-70000.gz -> 70000",
         "zlib-wrapped.z -> 684",
         // Broken ones.
         "bad-crc.gz -> 1198", "bad-isize.gz -> 1198", "corrupt-middle.gz -> 29537 and 16384",
         "header-only.gz -> 0", "trailing-garbage.gz -> 1198", "trailing-zeros.gz -> 1198",
         "truncated-data.gz -> 32993", "truncated-trailer.gz -> 1198"});
}

}  // namespace
}  // namespace ZroCommon::testing
