#include "zro/streams/ZRTempFile.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>
#include <sstream>
#include <sys/resource.h>
#include <system_error>
#include <unistd.h>

#include "tests/support/Deflate.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "tests/support/Threads.h"
#include "zro/platform/internal/TempFile.h"

namespace ZroCommon::testing {
namespace {

namespace fs = std::filesystem;

constexpr fs::perms kOwnerOnly = fs::perms::owner_read | fs::perms::owner_write;

fs::path pathOf(const UnicodeString& name) {
    return utf8(name);
}

const unsigned char* bytesOf(const std::string& block) {
    return reinterpret_cast<const unsigned char*>(block.data());
}

// The counter in a name such as ".../a1f_0a3c.tmp".
unsigned long numberIn(const UnicodeString& name) {
    const std::string text = pathOf(name).filename().string();
    return std::stoul(text.substr(text.find('_') + 1), nullptr, 16);
}

// As names have it.
std::string hexOf(unsigned long number, int width) {
    char digits[20];
    std::snprintf(digits, sizeof(digits), "%0*lx", width, number);
    return digits;
}

// In memory if possible: on a disk thousands of files take seconds.
fs::path parent() {
    constexpr const char* kInMemory = "/dev/shm";
    return access(kInMemory, W_OK) == 0 ? kInMemory : fs::temp_directory_path();
}

// A folder with a slash at its end, as the class takes it.
class TempFiles : public ::testing::Test {
protected:
    UnicodeString make(const char* suffix = "") const {
        return ZRTempFile::getTempFile((m_folder.path() + "/").c_str(), "", suffix);
    }

    std::string contentOf(const UnicodeString& name) const {
        return m_folder.read(pathOf(name).filename().string());
    }

