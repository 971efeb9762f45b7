// Base64: bytes of a stream to text and back, in blocks.

#include "zro/text/ZRUtil.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <istream>
#include <ostream>
#include <span>
#include <string_view>

namespace ZroCommon {
namespace {

constexpr std::u16string_view kAlphabet =
    u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kBlock = 3072;  // of bytes: a multiple of 3, so that only the end is padded

// Encoding: two characters a step.

using Pair = std::array<char16_t, 2>;

constexpr std::array<Pair, 4096> kPairs = [] {
    std::array<Pair, 4096> pairs{};
    for (std::size_t bits = 0; bits < pairs.size(); ++bits) {
        pairs[bits] = {kAlphabet[bits >> 6U], kAlphabet[bits & 63U]};
    }
    return pairs;
}();

char16_t* putPair(char16_t* out, unsigned bits) {
    std::memcpy(out, kPairs[bits].data(), sizeof(Pair));
    return out + 2;
}

char16_t* encodeTail(std::span<const unsigned char> bytes, char16_t* out) {
    if (bytes.empty()) {
        return out;
    }
    const bool hasTwo = bytes.size() == 2;
    const unsigned bits = unsigned{bytes[0]} << 16U | (hasTwo ? unsigned{bytes[1]} << 8U : 0U);
    out = putPair(out, bits >> 12U);
    *out++ = hasTwo ? kAlphabet[bits >> 6U & 63U] : u'=';
    *out++ = u'=';
    return out;
}

void appendEncoded(UnicodeString& text, std::span<const unsigned char> bytes) {
    std::array<char16_t, kBlock / 3 * 4> block;  // NOLINT(*-member-init): written before it is read
    char16_t* out = block.data();
    for (; bytes.size() >= 3; bytes = bytes.subspan(3)) {
        const unsigned high = unsigned{bytes[0]} << 4U | unsigned{bytes[1]} >> 4U;
        const unsigned low = (bytes[1] & 15U) << 8U | unsigned{bytes[2]};
        out = putPair(putPair(out, high), low);
    }
    out = encodeTail(bytes, out);
    text.append(block.data(), static_cast<int32_t>(out - block.data()));
}

void appendEncoded(UnicodeString& text, std::istream& stream) {
    std::array<char, kBlock> block;  // NOLINT(*-member-init): written before it is read
    while (!text.isBogus() && stream.read(block.data(), block.size()).gcount() > 0) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(block.data());
        appendEncoded(text, {bytes, static_cast<std::size_t>(stream.gcount())});
    }
}

UnicodeString roomFor(int sizeHint) {
    constexpr std::int64_t kMost = 1 << 24U;  // what is told, and perhaps by a file, may be wrong
    const std::int64_t wanted = std::int64_t{std::max(sizeHint, 0)} * 4 / 3 + 10;
    return {static_cast<int32_t>(std::min(wanted, kMost)), 0, 0};
}

// Decoding: four characters a step, as long as all are of the alphabet.

constexpr std::uint32_t kNoDigit = 0xFF000000U;  // beyond the 24 bits of a group
constexpr std::size_t kAscii = 128;

using DigitTable = std::array<std::uint32_t, kAscii>;

// The alphabet's values at their place in a group: the first table 18 bits up, the last in place.
constexpr std::array<DigitTable, 4> kDigits = [] {
    std::array<DigitTable, 4> tables{};
    for (std::size_t place = 0; place < tables.size(); ++place) {
        tables[place].fill(kNoDigit);
        for (std::uint32_t digit = 0; digit < kAlphabet.size(); ++digit) {
            tables[place][kAlphabet[digit]] = digit << (18U - 6U * place);
        }
    }
    return tables;
}();

constexpr std::uint32_t digitAt(std::size_t place, char16_t c) {
    return c < kAscii ? kDigits[place][c] : kNoDigit;
}

class Decoder {
public:
    explicit Decoder(std::ostream& out) : m_out(out) {}

    void decode(std::span<const char16_t> text) {
        while (!text.empty()) {
            if (m_bitCount == 0) {
                text = decodeGroups(text);
            }
            if (text.empty() || text.front() == u'=') {
                break;
            }
            take(text.front());
            text = text.subspan(1);
        }
        flush();
    }

private:
    // Decodes whole groups up to what is no digit. \return what is left
    std::span<const char16_t> decodeGroups(std::span<const char16_t> text) {
        for (; text.size() >= 4; text = text.subspan(4)) {
            const std::uint32_t group = digitAt(0, text[0]) | digitAt(1, text[1])
                                        | digitAt(2, text[2]) | digitAt(3, text[3]);
            if ((group & kNoDigit) != 0) {
                break;
            }
            putGroup(group);
        }
        return text;
    }

    void take(char16_t c) {
        const std::uint32_t digit = digitAt(3, c);
        if (digit == kNoDigit) {
            return;
        }
        m_bits = m_bits << 6U | digit;
        m_bitCount += 6;
        if (m_bitCount >= 8) {
            m_bitCount -= 8;
            put(m_bits >> m_bitCount);
        }
    }

    void put(std::uint32_t byte) {
        if (m_used == m_block.size()) {
            flush();
        }
        m_block[m_used++] = static_cast<char>(byte);
    }

    void putGroup(std::uint32_t group) {
        if (m_block.size() - m_used < 3) {
            flush();
        }
        char* const place = m_block.data() + m_used;
        place[0] = static_cast<char>(group >> 16U);
        place[1] = static_cast<char>(group >> 8U);
        place[2] = static_cast<char>(group);
        m_used += 3;
    }

    void flush() {
        m_out.write(m_block.data(), static_cast<std::streamsize>(m_used));
        m_used = 0;
    }

    std::ostream& m_out;
    std::array<char, kBlock> m_block{};
    std::size_t m_used = 0;
    std::uint32_t m_bits = 0;  // of a group that is begun; the newest are lowest
    unsigned m_bitCount = 0;   // how many of them have not gone out
};

}  // namespace

UnicodeString ZRUtil::encodeBase64(std::istream& stream, int sizeHint) {
    UnicodeString text = roomFor(sizeHint);
    appendEncoded(text, stream);
    return text;
}

UnicodeString ZRUtil::encodeBase64(std::istream& stream, int sizeHint,
                                   const UnicodeString& mediaType, const UnicodeString& parameter) {
    UnicodeString text = roomFor(sizeHint);
    text.append(u"data:").append(mediaType);
    if (!parameter.isEmpty()) {
        text.append(u';').append(parameter);
    }
    text.append(u";base64,");
    appendEncoded(text, stream);
    return text;
}

void ZRUtil::decodeBase64(const char16_t* text, int length, std::ostream& out) {
    if (length > 0) {
        Decoder(out).decode({text, static_cast<std::size_t>(length)});
    }
}

}  // namespace ZroCommon
