#include "zro/streams/transcoding/ZRTCVStream.h"

#include <cstdlib>

#include "tests/support/Skips.h"
#include "tests/support/Streams.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

using namespace std::string_literals;

// What is left of a stream of UTF-16LE, as UTF-8.
std::string textOf(std::istream& stream) {
    const std::string bytes = restOf(stream);
    UnicodeString text;
    for (std::size_t index = 0; index + 1 < bytes.size(); index += 2) {
        const auto low = static_cast<unsigned char>(bytes[index]);
        const auto high = static_cast<unsigned char>(bytes[index + 1]);
        text += static_cast<char16_t>(high << 8 | low);
    }
    return utf8(text) + (bytes.size() % 2 == 0 ? "" : " and a byte");
}

std::string decodedFrom(std::istream& source, const char* encoding) {
    ZRTCVStream stream(&source, encoding);
    return stream.is_open() ? textOf(stream) : "not open";
}

// The text of some bytes, or "not open".
std::string decoded(const char* encoding, const std::string& bytes) {
    std::istringstream source(bytes);
    return decodedFrom(source, encoding);
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t index = 0; index < count; ++index) {
        all += text;
    }
    return all;
}

TEST(ZRTCVStream, DeliversTheTextOfManyEncodings) {
    const Rows<const char*, std::string, const char*> cases = {
        {"shift_jis", "a\x82\xA0\x87\x40", "aあ①"},
        {"Shift-JIS", "\x87\x40", "①"},
        {"Windows-31J", "\x87\x40", "①"},
        {"EUC-JP", "\xA4\xA2", "あ"},
        {"ISO-2022-JP", "\x1B$B$\"\x1B(Ba", "あa"},
        {"GBK", "\x81\x40\xA3\xAC", "丂，"},
        {"gb2312", "\x81\x40", "丂"},
        {"GB18030", "\x81\x30\x81\x30", "\xC2\x80"},
        {"Big5", "\xA4\xA4\xA4\xE5", "中文"},
        {"ks_c_5601-1987", "\x81\x41\xB0\xA1", "갂가"},
        {"EUC-KR", "\xB0\xA1", "가"},
        {"KOI8-R", "\xF0\xD2\xC9", "При"},
        {"windows-1251", "\xCF\xF0\xE8", "При"},
        {"ISO-8859-2", "\xB9", "š"},
        {"UTF-8", "\xF0\x9F\x98\x80", "😀"},
        {"UTF-16", "\xFE\xFF\x30\x42", "あ"},
        {"UTF-16", "\xFF\xFE\x42\x30", "あ"},
        {"UTF-16", "\x42\x30", "あ"},
        {"UTF-16BE", "\xFE\xFF\x30\x42", "\uFEFFあ"},
        {"UTF-32", "\0\0\0a"s, "a"},
        {"EUC-JP", "", ""},
        {"Shift_JIS", "a\xA0z", "a\uFFFDz"},
        {"Shift_JIS", "a\x82", "a\uFFFD"},
        {"EUC-JP", "\x8F\xA2", "\uFFFD"},
        {"UTF-8", "a\xC3(", "a\uFFFD("},
        {"UTF-16LE", "a\0b"s, "a\uFFFD"}};
    expectRows(decoded, cases);
}

TEST(ZRTCVStream, OnlyNamesOfEncodingsOpenIt) {
    for (const char* name : {"", " ", "klingon", "-", ",version=1", "../EUC-JP", "x/EUC-JP",
                             "EUC-JP\xC3\xA9", "./EUC-JP"}) {
        EXPECT_EQ(decoded(name, "a"), "not open") << "name: " << name;
    }
    ZRTCVStream overNothing(nullptr, "EUC-JP");
    EXPECT_TRUE(overNothing.is_open());
    EXPECT_EQ(textOf(overNothing), "");
    EXPECT_FALSE(ZRTCVStream(nullptr, "klingon").is_open());
    EXPECT_FALSE(ZRTCVStream(nullptr, nullptr).is_open());
    EXPECT_EQ(decoded(nullptr, ""), "not open");
}

