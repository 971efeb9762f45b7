#include "zro/platform/internal/NativeFile.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"

namespace ZroCommon::internal {
namespace {

using ZroCommon::testing::TempFolder;
using ZroCommon::testing::text;
using ZroCommon::testing::utf8;

TEST(NativeFile, TurnsALocalPathIntoANameOfTheSystem) {
    for (const auto& [path, name] : testing::Rows<const char*, const char*>{
             {"/tmp/a b.xml", "/tmp/a b.xml"},
             {"a/\xC3\xA4.xml", "a/\xC3\xA4.xml"},
             {"\\\\tmp\\a.xml", "/tmp/a.xml"},
             {"\\\\\\\\tmp/a\\b", "/tmp/a/b"},
             {"\\\\localhost\\tmp\\a", "/tmp/a"},
             {"\\\\localhost", "/"},
             {"\\\\localhosts\\a", "/localhosts/a"},
             {"\\\\", "/"},
             {"\\tmp\\a", "\\tmp\\a"},
             {"/tmp/a\\b", "/tmp/a\\b"},
             {"//localhost/a", "//localhost/a"},
             {"1:x", "1:x"},
             {"", ""},
         }) {
        EXPECT_EQ(nativeFileName(text(path)), name) << "for: " << path;
    }
}

TEST(NativeFile, RefusesWhatCannotBeAFileHere) {
    const UnicodeString cases[] = {u"C:\\a",   u"c:",      u"z:a", UnicodeString(u"a\0b", 3),
                                   u"a\xD800", u"\xDC00/a"};
    for (const UnicodeString& path : cases) {
        EXPECT_EQ(nativeFileName(path), std::nullopt) << "for: " << utf8(path);
        EXPECT_FALSE(fileExists(path)) << "for: " << utf8(path);
        EXPECT_EQ(openInputFile(path), nullptr) << "for: " << utf8(path);
        EXPECT_EQ(openOutputFile(path), nullptr) << "for: " << utf8(path);
    }
    EXPECT_EQ(nativeFileName(u"\U0001F600"), "\xF0\x9F\x98\x80");
}

TEST(NativeFile, TellsFilesFromDirectories) {
    const TempFolder folder;
    const UnicodeString path = folder.write("a", "x");
    EXPECT_TRUE(isDirectory(folder.path()));
    EXPECT_FALSE(isDirectory(utf8(path)));
    EXPECT_TRUE(fileExists(text(folder.path())));
    EXPECT_TRUE(fileExists(path));
    EXPECT_EQ(openInputFile(text(folder.path())), nullptr);
    EXPECT_EQ(openOutputFile(text(folder.path())), nullptr);
    EXPECT_NE(openInputFile(path), nullptr);
}

// On random positions and lengths the stream has to do what the standard one does.
TEST(InputFile, ReadsAndSeeksAsAFileStreamDoes) {
    const TempFolder folder;
    std::string bytes;
    for (unsigned i = 0; i < 100000; ++i) {
        bytes += static_cast<char>(i * 7919U >> 5U);
    }
    const UnicodeString path = folder.write("a", bytes);
    const auto ours = openInputFile(path);
    std::ifstream standard(utf8(path), std::ios::binary);
    unsigned state = 1;
    const auto random = [&state](unsigned below) {
        state = state * 1103515245U + 12345U;
        return static_cast<std::streamoff>((state >> 8U) % below);
    };
    std::string found(70000, '\0');
    std::string wanted(70000, '\0');
    for (int i = 0; i < 2000; ++i) {
        const std::streamoff count = random(i % 10 == 0 ? 70000 : 60);
        const std::streamoff target = random(100010) - random(3);
        const auto act = [&](std::istream& stream, std::string& into) {
            stream.clear();
            switch (i % 6) {
            case 0: stream.seekg(target); break;
            case 1: stream.seekg(random(2) - 1, std::ios::cur); break;
            case 2: stream.seekg(-target, std::ios::end); break;
            case 3: stream.unget(); break;
            default: stream.read(into.data(), count); break;
            }
            return stream.rdstate();
        };
        const unsigned before = state;
        const auto ourState = act(*ours, found);
        state = before;
        ASSERT_EQ(ourState, act(standard, wanted)) << "step " << i;
        ours->clear();
        standard.clear();
        ASSERT_EQ(ours->tellg(), standard.tellg()) << "step " << i;
        ASSERT_TRUE(found == wanted) << "step " << i;
    }
}

TEST(InputFile, SeesWhatIsAppendedBehindTheEnd) {
    const TempFolder folder;
    const UnicodeString path = folder.write("a", "x");
    const auto stream = openInputFile(path);
    EXPECT_EQ(stream->get(), 'x');
    EXPECT_EQ(stream->get(), EOF);
    std::ofstream(utf8(path), std::ios::app) << 'y';
    stream->clear();
    EXPECT_EQ(stream->get(), 'y');
}

TEST(InputFile, ReadsAPipeAndDoesNotSeekInIt) {
    const auto stream = openInputFile(u"/dev/null");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->get(), EOF);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], "abc", 3), 3);
    close(ends[1]);
    const auto fromPipe = openInputFile(text("/proc/self/fd/" + std::to_string(ends[0])));
    ASSERT_NE(fromPipe, nullptr);
    EXPECT_EQ(fromPipe->get(), 'a');
    EXPECT_EQ(fromPipe->tellg(), -1);
    fromPipe->clear();
    EXPECT_EQ(fromPipe->unget().get(), 'a');
    EXPECT_EQ(fromPipe->get(), 'b');
    close(ends[0]);
}

// A read that fails must not look like the end of the file.
TEST(InputFile, AFailedReadIsNotAnEnd) {
    const auto stream = openInputFile(u"/proc/self/mem");  // nothing lies at address 0
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->get(), EOF);
    EXPECT_TRUE(stream->bad());
}

}  // namespace
}  // namespace ZroCommon::internal
