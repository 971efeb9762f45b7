// Bytes in any encoding, and text to be written in one, through streams in pieces; held against
// ICU's converters, which get all of it in one piece.
//
// The first byte: bit 0 to write, the others the size of the pieces; the second the limit of what
// is written. Then the encoding's name up to a line feed, empty to detect it, then the bytes, or
// the units of the text.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

#include <unicode/ucnv_cb.h>

#include "tests/support/IcuConverter.h"
#include "tests/support/Streams.h"
#include "zro/streams/transcoding/ZRTCVOStream.h"
#include "zro/streams/transcoding/ZRTCVStream.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::UnicodeString;
using ZroCommon::ZRTCVOStream;
using ZroCommon::ZRTCVStream;
using ZroCommon::fuzzing::require;
using ZroCommon::testing::icuConverter;

struct Peer {
    const char* name;
    const char* converter;
};

// Whose bytes do not hang on where pieces end.
constexpr std::array kPeers = {
    Peer{"Shift_JIS", "windows-31j"},   Peer{"Big5", "windows-950"},
    Peer{"GBK", "windows-936"},         Peer{"KOREAN", "windows-949"},
    Peer{"EUC-JP", "EUC-JP"},           Peer{"ISO-2022-JP", "ISO-2022-JP"},
    Peer{"GB18030", "GB18030"},         Peer{"EUC-KR", "EUC-KR"},
    Peer{"KOI8-R", "KOI8-R"},           Peer{"UTF-8", "UTF-8"},
    Peer{"UTF-16BE", "UTF-16BE"},       Peer{"UTF-16LE", "UTF-16LE"},
    Peer{"UTF-32LE", "UTF-32LE"},       Peer{"windows-1252", "windows-1252"},
    Peer{"ISO-2022-KR", "ISO-2022-KR"}, Peer{"HZ", "HZ"},
};

void writeReplacement(const void* /*context*/, UConverterToUnicodeArgs* args, const char* /*bytes*/,
                      int32_t /*length*/, UConverterCallbackReason reason, UErrorCode* status) {
    if (reason <= UCNV_IRREGULAR) {
        *status = U_ZERO_ERROR;
        const UChar replacement = 0xFFFD;
        ucnv_cbToUWriteUChars(args, &replacement, 1, 0, status);
    }
}

// ICU's own one lets through what it thinks nobody would miss.
void stop(const void* /*context*/, UConverterFromUnicodeArgs* /*args*/, const UChar* /*units*/,
          int32_t /*length*/, UChar32 /*character*/, UConverterCallbackReason /*reason*/,
          UErrorCode* /*status*/) {}

UnicodeString readInOnePiece(const char* name, std::string_view bytes) {
    const auto converter = icuConverter(name);
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter.getAlias(), writeReplacement, nullptr, nullptr, nullptr, &status);
    std::u16string units(bytes.size() * 4 + 16, u'\0');
    char16_t* to = units.data();
    const char* from = bytes.data();
    ucnv_toUnicode(converter.getAlias(), &to, to + units.size(), &from, from + bytes.size(),
                   nullptr, 1, &status);
    require(U_SUCCESS(status) != 0);
    return {units.data(), static_cast<int32_t>(to - units.data())};
}

UnicodeString asText(const std::string& bytes) {
    UnicodeString text;
    for (std::size_t index = 0; index < bytes.size(); index += 2) {
        const auto low = static_cast<unsigned char>(bytes[index]);
        const auto high = static_cast<unsigned char>(bytes[index + 1]);
        text += static_cast<char16_t>(high << 8 | low);
    }
    return text;
}

const Peer* peerOf(const std::string& name) {
    const auto* const peer = std::find_if(kPeers.begin(), kPeers.end(),
                                          [&name](const Peer& row) { return name == row.name; });
    return peer == kPeers.end() ? nullptr : peer;
}

std::string readInPieces(std::istream& stream, std::size_t step) {
    std::string all;
    std::string piece(step, '\0');
    while (stream.read(piece.data(), static_cast<std::streamsize>(step)) || stream.gcount() > 0) {
        all.append(piece, 0, static_cast<std::size_t>(stream.gcount()));
    }
    return all;
}

