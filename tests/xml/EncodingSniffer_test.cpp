#include "zro/xml/internal/EncodingSniffer.h"

#include <locale>
#include <sstream>
#include <string_view>

#include "tests/support/Test.h"

namespace ZroCommon::internal {
namespace {

using namespace std::string_view_literals;

// "mode name bom characters rest", as in "3 UTF-16 bom 3C, 61".
std::string sniffed(std::string_view bytes, EncodingMode preset = EncodingMode::Unknown) {
    std::istringstream stream{std::string(bytes)};
    ByteSource source;
    source.open(&stream);
    Encoding encoding;
    encoding.mode = preset;
    const Sniffed result = sniffEncoding(source, encoding);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << static_cast<int>(encoding.mode) << ' ' << testing::utf8(encoding.name)
         << (encoding.bomSeen ? " bom" : "") << (result.isValid ? "" : " invalid") << std::hex
         << std::uppercase;
    for (std::size_t i = 0; i < result.characterCount; ++i) {
        text << ' ' << static_cast<unsigned>(result.characters[i]);
    }
    text << ", ";
    for (int byte = source.get(); byte != -1; byte = source.get()) {
        text << byte << ' ';
    }
    return text.str();
}

TEST(EncodingSniffer, FindsTheEncodingByTheFirstBytes) {
    const auto plain = [](std::string_view bytes) {
        return sniffed(bytes);
    };
    testing::expectRows<std::string_view, const char*>(
        plain, {
                   {"\0\0\xFE\xFFz"sv, "7 UTF-32 bom, 7A "},
                   {"\0\0\0<a"sv, "7 UTF-32BE 3C, 61 "},
                   {"\0\0\x12\x34z"sv, "7 UTF-32BE 1234, 7A "},
                   {"\0<\0a"sv, "4 UTF-16BE 3C, 0 61 "},
                   {"<\0\0\0a"sv, "6 UTF-32LE 3C, 61 "},
                   {"<\0\0\x12z"sv, "3 UTF-16LE 3C 1200, 7A "},
                   {"<\0a\0"sv, "3 UTF-16LE 3C, 61 0 "},
                   {"<a"sv, "1 UTF-8 3C, 61 "},
                   {"\xEF\xBB\xBF<"sv, "1 UTF-8 bom, 3C "},
                   {"\xFE\xFF\0<"sv, "4 UTF-16 bom, 0 3C "},
                   {"\xFF\xFE\0\0<"sv, "6 UTF-32 bom, 3C "},
                   {"\xFF\xFE<\0a"sv, "3 UTF-16 bom 3C, 61 "},
                   {"\xFF\xFE\0\x12"sv, "3 UTF-16 bom 1200, "},
                   {" <a"sv, "0 , 20 3C 61 "},
                   {"\xF0\x9F"sv, "0 , F0 9F "},
                   // Inputs that end inside a row keep its mode.
                   {"<"sv, "1 UTF-8 3C, "},
                   {"<\0"sv, "3 UTF-16LE 3C, "},
                   {"<\0\0"sv, "3 UTF-16LE 3C, "},
                   {"\0"sv, "4 UTF-16BE, "},
                   {"\0\0<"sv, "7 UTF-32BE, "},
                   {"\xFF\xFE"sv, "3 UTF-16 bom, "},
                   {"\xFF\xFE<"sv, "3 UTF-16 bom, "},
                   {"\xEF\xBB\0z"sv, "0  invalid, 7A "},
                   {"\xEFzy"sv, "0  invalid, 79 "},
                   {"\xFEzy"sv, "0  invalid, 79 "},
                   {"\xFFzy"sv, "0  invalid, 79 "},
               });
}

TEST(EncodingSniffer, APresetStandsAgainstALessThanSign) {
    EXPECT_EQ(sniffed("<a"sv, EncodingMode::Latin1), "9 , 3C 61 ");
    EXPECT_EQ(sniffed("<a"sv, EncodingMode::Utf16Unknown), "1 UTF-8 3C, 61 ");
    EXPECT_EQ(sniffed("<\0a\0"sv, EncodingMode::Utf16Unknown), "3 UTF-16LE 3C, 61 0 ");
    EXPECT_EQ(sniffed("\xFE\xFF\0a"sv, EncodingMode::Latin1), "4 UTF-16 bom, 0 61 ");
}

}  // namespace
}  // namespace ZroCommon::internal
