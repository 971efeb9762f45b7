#include "tools/zro/SourceDecoder.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <unicode/utf16.h>

namespace zro {

using ZroCommon::ZRTCVStream;

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kBlock = 65536;
constexpr std::size_t kLongestDeclaration = 256;
constexpr char32_t kReplacement = 0xFFFD;

// What the first bytes decide, the longer patterns first. "?" stands for any byte but 0. The last
// column tells how many characters the parser has taken and pushed back before it counts.
struct FirstBytes {
    std::string_view pattern;
    const char* encoding;
    std::size_t markLength;
    int uncounted;
};
constexpr std::array kFirstBytes = {
    FirstBytes{"\0\0\xFE\xFF"sv, "UTF-32BE", 4, 0}, FirstBytes{"\0\0"sv, "UTF-32BE", 0, 1},
    FirstBytes{"\0?"sv, "UTF-16BE", 0, 1},          FirstBytes{"<\0\0\0"sv, "UTF-32LE", 0, 1},
    FirstBytes{"<\0\0?"sv, "UTF-16LE", 0, 2},       FirstBytes{"<\0"sv, "UTF-16LE", 0, 1},
    FirstBytes{"\xEF\xBB\xBF"sv, "UTF-8", 3, 0},    FirstBytes{"\xFE\xFF"sv, "UTF-16BE", 2, 0},
    FirstBytes{"\xFF\xFE\0\0"sv, "UTF-32LE", 4, 0}, FirstBytes{"\xFF\xFE"sv, "UTF-16LE", 2, 1},
};

bool startsLike(std::string_view bytes, std::string_view pattern) {
    if (bytes.size() < pattern.size()) {
        return false;
    }
    return std::equal(pattern.begin(), pattern.end(), bytes.begin(), [](char expected, char byte) {
        return expected == '?' ? byte != '\0' : expected == byte;
    });
}

// The encoding that an XML declaration names, or nothing.
std::string declaredEncoding(std::string_view bytes) {
    bytes = bytes.substr(0, std::min(bytes.find("?>"), kLongestDeclaration));
    const std::size_t keyword = bytes.find("encoding");
    if (!bytes.starts_with("<?xml") || keyword == std::string_view::npos) {
        return {};
    }
    const std::size_t quote = bytes.find_first_of("\"'", keyword);
    if (quote == std::string_view::npos) {
        return {};
    }
    const std::size_t end = bytes.find(bytes[quote], quote + 1);
    return std::string(bytes.substr(quote + 1, end - quote - 1));
}

// Names that promise two or four bytes a character cannot be true behind a one-byte declaration.
bool isWide(const char* name) {
    const std::string_view canonical = name;
    return canonical.starts_with("UTF-16") || canonical.starts_with("UTF-32")
           || canonical.starts_with("ISO-10646");
}

// What the bit patterns alone let through: overlong forms, surrogates, and what is beyond Unicode.
bool isWellFormed(char32_t character, int length) {
    const char32_t smallest = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
    return character >= smallest && character <= 0x10FFFF && !U_IS_SURROGATE(character);
}

bool isUtf8(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    return name == "UTF-8";
}

}  // namespace

SourceDecoder::SourceDecoder(std::istream& input) : m_input(input) {
    refill();
    m_firstBytes = m_bytes.substr(0, kLongestDeclaration);
    sniff();
}

void SourceDecoder::sniff() {
    for (const auto& [pattern, encoding, markLength, uncounted] : kFirstBytes) {
        if (startsLike(m_bytes, pattern)) {
            begin(encoding, markLength, uncounted);
            return;
        }
    }
    if (!m_bytes.starts_with('<')) {
        begin("ISO-8859-1", 0, 0);  // neither a mark nor markup: the parser reads byte for byte
        return;
    }
    const std::string declared = declaredEncoding(m_bytes);
    begin(declared.empty() ? "UTF-8" : declared.c_str(), 0, 1);
}

void SourceDecoder::begin(const char* encoding, std::size_t markLength, int uncounted) {
    m_next = markLength;
    m_uncounted = uncounted;
    const bool misdeclared = m_bytes.starts_with("<?") && isWide(encoding);
    if (!misdeclared && isUtf8(encoding)) {
        return;
    }
    if (misdeclared || !transcode(encoding)) {
        transcode("ISO-8859-1");
    }
}

bool SourceDecoder::transcode(const std::string& encoding) {
    if (!ZRTCVStream(nullptr, encoding.c_str()).is_open()) {
        return false;
    }
    m_rest.str(m_bytes.substr(m_next));
    m_all.setKeepMemory(false);
    m_all.setSource(&m_rest, false);
    m_all.setSource(&m_input, false);
    m_transcoder = std::make_unique<ZRTCVStream>(&m_all, encoding.c_str());
    return true;
}

bool SourceDecoder::refill() {
    m_bytes.resize(kBlock);
    m_input.read(m_bytes.data(), static_cast<std::streamsize>(kBlock));
    m_bytes.resize(static_cast<std::size_t>(m_input.gcount()));
    m_next = 0;
    return !m_bytes.empty();
}

std::optional<char32_t> SourceDecoder::next() {
    return m_transcoder ? nextTranscoded() : nextUtf8();
}

int SourceDecoder::nextByte() {
    if (m_next == m_bytes.size() && !refill()) {
        return -1;
    }
    return static_cast<unsigned char>(m_bytes[m_next++]);
}

std::optional<char32_t> SourceDecoder::nextUtf8() {
    const int first = nextByte();
    m_isBroken = false;
    if (first < 0) {
        return std::nullopt;
    }
    return first < 0x80 ? static_cast<char32_t>(first) : completeUtf8(static_cast<unsigned>(first));
}

// The parser's rule, not the usual one: a bad byte is eaten as continuation, up to four in all, and
// the whole counts as one character.
char32_t SourceDecoder::completeUtf8(unsigned first) {
    m_isBroken = true;
    char32_t value = 0;
    for (int length = 2; length <= 4; ++length) {
        const int byte = nextByte();
        if (byte < 0 || (byte & 0xC0) != 0x80) {
            return kReplacement;
        }
        value = (value << 6) | static_cast<char32_t>(byte & 0x3F);
        const unsigned lead = 0xFFU & ~(0xFFU >> length);
        if ((first & (lead | (0x80U >> length))) == lead) {
            value |= char32_t{first & (0x7FU >> length)} << (6 * (length - 1));
            m_isBroken = !isWellFormed(value, length);
            return value;
        }
    }
    return kReplacement;
}

std::uint64_t SourceDecoder::countBroken() {
    std::uint64_t count = 0;
    while (!m_transcoder && nextUtf8()) {
        count += m_isBroken ? 1U : 0U;
    }
    return count;
}

std::optional<char16_t> SourceDecoder::nextUnit() {
    if (m_unit) {
        return std::exchange(m_unit, std::nullopt);
    }
    const int low = m_transcoder->get();
    const int high = m_transcoder->get();
    return high < 0 ? std::nullopt : std::optional(static_cast<char16_t>(high << 8 | low));
}

std::optional<char32_t> SourceDecoder::nextTranscoded() {
    const std::optional<char16_t> unit = nextUnit();
    if (!unit || !U16_IS_LEAD(*unit)) {
        return unit;
    }
    m_unit = nextUnit();
    if (!m_unit || !U16_IS_TRAIL(*m_unit)) {
        return unit;
    }
    return static_cast<char32_t>(
        U16_GET_SUPPLEMENTARY(*unit, *std::exchange(m_unit, std::nullopt)));
}

}  // namespace zro