void readAll(const std::string& name, const std::string& bytes, std::size_t step) {
    ZroCommon::testing::ShortReadBuf buffer(bytes, step);
    std::istream shortReads(&buffer);
    std::istringstream seekable(bytes);  // as detection asks for
    ZRTCVStream stream(name.empty() ? &seekable : &shortReads,
                       name.empty() ? nullptr : name.c_str());
    const std::string all = readInPieces(stream, step * 3 + 1);
    require(all.size() % 2 == 0 && (stream.is_open() || all.empty()));
    if (const Peer* peer = peerOf(name)) {
        require(stream.is_open() && asText(all) == readInOnePiece(peer->converter, bytes));
    }
}

// Writing.

struct Result {
    std::string bytes;
    bool isOver;
};

std::optional<Result> writeInPieces(const std::string& name, const UnicodeString& text,
                                    std::size_t step, std::size_t limit) {
    std::ostringstream target;
    Result result{};
    {
        ZRTCVOStream stream(&target, name.c_str(), false, ZRTCVOStream::LF_CONVERT(0), false);
        if (!stream.is_open()) {
            return std::nullopt;
        }
        stream.setLimit(limit);
        for (int32_t at = 0; at < text.length(); at += static_cast<int32_t>(step)) {
            stream.writeString(text.tempSubString(at, static_cast<int32_t>(step)));
            if (step % 2 != 0) {
                stream.flush();
            }
        }
        result.isOver = stream.isLimitOver();
        require(result.isOver == (limit != 0 && stream.getOutputLength() > limit));
    }
    result.bytes = target.str();
    return result;
}

// What is left when a last unit that waits for another is gone.
UnicodeString withoutWaitingUnit(const UnicodeString& text) {
    const char16_t last = text.isEmpty() ? u'a' : text.charAt(text.length() - 1);
    const bool waits = last == 0 || (last >= 0xD800 && last <= 0xDBFF);
    return text.tempSubString(0, text.length() - (waits ? 1 : 0));
}

// The bytes of a text that the encoding holds.
void expectBytes(const Peer& peer, const UnicodeString& text, const std::string& bytes) {
    const auto converter = icuConverter(peer.converter);
    std::string expected(static_cast<std::size_t>(text.length()) * 8 + 64, '\0');
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setFromUCallBack(converter.getAlias(), stop, nullptr, nullptr, nullptr, &status);
    const int32_t length = ucnv_fromUChars(converter.getAlias(), expected.data(),
                                           static_cast<int32_t>(expected.size()), text.getBuffer(),
                                           text.length(), &status);
    // Without text ICU does not begin at all; a failure is a character to be replaced.
    if (U_SUCCESS(status) != 0 && !text.isEmpty()) {
        expected.resize(static_cast<std::size_t>(length));
        require(bytes == expected);
    }
}

void writeAll(const std::string& name, const UnicodeString& text, std::size_t step,
              std::size_t limit) {
    const Peer* peer = peerOf(name);
    const std::string target = peer == nullptr ? name : peer->converter;
    const auto whole = writeInPieces(target, text, step, 0);
    const auto limited = writeInPieces(target, text, step, limit);
    require(whole.has_value() == limited.has_value() && (peer == nullptr || whole.has_value()));
    if (!whole) {
        return;
    }
    require(!whole->isOver && (limit == 0 || limited->bytes.size() <= limit));
    if (peer == nullptr) {
        return;
    }
    require(whole->bytes.starts_with(limited->bytes));
    if (text.indexOf(u"\0\n", 2, 0) < 0) {
        expectBytes(*peer, withoutWaitingUnit(text), whole->bytes);
    }
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) {
        return 0;
    }
    const std::size_t step = (data[0] >> 1U) + 1U;
    const std::uint8_t* const end = data + size;
    const std::uint8_t* const line = std::find(data + 2, end, '\n');
    const std::string name(data + 2, line);
    const std::uint8_t* const rest = line == end ? end : line + 1;
    if ((data[0] & 1U) == 0) {
        readAll(name, std::string(rest, end), step);
    } else {
        writeAll(name, ZroCommon::fuzzing::utf16(std::span(rest, end)), step, data[1] * 4U);
    }
    return 0;
}