// Blocks end within characters and escape sequences; 5000 characters fill several of them.
TEST(ZRTCVStream, ReadsAcrossEveryBoundary) {
    for (const auto& [encoding, unit, text] : Rows<const char*, const char*, const char*>{
             {"ISO-2022-JP", "\x1B$B$\"\x1B(Ba\x1B$B$\"\x1B(Bb", "あaあb"},
             {"GB18030", "\x81\x30\x81\x30x\x90\x30\x81\x30", "\xC2\x80x\U00010000"},
             {"Shift_JIS", "\x82\xA0y\x87\x40", "あy①"}}) {
        const std::string bytes = "z" + repeated(unit, 1300);
        const std::string expected = "z" + repeated(text, 1300);
        EXPECT_TRUE(decoded(encoding, bytes) == expected) << encoding;
        StreamOver<ShortReadBuf> shortReads(bytes);
        EXPECT_TRUE(decodedFrom(shortReads, encoding) == expected) << encoding << " byte by byte";
    }
}

TEST(ZRTCVStream, AFailingSourceIsAnEnd) {
    const std::string bytes = repeated("\xA4\xA2\xA4\xA4", 1500);
    const std::string whole = repeated("あい", 1500);
    for (std::size_t at = 0; at < bytes.size(); at += at < 20 || at / 8 == 512 ? 1U : 171U) {
        StreamOver<FailAtBuf> failing(bytes, at);
        StreamOver<ThrowAtBuf> throwing(bytes, at);
        throwing.exceptions(at % 4 < 2 ? std::ios_base::badbit : std::ios_base::goodbit);
        const std::string expected = whole.substr(0, at / 2 * 3) + (at % 2 == 0 ? "" : "\uFFFD");
        EXPECT_EQ(decodedFrom(failing, "EUC-JP"), expected) << "failing at " << at;
        EXPECT_EQ(decodedFrom(throwing, "EUC-JP"), expected) << "throwing at " << at;
    }
}

TEST(ZRTCVStream, SixteenBytesCanBePutBackBehindARefill) {
    std::istringstream source(repeated("ab", 3000));
    ZRTCVStream stream(&source, "ISO-8859-2");
    stream.ignore(4096);
    EXPECT_EQ(stream.get(), 'a');
    int count = 0;
    while (stream.unget()) {
        ++count;
    }
    EXPECT_EQ(count, 17) << "the byte read, and sixteen";
    stream.clear();
    EXPECT_EQ(textOf(stream).substr(0, 10), "ababababab");
}

TEST(ZRTCVStream, ASlowSourceIsNotWaitedFor) {
    StreamOver<PiecewiseBuf> source(repeated("\xA4\xA2", 100), 20);
    ZRTCVStream stream(&source, "EUC-JP");
    EXPECT_EQ(source.buffer.refills(), 1U);
    stream.ignore(21);
    EXPECT_EQ(source.buffer.refills(), 2U);
}

// Detection.

std::string detected(const std::string& bytes) {
    std::istringstream source(bytes);
    UnicodeString name;
    bool flag = false;
    const bool found = ZRTCVStream::detectEncoding(&source, name, flag);
    EXPECT_EQ(source.tellg(), 0);
    EXPECT_EQ(flag, !name.isEmpty());
    return utf8(name) + (found ? "" : name.isEmpty() ? "none" : ", but not by its start");
}

