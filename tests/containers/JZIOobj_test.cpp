// Where compound files get their bytes from.
#include "zro/containers/ole/JZIOobj.h"

#include <fcntl.h>
#include <sstream>

#include "tests/support/Streams.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

std::string readAll(JZIOobj& io) {
    std::string bytes(100, '\0');
    bytes.resize(static_cast<std::size_t>(io.Read(bytes.data(), 100)));
    return bytes;
}

TEST(JZIOobj, DoesNothingByItself) {
    JZIOobj io;
    unsigned char byte = 0;
    EXPECT_FALSE(io.Open() || io.Close() || io.Seek(0, 0));
    EXPECT_EQ(io.Read(&byte, 1) + io.Write(&byte, 1) + io.Tell(), 0);
    EXPECT_FALSE(io.IsOpened() || io.IsMACBinary() || io.IsBinary() || io.IsWritable());
}

TEST(JZFileIOobj, LettersOfAModeCountInTheirOrder) {
    const struct {
        const char* mode;
        bool isWritable;
        bool isBinary;
    } cases[] = {{"rb", false, true},  {"wb", true, true},     {"w", true, false},
                 {"wr", false, false}, {"xbt+", false, false}, {nullptr, false, false}};
    for (const auto& [mode, isWritable, isBinary] : cases) {
        const JZFileIOobj io("f", mode);
        EXPECT_EQ(io.IsWritable(), isWritable) << mode;
        EXPECT_EQ(io.IsBinary(), isBinary) << mode;
        EXPECT_FALSE(io.IsOpened());
    }
}

TEST(JZFileIOobj, ReadsAndSeeks) {
    const TempFolder folder;
    folder.write("f", std::string(128, 'm') + "0123456789");
    JZFileIOobj io((folder.path() + "/f").c_str(), "rb");
    EXPECT_EQ(readAll(io), "") << "not open yet";
    EXPECT_EQ(io.Tell(), -1);
    ASSERT_TRUE(io.Open());
    EXPECT_TRUE(io.Open()) << "once more";
    EXPECT_TRUE(io.Seek(-3, 2));
    EXPECT_EQ(readAll(io), "789");
    EXPECT_EQ(readAll(io), "");
    io.SetMACBinary(true);
    EXPECT_TRUE(io.Seek(4, 0)) << "behind the header";
    EXPECT_TRUE(io.Seek(2, 1));
    EXPECT_EQ(io.Tell(), 134);
    EXPECT_EQ(readAll(io), "6789");
    EXPECT_FALSE(io.Seek(-129, 0));
    EXPECT_FALSE(io.Seek(0, 3));
    EXPECT_EQ(io.Write("x", 1), 0) << "it is not writable";
    EXPECT_TRUE(io.Close());
    EXPECT_FALSE(io.IsOpened());
    ASSERT_TRUE(io.Open());
    EXPECT_EQ(readAll(io), "0123456789") << "opening goes behind the header";
}

TEST(JZFileIOobj, OpensFilesAlone) {
    const TempFolder folder;
    EXPECT_FALSE(JZFileIOobj(folder.path().c_str(), "rb").Open());
    EXPECT_FALSE(JZFileIOobj(folder.path().c_str(), "wb").Open());
    EXPECT_FALSE(JZFileIOobj((folder.path() + "/missing").c_str(), "rb").Open());
    EXPECT_FALSE(JZFileIOobj(nullptr, "rb").Open());
    folder.write("f", "abc");
    std::string mode = "rb";
    JZFileIOobj io(open((folder.path() + "/f").c_str(), O_RDONLY), mode.data());
    EXPECT_TRUE(io.IsOpened());
    EXPECT_EQ(readAll(io), "abc");
    JZFileIOobj none(-7, mode.data());
    EXPECT_FALSE(none.IsOpened() || none.Open());
}

// On purpose: what was in a file stays where it is not written over.
TEST(JZFileIOobj, WritesIntoWhatIsThere) {
    const TempFolder folder;
    for (const auto& [name, result] : {std::pair("old", "abc3"), std::pair("new", "abc")}) {
        folder.write("old", "0123");
        JZFileIOobj io((folder.path() + "/" + name).c_str(), "wb");
        ASSERT_TRUE(io.Open()) << name;
        EXPECT_EQ(io.Write("abc", 3), 3);
        EXPECT_EQ(folder.read(name), result);
    }
}

TEST(JZStreamIOobj, ReadsAndSeeks) {
    std::istringstream stream(std::string(128, 'm') + "0123456789");
    stream.seekg(5);
    JZStreamIOobj io(&stream);
    EXPECT_TRUE(io.IsBinary());
    ASSERT_TRUE(io.Open());
    EXPECT_EQ(io.Tell(), 0) << "opening goes to the start";
    io.SetMACBinary(true);
    EXPECT_TRUE(io.Seek(4, 0));
    EXPECT_TRUE(io.Seek(1, 1));
    EXPECT_EQ(io.Tell(), 133);
    EXPECT_TRUE(io.Seek(-5, 7)) << "any other origin is the end";
    char bytes[5];
    EXPECT_EQ(io.Read(bytes, 5), 5);
    EXPECT_EQ(std::string(bytes, 5), "56789");
    EXPECT_EQ(io.Write(bytes, 5), 0);
    EXPECT_TRUE(io.Close());
}

// On purpose: nothing clears the state of the stream.
TEST(JZStreamIOobj, AShortReadEndsEverything) {
    std::istringstream stream("abc");
    JZStreamIOobj io(&stream);
    ASSERT_TRUE(io.Open());
    EXPECT_EQ(readAll(io), "abc");
    EXPECT_FALSE(io.Seek(0, 0));
    EXPECT_EQ(io.Tell(), -1);
    EXPECT_EQ(readAll(io), "");
}

TEST(JZStreamIOobj, StreamsThatThrowOrCannotSeekFail) {
    NoSeekBuf buffer("abc");
    std::istream unseekable(&buffer);
    EXPECT_FALSE(JZStreamIOobj(&unseekable).Open());
    EXPECT_FALSE(JZStreamIOobj(nullptr).Open());
    std::istringstream throwing("abc");
    throwing.exceptions(std::ios_base::failbit | std::ios_base::eofbit);
    JZStreamIOobj io(&throwing);
    ASSERT_TRUE(io.Open());
    EXPECT_FALSE(io.Seek(10, 0));
    EXPECT_EQ(readAll(io), "");
}

}  // namespace
}  // namespace ZroCommon::testing
