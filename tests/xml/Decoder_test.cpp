#include "zro/xml/internal/Decoder.h"

#include <array>
#include <random>
#include <string_view>
#include <vector>

#include "tests/support/Test.h"

namespace ZroCommon::internal {
namespace {

using Mode = EncodingMode;

const unsigned char* bytesOf(std::string_view bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

// Decodes all, what the window cannot hold singly. \param left  takes the number of bytes left
std::u32string decodeAll(Mode mode, std::string_view bytes, InputTail tail = InputTail::Closed,
                         std::size_t* left = nullptr) {
    std::u32string result;
    std::array<char16_t, 64> window{};
    const unsigned char* at = bytesOf(bytes);
    const unsigned char* const end = at + bytes.size();
    for (;;) {
        Decoding state{at, end, window.data(), window.data() + window.size()};
        const DecodeStop stop = decode(mode, state, tail);
        at = state.bytes;
        for (const char16_t* unit = window.data(); unit != state.units; ++unit) {
            const bool pair = (*unit & 0xFC00U) == 0xD800U;
            result += pair ? 0x10000 + ((*unit & 0x3FFU) << 10U) + (unit[1] & 0x3FFU)
                           : static_cast<char32_t>(*unit);
            unit += pair ? 1 : 0;
        }
        if (stop == DecodeStop::NeedsBytes) {
            if (left != nullptr) {
                *left = static_cast<std::size_t>(end - at);
            }
            return result;
        }
        if (stop == DecodeStop::Unrepresented) {
            const DecodedOne one = decodeOne(mode, at, end, true);
            result += one.character;
            at += one.length;
        }
    }
}

void expectDecoded(testing::Rows<Mode, std::string_view, std::u32string_view> rows) {
    testing::expectRows([](Mode mode, std::string_view bytes) { return decodeAll(mode, bytes); },
                        rows);
}

using namespace std::string_view_literals;

TEST(Decoder, Utf8IsDecodedByShapeAlone) {
    expectDecoded({
        {Mode::Utf8, "a\xC3\xA9\xE3\x81\x82\xF0\x9F\x98\x80z"sv, U"a\u00E9\u3042\U0001F600z"sv},
        {Mode::Utf8, "\xC0\x80"sv, U"\0"sv},          // overlong
        {Mode::Utf8, "\xC0\xBC"sv, U"<"sv},           // overlong
        {Mode::Utf8, "\xE0\x82\xAC"sv, U"\u00AC"sv},  // overlong
        {Mode::Utf8, "\xE0\x41z"sv, U"\uFFFDz"sv},    // the 41 is used up
        {Mode::Utf8, "\x80zyx"sv, U"\uFFFDyx"sv},
        {Mode::Utf8, "\x80\x80\x80\x80z"sv, U"\uFFFDz"sv},  // up to three more
        {Mode::Utf8, "\xF8\x80\x80\x80z"sv, U"\uFFFDz"sv},
        {Mode::Utf8, "\xFFzy"sv, U"\uFFFDy"sv},
        {Mode::Utf8, "\xE3\x81z"sv, U"\uFFFD"sv},
        {Mode::Utf8, "\xF0\x9F\x98z!"sv, U"\uFFFD!"sv},
        {Mode::Utf8, "a\xE3"sv, U"a\uFFFD"sv},  // cut at the end
        {Mode::Utf8, "a\xF0\x9F\x98"sv, U"a\uFFFD"sv},
        {Mode::Utf8, "\xEF\xBF\xBDz"sv, U"\uFFFDz"sv},
    });
}

TEST(Decoder, WideEncodingsAndLineEnds) {
    expectDecoded({
        {Mode::Utf16LE, "a\0\x3D\xD8\x00\xDEz\0"sv, U"a\U0001F600z"sv},
        {Mode::Utf16BE, "\0a\xD8\x3D\xDE\x00\0z"sv, U"a\U0001F600z"sv},
        {Mode::Utf16LE, "\x3D\xD8z\0y\0"sv, U"\uFFFDy"sv},  // a lead takes its neighbour with it
        {Mode::Utf16LE, "a\0z"sv, U"a\uFFFD"sv},
        {Mode::Utf16LE, "\x3D\xD8\x00"sv, U"\uFFFD"sv},
        {Mode::Utf32LE, "a\0\0\0\x00\xF6\x01\0b\0\0"sv, U"a\U0001F600\uFFFD"sv},
        {Mode::Utf32BE, "\0\0\0a\0\x01\xF6\x00"sv, U"a\U0001F600"sv},
        {Mode::Latin1, "a\xE9\xFF"sv, U"a\u00E9\u00FF"sv},
        {Mode::Ascii, "a\xE9"sv, U"a\u00E9"sv},
        {Mode::Unknown, "\xC3\xA9"sv, U"\u00C3\u00A9"sv},
        // Every line end becomes one line feed.
        {Mode::Utf8, "a\r\nb\rc\nd\xC2\x85 \xE2\x80\xA8 \r\xC2\x85g"sv, U"a\nb\nc\nd\n \n \ng"sv},
        {Mode::Utf8, "\r\r\n\n\r"sv, U"\n\n\n\n"sv},
        {Mode::Utf8, "\r\xE2\x80\xA8"sv, U"\n\n"sv},
        {Mode::Utf8, "\xC0\x8D\nz"sv, U"\nz"sv},  // an overlong CR is one too
        {Mode::Latin1, "a\r\x85 \x85 \r\nd"sv, U"a\n \n \nd"sv},
        {Mode::Utf16LE, "\r\0\n\0\x28\x20\r\0\x85\0z\0"sv, U"\n\n\nz"sv},
        {Mode::Utf32BE, "\0\0\0\r\0\0\0\n\0\0\0\x85\0\0\0z"sv, U"\n\nz"sv},
    });
}

TEST(Decoder, WhatUtf16CannotCarryLeavesTheWindow) {
    for (const auto& [mode, bytes, character] : testing::Rows<Mode, std::string_view, unsigned>{
             {Mode::Utf8, "\xED\xA0\x80"sv, 0xD800},
             {Mode::Utf8, "\xED\xB0\x80"sv, 0xDC00},
             {Mode::Utf8, "\xEF\xBF\xBF"sv, 0xFFFF},
             {Mode::Utf8, "\xF4\x90\x80\x80"sv, 0x110000},
             {Mode::Utf16LE, "\x00\xDC"sv, 0xDC00},
             {Mode::Utf16BE, "\xFF\xFF"sv, 0xFFFF},
             {Mode::Utf32LE, "\x00\x00\x11\x00"sv, 0x110000},
             {Mode::Utf32BE, "\xFF\xFF\xFF\xFF"sv, 0xFFFFFFFF},
             {Mode::Utf32BE, "\x00\x00\xD8\x00"sv, 0xD800},
         }) {
        EXPECT_EQ(decodeAll(mode, bytes), std::u32string(1, character)) << std::hex << character;
    }
    EXPECT_EQ(decodeAll(Mode::Utf8, "\xED\xA0\x80\xED\xB0\x80").size(), 2U)
        << "two of them never join to one character";
}

// On purpose: a character read ahead is lost when it is U+FFFF or the document's end cuts it.
TEST(Decoder, AReturnTakesAnFfffAndACutSequenceWithIt) {
    expectDecoded({
        {Mode::Utf8, "a\r\xEF\xBF\xBFz"sv, U"a\nz"sv},
        {Mode::Utf16BE, "\0\r\xFF\xFF\0z"sv, U"\nz"sv},
        {Mode::Utf8, "a\r\xE2\x80"sv, U"a\n"sv},
        {Mode::Utf16LE, "\r\0z"sv, U"\n"sv},
    });
    EXPECT_EQ(decodeAll(Mode::Utf8, "a\r\xE2\x80", InputTail::Nested), U"a\n\uFFFD");
}

TEST(Decoder, AnOpenInputKeepsWhatIsNotWhole) {
    const auto kept = [](Mode mode, std::string_view bytes) {
        std::size_t left = 0;
        decodeAll(mode, bytes, InputTail::Open, &left);
        return left;
    };
    testing::expectRows<Mode, std::string_view, std::size_t>(kept, {{Mode::Utf8, "ab\xE3\x81"sv, 2},
                                                                    {Mode::Utf8, "ab\r"sv, 1},
                                                                    {Mode::Utf8, "ab\r\xC2"sv, 2},
                                                                    {Mode::Utf16LE, "a\0b"sv, 1}});
}

// The same one character at a time, by the plain rules.
std::u32string decodeSingly(Mode mode, std::string_view bytes) {
    std::u32string result;
    const unsigned char* at = bytesOf(bytes);
    const unsigned char* const end = at + bytes.size();
    while (at != end) {
        const DecodedOne one = decodeOne(mode, at, end, true);
        at += one.length;
        const bool isReturn = one.character == U'\r';
        if (isReturn && at != end) {
            const DecodedOne two = decodeOne(mode, at, end, true);
            at += isTakenByReturn(two, InputTail::Closed) ? two.length : 0;
        }
        const bool isEnd = isReturn || one.character == 0x85 || one.character == 0x2028;
        result += isEnd ? U'\n' : one.character;
    }
    return result;
}

std::string randomBytes(std::mt19937& random) {
    static constexpr std::string_view kBytes =
        "a\r\n\xC2\x85\xE2\x80\xA8\xED\xA0\xF0\x9F\xEF\xBF\0<"sv;
    std::string bytes(random() % 60, 'x');
    for (char& byte : bytes) {
        byte = random() % 4 != 0 ? 'x' : kBytes[random() % kBytes.size()];
    }
    return bytes;
}

TEST(Decoder, BlocksAndSingleCharactersAgree) {
    static constexpr std::array kModes = {Mode::Unknown, Mode::Utf8,    Mode::Utf16LE,
                                          Mode::Utf16BE, Mode::Utf32LE, Mode::Latin1};
    std::mt19937 random(7);
    for (int round = 0; round < 4000; ++round) {
        const std::string bytes = randomBytes(random);
        for (const Mode mode : kModes) {
            ASSERT_EQ(decodeAll(mode, bytes), decodeSingly(mode, bytes))
                << ::testing::PrintToString(bytes) << " mode " << static_cast<int>(mode);
        }
    }
}

}  // namespace
}  // namespace ZroCommon::internal