TEST(ZRTCVStream, DetectsEncodings) {
    const std::string japanese = repeated("日本語の文書です。これは試験、", 8);
    const auto encoded = [&](const char* encoding) {
        std::string bytes(2000, '\0');
        bytes.resize(static_cast<std::size_t>(
            text(japanese).extract(0, 2000, bytes.data(), 2000U, encoding)));
        return bytes;
    };
    expectRows<std::string, const char*>(
        detected, {{encoded("Shift_JIS"), "WINDOWS31J"},
                   {encoded("EUC-JP"), "EUC-JP"},
                   {encoded("ISO-2022-JP"), "ISO-2022-JP"},
                   {japanese, "UTF-8"},
                   {"\xFF\xFE" + encoded("UTF-16LE"), "UTF-16LE"},
                   {"\xFE\xFF" + encoded("UTF-16BE"), "UTF-16BE"},
                   {"<\0x\0>\0"s + encoded("UTF-16LE").substr(0, 60), "UTF-16LE"},
                   {"\0<\0x\0>"s + encoded("UTF-16BE").substr(0, 60), "UTF-16BE"},
                   {repeated("\xB0\xA1\xB3\xAA\xB4\xD9 ", 60), "KoreanKSC"},
                   {repeated("\xA4\xA4\xA4\xE5\xA6\x72", 60), "ChineseBIG5"},
                   {repeated("\xD6\xD0\xCE\xC4\xB5\xC4", 60), "GB18030"},
                   {repeated("What is written in plain English. ", 10), "ISO-8859-1"},
                   {repeated("x", 200) + encoded("EUC-JP"), "EUC-JP, but not by its start"},
                   {"", "none"},
                   {std::string(300, '\0'), "none"},
                   {"\x82\xA0", "none"}});
    EXPECT_EQ(decoded(nullptr, encoded("Shift_JIS")), japanese);
}

// A source that tells of faults by what its buffer throws.
class ThrowingSeekBuf : public PiecewiseBuf {
public:
    using PiecewiseBuf::PiecewiseBuf;

protected:
    pos_type seekpos(pos_type, std::ios_base::openmode) override { throw 1; }
};

TEST(ZRTCVStream, DetectsTheEncodingOfFilesAndOfSourcesThatThrowOnSeeking) {
    StreamOver<ThrowingSeekBuf> source(repeated("text ", 100));
    source.exceptions(std::ios::badbit);
    UnicodeString name;
    bool flag = false;
    EXPECT_TRUE(ZRTCVStream::detectEncoding(&source, name, flag));
    EXPECT_EQ(utf8(name), "ISO-8859-1");
    const TempFolder folder;
    folder.write("a b.txt", repeated("日本語", 30));
    EXPECT_TRUE(ZRTCVStream::detectEncoding((folder.path() + "/a b.txt").c_str(), name, flag));
    EXPECT_EQ(utf8(name), "UTF-8");
    EXPECT_FALSE(ZRTCVStream::detectEncoding((folder.path() + "/none").c_str(), name, flag));
    EXPECT_FALSE(ZRTCVStream::detectEncoding(static_cast<const char*>(nullptr), name, flag));
}

TEST(ZRTCVStream, TablesOfACallerGoFirst) {
#ifdef ZRO_MAKECONV
    const TempFolder folder;
    folder.write("x-own.ucm", "<code_set_name> \"x-own\"\n<mb_cur_max> 1\n<mb_cur_min> 1\n"
                              "<uconv_class> \"SBCS\"\n<subchar> \\x3F\n<icu:charsetFamily> "
                              "\"ASCII\"\nCHARMAP\n<U0061> \\x61 |0\n<U3042> \\x80 |0\n"
                              "END CHARMAP\n");
    const std::string make = "cd " + folder.path() + "; " ZRO_MAKECONV " x-own.ucm >/dev/null 2>&1";
    ASSERT_EQ(std::system(make.c_str()), 0);  // NOLINT(cert-env33-c): the tool is ICU's
    EXPECT_EQ(decoded("x-own", "a\x80"), "not open");
    ZRTCVStream::setTCVTablePath(text(folder.path() + "/"));
    EXPECT_EQ(decoded("x-own", "a\x80"), "aあ");
    EXPECT_EQ(decoded("EUC-JP", "\xA4\xA2"), "あ");
    ZRTCVStream::setTCVTablePath(u"");
    EXPECT_EQ(decoded("x-own", "a\x80"), "not open");
#else
    GTEST_SKIP() << missing("ICU's program makeconv when this was configured",
                            "the CMake variable ZRO_MAKECONV may name it");
#endif
}

}  // namespace
}  // namespace ZroCommon::testing
