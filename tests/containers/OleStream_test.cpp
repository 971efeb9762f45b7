// Positions and pieces of the streams in compound files.
#include <algorithm>

#include "tests/containers/OleFile.h"
#include "tests/support/Streams.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "zro/containers/ole/ZROleStream.h"

namespace ZroCommon::testing {
namespace {

const std::string& largeData() {
    static const std::string s_data = oleData(5120);
    return s_data;
}

OleBuilder sample(const OleLayout& layout = {}) {
    return OleBuilder(layout)
        .stream(u"mini", largeData().substr(0, 128))
        .stream(u"large", largeData())
        .stream(u"empty", "");
}

TEST(OleStream, SeeksFromStartPositionAndEnd) {
    const Rows<long, int, long> cases = {
        {100, 0, 100},   {-1, 0, 0},     {1L << 40, 0, 5120}, {-5120, 1, 0},       {512, 1, 512},
        {5120, 0, 5120}, {1, 1, 5120},   {0, 3, -1},          {0, -1, -1},         {0, 1, 5120},
        {10, 2, 5110},   {-10, 2, 5120}, {1L << 62, 2, 0},    {-(1L << 62), 1, 0}, {0, 2, 5120},
    };
    OleFile file(sample().build().bytes);
    const auto stream = file.open({"large"});
    for (const auto& [offset, origin, position] : cases) {
        EXPECT_EQ(stream->OLEseek(offset, origin), position) << offset << " from " << origin;
        EXPECT_EQ(stream->OLEtell(), position == -1 ? 5120 : position);
    }
    EXPECT_EQ(stream->GetStreamSize(), 5120);
}

TEST(OleStream, ReadsFromAnyPositionAnyNumberOfBytes) {
    for (const bool backward : {false, true}) {
        OleFile file(sample({.miniShift = 5, .backward = backward}).build().bytes);
        for (const char* const name : {"mini", "large"}) {
            const auto stream = file.open({name});
            const auto size = static_cast<std::size_t>(stream->GetStreamSize());
            std::string bytes(size + 9, '\0');
            for (std::size_t at = 0; at <= size; at += 31) {
                ASSERT_EQ(stream->OLEseek(static_cast<long>(at), 0), static_cast<long>(at));
                const int wanted = static_cast<int>(at * 7 % 1500);
                const int got = stream->OLEread(bytes.data(), wanted);
                EXPECT_EQ(got, std::min(wanted, static_cast<int>(size - at))) << name << at;
                EXPECT_TRUE(
                    std::string_view(bytes).substr(0, static_cast<std::size_t>(got))
                    == std::string_view(largeData()).substr(at, static_cast<std::size_t>(got)))
                    << name << " at " << at;
                EXPECT_EQ(stream->OLEtell(), static_cast<long>(at) + got);
            }
        }
    }
}

TEST(OleStream, TheFileItselfCanBeRead) {
    OleFile file(sample().build().bytes);
    unsigned char first = 0;
    EXPECT_TRUE(file->SeekIO(0, 0));
    EXPECT_EQ(file->ReadIO(&first, 1), 1);
    EXPECT_EQ(first, 0xD0);
    EXPECT_EQ(OleCompFile().ReadIO(&first, 1), 0);
}

TEST(OleStream, StreamsOfAFileAreReadInTurn) {
    OleFile file(sample().build().bytes);
    const auto one = file.open({"large"});
    const auto other = file.open({"mini"});
    std::string bytes(100, '\0');
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(one->OLEread(bytes.data(), 60), 60);
        EXPECT_EQ(bytes.substr(0, 60), largeData().substr(static_cast<std::size_t>(i) * 60, 60));
        ASSERT_EQ(other->OLEread(bytes.data(), 60), 60);
        EXPECT_EQ(bytes.substr(0, 60), largeData().substr(static_cast<std::size_t>(i) * 60, 60));
    }
}

// A stream of size 0 has no place, and needs none; a size that the chain cannot hold is a claim.
TEST(OleStream, EndsWhereItsChainEnds) {
    for (const auto& [what, size, next, seekToEnd, bytes] :
         Rows<const char*, std::int64_t, std::int64_t, long, std::size_t>{
             {"whole", 5120, 2, 5120, 5120},
             {"-3 ends a chain", 5120, -3, -1, 1024},
             {"shorter", 4200, 2, 4200, 4200},
             {"chain too short", 5120, -2, -1, 1024},
             {"chain broken", 5120, -1, -1, 1024},
             {"chain in a circle", 5120, 0, -1, 1024},
             {"leads out", 5120, 1000000, -1, 1024},
             {"huge", 0x7FFFFFFF, 2, -1, 5120},
         }) {
        OleImage image = sample().build();
        OleFile file(image.fat(1, next).entry(2, OleBuilder::kSize, size).bytes);
        const auto stream = file.open({"large"});
        ASSERT_NE(stream, nullptr) << what;
        EXPECT_EQ(stream->OLEseek(0, 2), seekToEnd) << what;
        EXPECT_EQ(stream->OLEseek(0, 0), 0) << what;
        EXPECT_EQ(OleFile::restOf(*stream, 8192), largeData().substr(0, bytes)) << what;
        EXPECT_EQ(OleFile::restOf(*stream), "") << what;
    }
}

TEST(OleStream, OpensByItsEntry) {
    for (const auto& [what, entry, start, size, content] :
         Rows<const char*, std::size_t, std::int64_t, std::int64_t, const char*>{
             {"empty", 3, -2, 0, ""},
             {"empty, other end", 3, -3, 0, ""},
             {"empty, no end", 3, -1, 0, "none"},
             {"negative size", 2, 0, -16, ""},
             {"no blocks", 3, -2, 10, "none"},
             {"no mini block", 3, -1, 10, "none"},
             {"beyond the mini stream", 3, 100, 10, "none"},
         }) {
        OleImage image = sample().build();
        image.entry(entry, OleBuilder::kStart, start).entry(entry, OleBuilder::kSize, size);
        OleFile file(image.bytes);
        EXPECT_EQ(file.read({entry == 3 ? "empty" : "large"}), content) << what;
    }
    OleImage image = sample().build();
    OleFile file(image.entry(0, OleBuilder::kStart, -1).bytes);
    EXPECT_EQ(file.read({"mini"}), "none") << "there is no mini stream";
    EXPECT_EQ(file.read({"empty"}), "none") << "nor a place for nothing";
    EXPECT_TRUE(file.read({"large"}) == largeData());
}

TEST(OleStream, LooksItsChainUpAsFarAsAsked) {
    OleFile file(sample().build().bytes);
    OleStream stream(&*file);
    EXPECT_FALSE(stream.GetStreamChain(0)) << "the root is no stream";
    EXPECT_FALSE(stream.GetStreamChain(99));
    ASSERT_TRUE(stream.GetStreamChain(2));
    for (const long index : {0L, 9L, 10L, 11L, 1L << 40}) {
        EXPECT_TRUE(stream.GetStreamChainIndex(index)) << index;
    }
    OleStream nowhere(nullptr);
    EXPECT_FALSE(nowhere.GetStreamChain(1));
    EXPECT_EQ(nowhere.OLEseek(0, 0), -1);
    EXPECT_EQ(nowhere.OLEread(nullptr, 10), 0);
}

// A mini stream whose blocks run in a circle goes round as often as somebody asks.
TEST(OleStream, AMiniStreamInACircleGoesOn) {
    OleImage image =
        OleBuilder({.miniCutoff = 10000}).stream(u"a", largeData().substr(0, 1024)).build();
    image.fat(image.miniStreamStart + 1, static_cast<long>(image.miniStreamStart));
    image.entry(1, OleBuilder::kSize, 1088).miniFat(15, 40);
    OleFile file(image.bytes);
    EXPECT_TRUE(file.read({"a"}) == largeData().substr(0, 1024) + largeData().substr(512, 64));
}

TEST(OleStream, CopiesWithoutItsHeader) {
    const TempFolder folder;
    const std::string path = folder.path() + "/copy";
    for (const auto& [data, copy] : Rows<std::string, std::string>{
             {std::string("\6\0head and body", 15), " and body"},
             {std::string("\2\0x", 3), "x"},
             {std::string("\0\0x", 3), std::string("\0\0x", 3)},
             {std::string("\xFF\xFFx", 3), ""},
             {"\1", "refused"},
             {std::string("\2\0", 2) + oleData(30000), oleData(30000)},
         }) {
        folder.write("copy", "");
        OleFile file(OleBuilder().stream(u"s", data).build().bytes);
        const bool isCopied = file.open({"s"})->CopyToFile(path.c_str());
        EXPECT_TRUE((isCopied ? folder.read("copy") : "refused") == copy) << data.size();
    }
    OleFile file(OleBuilder().stream(u"s", std::string("\2\0x", 3)).build().bytes);
    EXPECT_FALSE(file.open({"s"})->CopyToFile(folder.path().c_str())) << "a directory";
    EXPECT_FALSE(file.open({"s"})->CopyToFile(nullptr));
}

// On purpose: only what fails before the copy is a failure.
TEST(OleStream, ACopyThatWasCutShortIsASuccess) {
    OleFile file(OleBuilder().stream(u"s", std::string("\2\0x", 3)).build().bytes);
    EXPECT_TRUE(file.open({"s"})->CopyToFile("/dev/full"));
}

// On purpose: the file is not emptied first.
TEST(OleStream, ACopyLeavesTheRestOfALongerFile) {
    const TempFolder folder;
    folder.write("copy", "0123456789");
    OleFile file(OleBuilder().stream(u"s", std::string("\2\0abc", 5)).build().bytes);
    EXPECT_TRUE(file.open({"s"})->CopyToFile((folder.path() + "/copy").c_str()));
    EXPECT_EQ(folder.read("copy"), "abc3456789");
}

TEST(ZROleStream, GivesTheWholeStreamOrItsStart) {
    OleFile file(sample().build().bytes);
    for (const int limit : {-1, 0, 1, 4095, 4096, 4097, 5119, 5120, 9000}) {
        const auto stream = file.open({"large"});
        ZROleStream input(stream.get(), limit);
        const auto count = limit < 0 ? largeData().size() : static_cast<std::size_t>(limit);
        EXPECT_TRUE(restOf(input) == largeData().substr(0, count)) << limit;
    }
    ZROleStream none(nullptr, -1);
    EXPECT_EQ(restOf(none), "");
}

/// A stream that gives a few bytes at a time.
class TricklingStream : public OleStream {
public:
    TricklingStream() : OleStream(nullptr) {}
    int OLEread(void* buffer, int count) override {
        const int got = std::min(count, 3);
        std::fill_n(static_cast<char*>(buffer), got, 'x');
        return got;
    }
};

// On purpose: each piece counts as 4096 bytes, however short it is.
TEST(ZROleStream, AShortPieceCountsAsAWholeBlock) {
    TricklingStream stream;
    ZROleStream input(&stream, 8193);
    EXPECT_EQ(restOf(input), "xxxxxxx");
}

}  // namespace
}  // namespace ZroCommon::testing