    const TempFolder m_folder{parent()};
    const UnicodeString m_dir = text(m_folder.path() + "/");
};

TEST_F(TempFiles, NamesFollowOneAnother) {
    const UnicodeString first = make();
    const UnicodeString second = make(".xml");
    EXPECT_EQ(numberIn(second), numberIn(first) + 1);
    const std::string start =
        m_folder.path() + "/" + hexOf(static_cast<unsigned long>(getpid()), 3) + "_";
    EXPECT_TRUE(utf8(first).starts_with(start)) << utf8(first);
    EXPECT_TRUE(utf8(second).ends_with(".xml"));
    EXPECT_TRUE(fs::is_regular_file(pathOf(first)) && fs::is_empty(pathOf(first)));
    EXPECT_EQ(fs::status(pathOf(first)).permissions(), kOwnerOnly);
    const ZRTempFile inside(text(m_folder.path()), u"\u00FC", UnicodeString());
    EXPECT_TRUE(utf8(inside.getFileName()).starts_with(m_folder.path() + "\u00FC"))
        << "no separator is added";
    EXPECT_TRUE(fs::exists(pathOf(inside.getFileName())));
}

TEST_F(TempFiles, LivesInTheTemporaryFolderByDefault) {
    const ZRTempFile file("", nullptr, ".zro");
    const std::string folder = ZRTempFile::getTempDirectory().c_str();
    EXPECT_TRUE(utf8(file.getFileName()).starts_with(folder));
    EXPECT_EQ(folder.back(), '/');
    const char* const before = std::getenv("TMPDIR");
    const std::string kept = before != nullptr ? before : "";
    for (const auto& [value, expected] :
         {std::pair{"", "/tmp/"}, {"/a", "/a/"}, {"/a/b/", "/a/b/"}, {"c", "c/"}}) {
        setenv("TMPDIR", value, 1);
        EXPECT_EQ(internal::temporaryFolder(), text(expected));
    }
    before != nullptr ? setenv("TMPDIR", kept.c_str(), 1) : unsetenv("TMPDIR");
    EXPECT_EQ(ZRTempFile::getTempDirectory().c_str(), folder) << "asked for once";
}

TEST_F(TempFiles, StepsOverWhatIsThereAndOverPlantedLinks) {
    std::string next = utf8(make());
    next.replace(next.rfind('_') + 1, std::string::npos, hexOf(numberIn(text(next)) + 1, 4));
    const std::string victim = m_folder.path() + "/victim";
    fs::create_symlink(victim, next);
    const UnicodeString made = make();
    EXPECT_NE(made, text(next));
    EXPECT_EQ(numberIn(made), numberIn(text(next)) + 1);
    EXPECT_FALSE(fs::exists(victim));
}

TEST_F(TempFiles, GivesUpAfterAHundredTries) {
    const unsigned long before = numberIn(make());
    const std::string error = errorOf([this] { ZRTempFile file(m_dir + u"missing/", u"a", u"b"); });
    const std::string reason = std::generic_category().message(ENOENT);  // in any language
    EXPECT_TRUE(error.starts_with("0x100E Cannot create temporary file: " + utf8(m_dir))
                && error.ends_with("b (cannot create)\n" + reason + " [ZroCommon::ZRTempFile]"))
        << error;
    EXPECT_EQ(numberIn(make()), before + 101);
    EXPECT_NE(errorOf([] { ZRTempFile::getTempFile("C:\\temp\\", "", ""); }), "nothing");
    const UnicodeString withNul(u"a\0b", 3);
    EXPECT_NE(errorOf([&] { ZRTempFile::getTempFile(m_dir, withNul, u""); }), "nothing");
}

TEST_F(TempFiles, RemovesItsFileUnlessTheNameIsReleased) {
    const auto exists = [](const UnicodeString& name) {
        return fs::exists(pathOf(name));
    };
    const UnicodeString other = make();
    {
        ZRTempFile file(m_dir, u"", u"");
        const UnicodeString first = file.getFileName();
        EXPECT_TRUE(file.isTempFile());
        file.remove();
        EXPECT_FALSE(exists(first));
        EXPECT_EQ(file.getFileName(), first) << "the name stays";
        file.remove();
        const UnicodeString second = file.setFileName(m_dir, u"", u".2");
        EXPECT_TRUE(second == file.getFileName() && exists(second));
        file.setFileName(utf8(other).c_str());
        EXPECT_FALSE(exists(second)) << "the old file goes";
    }
    EXPECT_FALSE(exists(other));
    UnicodeString released;
    {
        ZRTempFile file(m_dir, u"", u"");
        released = file.releaseFileName();
        EXPECT_FALSE(file.isTempFile());
    }
    EXPECT_TRUE(exists(released));
    EXPECT_TRUE(ZRTempFile::removeTempFile(released) && ZRTempFile::removeTempFile(released));
    EXPECT_FALSE(ZRTempFile::removeTempFile(m_folder.path().c_str())) << "a folder";
}

// On purpose: the name alone is assigned.
TEST_F(TempFiles, AnAssignedNameLeavesTheOldFile) {
    ZRTempFile first(m_dir, u"", u"");
    const UnicodeString old = first.getFileName();
    ZRTempFile second(m_dir, u"", u"");
    first = second;
    EXPECT_EQ(first.getFileName(), second.releaseFileName());
    EXPECT_TRUE(fs::exists(pathOf(old)));
}

TEST_F(TempFiles, ADestructorReportsWhatItCannotRemove) {
    const UnicodeString folder = text(m_folder.path());
    const std::string expected =
        "0x100D Cannot remove temporary file: " + m_folder.path() + "\n [ZroCommon::ZRTempFile]";
    EXPECT_EQ(errorOf([&folder] { ZRTempFile().setFileName(folder); }), expected);
    EXPECT_THROW(
        {
            ZRTempFile file;
            file.setFileName(folder);
            throw std::runtime_error("something else");
        },
        std::runtime_error)
        << "but not while another exception is under way";
}

TEST_F(TempFiles, ExpandsDeflatedBlocks) {
    const std::string bytes = noise(100000);
    const std::string block = deflated(bytes);
    const auto size = static_cast<unsigned>(block.size());
    const ZRTempFile file(m_dir, u"", u"");
    EXPECT_TRUE(file.inflate(bytesOf(block), size));
    EXPECT_EQ(contentOf(file.getFileName()), bytes);
    EXPECT_FALSE(file.inflate(bytesOf(block), size / 2));
    const std::string half = contentOf(file.getFileName());
    EXPECT_TRUE(bytes.starts_with(half) && half.size() > bytes.size() / 3);
    EXPECT_FALSE(file.inflate(nullptr, 0));
    EXPECT_FALSE(ZRTempFile().inflate(bytesOf(block), size)) << "no file";
    std::ostringstream stream;
    EXPECT_TRUE(ZRTempFile::inflate(stream, bytesOf(block), size));
    EXPECT_EQ(stream.str(), bytes);
}

TEST_F(TempFiles, AFullDiskIsNoSuccess) {
    const std::string large = deflated(noise(100000));
    std::ofstream full("/dev/full");
    EXPECT_FALSE(ZRTempFile::inflate(full, bytesOf(large), static_cast<unsigned>(large.size())));
    const std::string block = deflated(noise(1000));
    const ZRTempFile file(m_dir, u"", u"");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{.rlim_cur = 500, .rlim_max = before.rlim_max};
    auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const bool done = file.inflate(bytesOf(block), static_cast<unsigned>(block.size()));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(done) << "what waits in memory counts";
}

TEST_F(TempFiles, ThreadsNeverShareANameAndTheHostKeepsItsRandomNumbers) {
    std::srand(7);
    const int expected = std::rand();
    std::srand(7);
    std::mutex lock;
    std::set<std::string> all;
    inThreads(8, [&](int) {
        for (int i = 0; i < 1250; ++i) {
            const std::string name = utf8(make());
            const std::lock_guard guard(lock);
            all.insert(name);
        }
    });
    EXPECT_EQ(all.size(), 10000U);
    EXPECT_EQ(std::rand(), expected);
    for (const std::string& name : all) {
        ASSERT_EQ(fs::status(name).permissions(), kOwnerOnly) << name;
    }
}

}  // namespace
}  // namespace ZroCommon::testing
