#include "zro/platform/internal/NativeFile.h"

#include <fstream>
#include <random>
#include <unistd.h>

#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"

namespace ZroCommon::internal {
namespace {

using testing::TempFolder;
using testing::text;
using testing::utf8;

// "none" for what cannot be a file here.
std::string nameOf(const UnicodeString& path) {
    const auto name = nativeFileName(path);
    EXPECT_TRUE(name || !fileExists(path)) << utf8(path);
    EXPECT_TRUE(name || (!openInputFile(path) && !openOutputFile(path))) << utf8(path);
    return name.value_or("none");
}

TEST(NativeFile, TurnsALocalPathIntoANameOfTheSystem) {
    testing::expectTexts([](const std::string& path) { return nameOf(text(path)); },
                         {"/tmp/a b.xml -> /tmp/a b.xml", "a/\xC3\xA4.xml -> a/\xC3\xA4.xml",
                          "\\\\tmp\\a.xml -> /tmp/a.xml", "\\\\\\\\tmp/a\\b -> /tmp/a/b",
                          "\\\\localhost\\tmp\\a -> /tmp/a", "\\\\localhost -> /",
                          "\\\\localhosts\\a -> /localhosts/a", "\\\\ -> /", "\\tmp\\a -> \\tmp\\a",
                          "/tmp/a\\b -> /tmp/a\\b", "//localhost/a -> //localhost/a", "1:x -> 1:x",
                          " -> ", "\U0001F600 -> \U0001F600", "C:\\a -> none", "c: -> none",
                          "z:a -> none"});
    for (const UnicodeString& path :
         {UnicodeString(u"a\0b", 3), UnicodeString(u"a\xD800"), UnicodeString(u"\xDC00/a")}) {
        EXPECT_EQ(nameOf(path), "none") << utf8(path);
    }
}

TEST(NativeFile, TellsFilesFromDirectories) {
    const TempFolder folder;
    const UnicodeString path = folder.write("a", "x");
    const UnicodeString directory = text(folder.path());
    EXPECT_TRUE(isDirectory(folder.path()) && fileExists(directory));
    EXPECT_TRUE(!openInputFile(directory) && !openOutputFile(directory));
    EXPECT_TRUE(!isDirectory(utf8(path)) && fileExists(path) && openInputFile(path));
}

// On random positions and lengths the stream has to do what the standard one does.
TEST(InputFile, ReadsAndSeeksAsAFileStreamDoes) {
    const TempFolder folder;
    std::mt19937 engine(1);  // NOLINT(cert-msc51-cpp): the same numbers in each run
    const auto random = [&engine](unsigned below) {
        return static_cast<std::streamoff>(engine() % below);
    };
    std::string bytes(100000, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random(256)); });
    const UnicodeString path = folder.write("a", bytes);
    const auto ours = openInputFile(path);
    std::ifstream standard(utf8(path), std::ios::binary);
    std::string found(70000, '\0');
    std::string wanted(70000, '\0');
    for (int i = 0; i < 2000; ++i) {
        const std::streamoff count = random(i % 10 == 0 ? 70000 : 60);
        const std::streamoff target = random(100012) - 2;
        const auto act = [&](std::istream& stream, std::string& into) {
            switch (i % 6) {
            case 0: stream.seekg(target); break;
            case 1: stream.seekg(-(target % 2), std::ios::cur); break;
            case 2: stream.seekg(-target, std::ios::end); break;
            case 3: stream.unget(); break;
            default: stream.read(into.data(), count); break;
            }
            const auto state = stream.rdstate();
            stream.clear();
            return std::pair(state, std::streamoff(stream.tellg()));
        };
        ASSERT_EQ(act(*ours, found), act(standard, wanted)) << "step " << i;
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
