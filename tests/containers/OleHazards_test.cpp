// Compound files that want to do harm: each ends soon, in little memory, with the result stated.
#include <algorithm>
#include <cstdlib>

#include "tests/containers/OleFile.h"
#include "tests/support/Cheap.h"
#include "tests/support/Memory.h"
#include "tests/support/SmallStack.h"
#include "tests/support/Streams.h"
#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

/// Does all that can be done to a file. The result names the check that refused it, or what its
/// streams gave: "a:100 b:none".
std::string exercise(const std::string& bytes) {
    OleFile file(bytes);
    if (!file.isOpen()) {
        return "refused by " + std::to_string(static_cast<int>(file.refusedBy()));
    }
    std::string all;
    for (const char* const name : {"a", "b", "c", "s"}) {
        const auto stream = file.open({name});
        all += all.empty() ? "" : " ";
        all += name;
        all += ":";
        all += stream ? std::to_string(OleFile::restOf(*stream).size()) : "none";
        if (stream) {
            stream->OLEseek(0, 2);
        }
        OleDirPath path = olePath({name, "x"});
        file->OLEcloseStream(file->OLEopenObject(&path));
        path.count = 1;
        file->OLEcloseStream(file->OLEopenObject(&path));
    }
    return all;
}

std::string refused(OleCheck check) {
    return "refused by " + std::to_string(static_cast<int>(check));
}

OleImage sample(const OleLayout& layout = {}) {
    return OleBuilder(layout)
        .stream(u"a", oleData(600))
        .stream(u"b", oleData(6000))
        .storage(u"s")
        .stream(u"c", oleData(10), 3)
        .build();
}

const std::string& soundResult() {
    static const std::string s_result = "a:600 b:6000 c:none s:none";
    return s_result;
}

TEST(OleHazards, SixteenHostileFilesEndSoon) {
    constexpr std::int64_t kMost = 0x7FFFFFFF;
    constexpr std::size_t kRight = OleBuilder::kRight;
    constexpr std::size_t kLeft = OleBuilder::kLeft;
    const OleImage s = sample();
    const OleImage large = sample({.fatBlocks = 110});
    const std::size_t lists = large.offsetOf(large.blocks - 1);  // the rest of the FAT's blocks
    const auto self = [](std::size_t block) {
        return static_cast<long>(block);
    };
    OleImage oneBlock = OleImage(large).header(44, 236);
    for (std::size_t i = 1; i < 109 + 127; ++i) {
        oneBlock.put(i < 109 ? 76 + 4 * i : lists + 4 * (i - 109), large.fatBlocks[0]);
    }
    for (const auto& [what, result, image] : Rows<const char*, std::string, OleImage>{
             {"nothing", soundResult(), s},
             {"directory in a circle", refused(OleCheck::DirectoryLoop),
              OleImage(s).fat(s.directoryStart, self(s.directoryStart))},
             {"stream in a circle", "a:600 b:1536 c:none s:none", OleImage(s).fat(2, 0)},
             {"mini stream's table in a circle", "a:192 b:6000 c:none s:none",
              OleImage(s).miniFat(2, 0)},
             {"siblings in circles", soundResult(),
              OleImage(s).entry(2, kRight, 1).entry(2, kLeft, 2).entry(1, kLeft, 1)},
             {"storage in itself", soundResult(),
              OleImage(s).entry(3, OleBuilder::kChild, 3).entry(4, kRight, 4)},
             {"FAT of 2^31-1 blocks", refused(OleCheck::IndirectFatRead),
              OleImage(large).header(44, kMost)},
             {"FAT of 2^32-1 blocks, listed in a circle", refused(OleCheck::IndirectFatLoop),
              OleImage(large).header(44, -1).put(large.bytes.size() - 4, large.blocks - 1)},
             {"FAT of one block many times", soundResult(), oneBlock},
             {"MiniFAT of 2^31-1 blocks", refused(OleCheck::MiniFatLength),
              OleImage(s).header(64, kMost)},
             {"MiniFAT of 2^32-1 blocks in a circle", refused(OleCheck::MiniFatLength),
              OleImage(s).header(64, -1).fat(s.miniFatStart, self(s.miniFatStart))},
             {"size 2^31-1", "a:600 b:6144 c:none s:none",
              OleImage(s).entry(2, OleBuilder::kSize, kMost)},
             {"size -16", "a:0 b:0 c:none s:none",
              OleImage(s).entry(1, OleBuilder::kSize, -16).entry(2, OleBuilder::kSize, -16)},
             {"blocks of 2 GiB", refused(OleCheck::FatRead),
              OleImage(s).header(30, 31, 2).header(76, 0)},
             {"mini blocks of 2 GiB", "a:none b:6000 c:none s:none", OleImage(s).header(32, 31, 2)},
             {"a mini block of a high number in a mini stream in a circle",
              "a:64 b:6000 c:none s:none",
              OleImage(s)
                  .entry(1, OleBuilder::kStart, kMost)
                  .fat(s.miniStreamStart, self(s.miniStreamStart))},
             {"chain to the last block there can be", "a:600 b:512 c:none s:none",
              OleImage(s).fat(0, kMost)}}) {
        const Cheap cheap(what);
        EXPECT_EQ(exercise(image.bytes), result) << what;
    }
}

