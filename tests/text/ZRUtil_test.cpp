#include "zro/text/ZRUtil.h"

#include <limits>
#include <sstream>

#include "tests/support/Test.h"
#include "zro/text/ZRUUID.h"

namespace ZroCommon::testing {
namespace {

std::string encoded(const std::string& bytes, int sizeHint = 0) {
    std::istringstream in(bytes);
    return utf8(ZRUtil::encodeBase64(in, sizeHint));
}

std::string decoded(const UnicodeString& base64) {
    std::ostringstream out;
    ZRUtil::decodeBase64(base64.getBuffer(), base64.length(), out);
    return out.str();
}

TEST(ZRUtil, EncodesBase64) {
    expectTexts(
        [](const std::string& bytes) { return encoded(bytes); },
        {" -> ", "f -> Zg==", "fo -> Zm8=", "foobar -> Zm9vYmFy", "\xFB\xEF\xBF\xFF -> +++//w=="});
    std::string bytes;
    for (int i = 0; i < 3 * 3072 + 2; ++i) {
        bytes += static_cast<char>(i * 7 + i / 256);
    }
    for (const std::size_t length : {1U, 3071U, 3072U, 3073U, 6144U, 9218U}) {
        const std::string piece = bytes.substr(0, length);
        EXPECT_EQ(decoded(text(encoded(piece, -1))), piece) << length;
    }
    for (const int hint : {std::numeric_limits<int>::min(), 1, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(encoded("foo", hint), "Zm9v") << "no promise: " << hint;
    }
    std::istringstream failed("foo");
    failed.setstate(std::ios::failbit);
    EXPECT_TRUE(ZRUtil::encodeBase64(failed, 3).isEmpty());
}

TEST(ZRUtil, MakesDataUris) {
    std::istringstream in("foobar");
    EXPECT_EQ(utf8(ZRUtil::encodeBase64(in, 3, text("text/plain"), text("charset=utf-8"))),
              "data:text/plain;charset=utf-8;base64,Zm9vYmFy");
    in.clear();
    in.str("foo");
    EXPECT_EQ(utf8(ZRUtil::encodeBase64(in, 3, text("image/png"), UnicodeString())),
              "data:image/png;base64,Zm9v");
}

TEST(ZRUtil, DecodesBase64) {
    expectTexts([](const std::string& base64) { return decoded(text(base64)); },
                {"Zm9vYmFy -> foobar", "Zm9v\r\nYmFy -> foobar",
                 " Z m-9_v\u00E9.Y\u3042mFy{ -> foobar",  // what is not of the alphabet
                 "Zg== -> f", "Zm9v=YmFy -> foo", "Zm9vY=mFy -> foo",
                 "Zg -> f",  // bytes count as soon as they are whole
                 "Zm8 -> fo", "Zm9vY -> foo", "= -> ", " -> "});
    std::ostringstream out;
    ZRUtil::decodeBase64(u"Zm9vYmFy", 4, out);
    ZRUtil::decodeBase64(nullptr, 0, out);
    ZRUtil::decodeBase64(nullptr, -1, out);
    EXPECT_EQ(out.str(), "foo") << "as many characters as are given";
}

TEST(ZRUtil, NamesEncodingsAsIanaDoes) {
    const auto standard = [](const std::string& name) {
        return utf8(ZRUtil::getStandardEncoding(text(name)));
    };
    expectTexts(standard, {" -> UTF-8", " utf-8  -> UTF-8",
                           "iso-8859-1 -> ISO_8859-1:1987",  // a Turkish i would be another
                           "utf-16 -> UTF-16LE", "UTF-16BE -> UTF-16BE", "utf-32 -> UTF-32LE",
                           "shift_jis -> Shift_JIS", "ChineseBig5 -> Big5", "ChineseGBK -> GBK",
                           "KoreanKSC -> EUC-KR", "ANSI_X3.4 -> ANSI_X3.4-1968",
                           "ISO_646.irv -> ANSI_X3.4-1968", "klingon -> ", "utf-8\u00E9 -> ",
                           "uTf-8 but much longer than any name of an encoding could ever be -> "});
    EXPECT_EQ(standard(std::string("UTF-8\0x", 7)), "");
}

TEST(ZRUUID, IsRandomOfVersion4) {
    const ZRUUID first;
    const ZRUUID second;
    const std::string digits = utf8(first.toString());
    EXPECT_EQ(digits.size(), 32U);
    EXPECT_EQ(digits.find_first_not_of("0123456789ABCDEF"), std::string::npos);
    EXPECT_EQ(digits[12], '4');
    EXPECT_NE(std::string("89AB").find(digits[16]), std::string::npos);
    EXPECT_NE(first.toString(), second.toString());
    ZRUUID copy(first);
    EXPECT_TRUE(copy == first && !(copy == second));
    copy = second;
    EXPECT_TRUE(copy == second);
}

}  // namespace
}  // namespace ZroCommon::testing