TEST(OleHazards, AnyPairOfShiftsEndsSoon) {
    const OleImage image = sample();
    int open = 0;
    for (int block = 0; block < 32; ++block) {
        for (int mini = 0; mini < 32; ++mini) {
            OleImage odd = image;
            odd.header(30, block, 2).header(32, mini, 2).header(60, 0).header(64, 0);
            const Cheap cheap("shifts");
            const std::string result = exercise(odd.bytes);
            open += result.starts_with("a:") ? 1 : 0;
            EXPECT_TRUE(block == 9 || !result.starts_with("a:6")) << block << " and " << mini;
        }
    }
    EXPECT_GE(open, 32);
}

TEST(OleHazards, ACutFileGivesTheStartOfItsStreams) {
    const OleImage image = sample();
    for (std::size_t size = 0; size < image.bytes.size(); size += 128) {
        OleImage cut = image;
        cut.bytes.resize(size);
        EXPECT_TRUE(exercise(cut.bytes).starts_with("refused")) << size;
    }
    OleBuilder builder;
    OleImage tail = builder.stream(u"a", "").stream(u"b", oleData(6000)).build();
    for (const long at : {0L, 100L, 512L, 2000L}) {  // of the stream's last block in the file
        tail.entry(2, OleBuilder::kStart, static_cast<long>(tail.blocks) - 1);
        tail.bytes.resize(tail.offsetOf(tail.blocks - 1) + 512);
        OleFile file(tail.bytes);
        const auto stream = file.open({"b"});
        EXPECT_EQ(stream == nullptr ? -1 : stream->OLEseek(at, 0), at < 512 ? at : -1) << at;
    }
}

TEST(OleHazards, NothingIsSpoiledWhereMemoryRunsOut) {
    const std::string data = oleData(60000);
    const std::string bytes =
        OleBuilder().stream(u"m", data.substr(0, 3900)).stream(u"l", data).build().bytes;
    std::string room(data.size(), '\0');
    int failures = 0;
    for (const char* const name : {"m", "l"}) {
        for (long count = 0; count < 30; ++count) {
            OleFile file(bytes);
            const auto stream = file.open({name});
            letNewsSucceed(count);
            const int got = stream->OLEread(room.data(), static_cast<int>(room.size()));
            letNewsSucceed(-1);
            failures += got < stream->GetStreamSize() ? 1 : 0;
            ASSERT_EQ(stream->OLEseek(0, 0), 0) << name << " " << count;
            ASSERT_EQ(OleFile::restOf(*stream), data.substr(0, name[0] == 'm' ? 3900 : 60000));
        }
    }
    EXPECT_GT(failures, 10);
}

TEST(OleHazards, LongListsOfSiblingsNeedNoStack) {
    OleBuilder builder;
    for (int i = 0; i < 20000; ++i) {
        builder.stream(u"x", "");
    }
    OleImage image = builder.stream(u"a", "found").build();
    OleFile file(image.bytes);
    onSmallStack([&] { EXPECT_EQ(file.read({"a"}), "found"); });
    OleDirPath path = olePath({"b"});
    EXPECT_EQ(file->getDirIndex(&path), -1);
}

TEST(OleHazards, AStreamMayThrowAnywhere) {
    const std::string bytes = sample().bytes;
    for (std::size_t at = 0; at < bytes.size(); at += 256) {
        StreamOver<ThrowingFileBuf> stream(bytes, at);
        stream.exceptions(std::ios_base::failbit | std::ios_base::badbit | std::ios_base::eofbit);
        EXPECT_EQ(OleCompFile::detectOLEDocument(stream), OLEDOCUMENT_NONE) << at;
        EXPECT_FALSE(OleCompFile::isOLEUri(stream)) << at;
    }
}

/// A host's own source that answers with nonsense.
class LyingIO : public JZIOobj {
public:
    explicit LyingIO(int answer) : m_answer(answer) {}
    bool Open() override { return true; }
    bool Seek(long /*offset*/, int /*origin*/) override { return true; }
    int Read(char* /*buffer*/, int /*count*/) override { return m_answer; }
    using JZIOobj::Read;

private:
    int m_answer;
};

TEST(OleHazards, ASourceMayAnswerAnything) {
    for (const int answer : {-1, 0, 1, 512, 0x7FFFFFFF}) {
        LyingIO io(answer);
        OleCompFile file;
        EXPECT_FALSE(file.OLEopen(&io)) << answer;
    }
    OleCompFile file;
    EXPECT_FALSE(file.OLEopen(static_cast<JZIOobj*>(nullptr)));
    EXPECT_FALSE(file.OLEopen(static_cast<const char*>(nullptr)));
}

}  // namespace
}  // namespace ZroCommon::testing
