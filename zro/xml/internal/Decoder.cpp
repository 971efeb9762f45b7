#include "zro/xml/internal/Decoder.h"

#include <algorithm>
#include <bit>

#include "zro/xml/internal/Scan.h"

namespace ZroCommon::internal {
namespace {

using Byte = unsigned char;

constexpr char32_t kBroken = 0xFFFD;
constexpr char32_t kNextLine = 0x85;
constexpr char32_t kLineSeparator = 0x2028;

constexpr bool isContinuation(Byte byte) {
    return (byte & 0xC0U) == 0x80U;
}

constexpr bool isSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

// What the window may hold besides line ends.
constexpr bool isPlain(char32_t c) {
    return c <= 0x10FFFF && !isSurrogate(c) && c != 0xFFFF;
}

// The bytes that are there, one by one; `next` after the last one says so and gives no byte.
struct Bytes {
    const Byte* at = nullptr;
    const Byte* end = nullptr;
    bool exhausted = false;

    bool next(Byte& byte) {
        if (at == end) {
            exhausted = true;
            return false;
        }
        byte = *at++;
        return true;
    }
};

// On purpose: every byte that was looked at is used up, also the one that broke the sequence, and
// what the bits say is not tested.
char32_t utf8Character(Bytes& bytes) {
    Byte first = 0;
    bytes.next(first);
    if (first < 0x80) {
        return first;
    }
    Byte second = 0;
    if (!bytes.next(second) || !isContinuation(second)) {
        return kBroken;
    }
    if ((first & 0xE0U) == 0xC0U) {
        return (first & 0x1FU) << 6U | (second & 0x3FU);
    }
    Byte third = 0;
    if (!bytes.next(third) || !isContinuation(third)) {
        return kBroken;
    }
    if ((first & 0xF0U) == 0xE0U) {
        return (first & 0x0FU) << 12U | (second & 0x3FU) << 6U | (third & 0x3FU);
    }
    Byte fourth = 0;
    if (!bytes.next(fourth) || !isContinuation(fourth) || (first & 0xF8U) != 0xF0U) {
        return kBroken;
    }
    return (first & 0x07U) << 18U | (second & 0x3FU) << 12U | (third & 0x3FU) << 6U
           | (fourth & 0x3FU);
}

bool nextUnit(Bytes& bytes, bool bigEndian, char32_t& unit) {
    Byte first = 0;
    Byte second = 0;
    if (!bytes.next(first) || !bytes.next(second)) {
        return false;
    }
    unit = bigEndian ? static_cast<char32_t>(first << 8U | second)
                     : static_cast<char32_t>(second << 8U | first);
    return true;
}

char32_t utf16Character(Bytes& bytes, bool bigEndian) {
    char32_t lead = 0;
    if (!nextUnit(bytes, bigEndian, lead)) {
        return kBroken;
    }
    if (lead < 0xD800 || lead > 0xDBFF) {
        return lead;  // a single trail unit too
    }
    char32_t trail = 0;
    if (!nextUnit(bytes, bigEndian, trail) || trail < 0xDC00 || trail > 0xDFFF) {
        return kBroken;
    }
    return 0x10000 + ((lead - 0xD800) << 10U) + (trail - 0xDC00);
}

char32_t utf32Character(Bytes& bytes, bool bigEndian) {
    char32_t value = 0;
    for (unsigned i = 0; i < 4; ++i) {
        Byte byte = 0;
        if (!bytes.next(byte)) {
            return kBroken;
        }
        value |= static_cast<char32_t>(byte) << 8U * (bigEndian ? 3 - i : i);
    }
    return value;
}

char32_t characterOf(EncodingMode mode, Bytes& bytes) {
    switch (mode) {
    case EncodingMode::Utf8: return utf8Character(bytes);
    case EncodingMode::Utf16LE: return utf16Character(bytes, false);
    case EncodingMode::Utf16BE: return utf16Character(bytes, true);
    case EncodingMode::Utf32LE: return utf32Character(bytes, false);
    case EncodingMode::Utf32BE: return utf32Character(bytes, true);
    default: return *bytes.at++;
    }
}

void put(Decoding& state, char32_t c) {
    if (c < 0x10000) {
        *state.units++ = static_cast<char16_t>(c);
        return;
    }
    *state.units++ = static_cast<char16_t>(0xD7C0 + (c >> 10U));
    *state.units++ = static_cast<char16_t>(0xDC00 + (c & 0x3FFU));
}

enum class Step : std::uint8_t { Done, NeedsBytes, Unrepresented };

// One character by the general rules, line ends included. The window has room for it.
Step decodeStep(EncodingMode mode, Decoding& state, InputTail tail) {
    const bool atEnd = tail != InputTail::Open;
    if (state.bytes == state.bytesEnd) {
        return Step::NeedsBytes;
    }
    const DecodedOne one = decodeOne(mode, state.bytes, state.bytesEnd, atEnd);
    if (one.length == 0) {
        return Step::NeedsBytes;
    }
    const Byte* behind = state.bytes + one.length;
    char32_t c = one.character;
    if (c == u'\r') {
        if (behind != state.bytesEnd) {
            const DecodedOne two = decodeOne(mode, behind, state.bytesEnd, atEnd);
            if (two.length == 0) {
                return Step::NeedsBytes;
            }
            behind += isTakenByReturn(two, tail) ? two.length : 0;
        } else if (tail != InputTail::Closed) {
            return atEnd ? Step::Unrepresented : Step::NeedsBytes;
        }
        c = u'\n';
    } else if (c == kNextLine || c == kLineSeparator) {
        c = u'\n';
    } else if (!isPlain(c)) {
        return Step::Unrepresented;
    }
    put(state, c);
    state.bytes = behind;
    return Step::Done;
}

// Bytes that are characters of their own and no line end to fold.
template <bool kAsciiOnly>
void widenSingly(Decoding& state) {
    while (state.bytes != state.bytesEnd && state.units != state.unitsEnd && *state.bytes != u'\r'
           && (kAsciiOnly ? *state.bytes < 0x80 : *state.bytes != kNextLine)) {
        *state.units++ = *state.bytes++;
    }
}

#if defined(__SSE2__)

// The same sixteen a time, and singly where fewer are left.
template <bool kAsciiOnly>
void widenRun(Decoding& state) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i carriageReturn = _mm_set1_epi8('\r');
    const __m128i nextLine = _mm_set1_epi8(static_cast<char>(kNextLine));
    while (state.bytesEnd - state.bytes >= 16 && state.unitsEnd - state.units >= 16) {
        __m128i bytes;
        std::memcpy(&bytes, state.bytes, sizeof bytes);
        const __m128i fold = _mm_cmpeq_epi8(bytes, carriageReturn);
        const __m128i stop =
            _mm_or_si128(fold, kAsciiOnly ? bytes : _mm_cmpeq_epi8(bytes, nextLine));
        const __m128i low = _mm_unpacklo_epi8(bytes, zero);
        const __m128i high = _mm_unpackhi_epi8(bytes, zero);
        std::memcpy(state.units, &low, sizeof low);
        std::memcpy(state.units + 8, &high, sizeof high);
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(stop));
        const int run = mask == 0 ? 16 : std::countr_zero(mask);
        state.bytes += run;
        state.units += run;
        if (mask != 0) {
            return;
        }
    }
    widenSingly<kAsciiOnly>(state);
}

#else

template <bool kAsciiOnly>
void widenRun(Decoding& state) {
    widenSingly<kAsciiOnly>(state);
}

#endif

// What is not decoded by a run, among the characters of two and three bytes.
constexpr bool isSpecial(char16_t unit) {
    return unit == kNextLine || unit == kLineSeparator || isSurrogate(unit) || unit == 0xFFFF;
}

// Four bytes as one number, the first lowest. Compilers make one load of it.
constexpr std::uint32_t loadFourBytes(const Byte* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8U
           | static_cast<std::uint32_t>(bytes[2]) << 16U
           | static_cast<std::uint32_t>(bytes[3]) << 24U;
}

#if defined(__SSE2__)

// Four characters of three bytes, each with the byte behind it in a lane of its own.
__m128i loadThreeByteLanes(const Byte* bytes) {
    const auto lane = [bytes](std::ptrdiff_t index) {
        return static_cast<int>(loadFourBytes(bytes + 3 * index));
    };
    return _mm_setr_epi32(lane(0), lane(1), lane(2), lane(3));
}

// All ones in the lanes that have the form of three bytes.
__m128i haveThreeByteForm(__m128i lanes) {
    return _mm_cmpeq_epi32(_mm_and_si128(lanes, _mm_set1_epi32(0xC0C0F0)),
                           _mm_set1_epi32(0x8080E0));
}

// The character of each lane, its sign extended as the packing needs it.
__m128i charactersOf(__m128i lanes) {
    const __m128i first = _mm_slli_epi32(lanes, 28);
    const __m128i second = _mm_and_si128(_mm_slli_epi32(lanes, 14), _mm_set1_epi32(0x0FC00000));
    const __m128i third = _mm_and_si128(lanes, _mm_set1_epi32(0x003F0000));
    return _mm_srai_epi32(_mm_or_si128(_mm_or_si128(first, second), third), 16);
}

// All ones where a unit of three bytes is overlong or special.
__m128i areNotPlain(__m128i units) {
    const __m128i fixed = simd::matchAny<kLineSeparator, 0xFFFF>(units);
    const __m128i surrogate =
        _mm_cmpeq_epi16(_mm_and_si128(units, simd::all(0xF800)), simd::all(0xD800));
    return _mm_or_si128(_mm_or_si128(fixed, surrogate), simd::inRange(units, 0, 0x7FF));
}

// Well-formed characters of three bytes, eight a time, as long as two follow each other.
void utf8ThreeByteRun(Decoding& state) {
    constexpr std::ptrdiff_t kBytes = 3 * simd::kStep + 1;  // the last lane reads one more
    while (state.bytesEnd - state.bytes >= kBytes && state.unitsEnd - state.units >= simd::kStep
           && (state.bytes[0] & 0xF0U) == 0xE0U && (state.bytes[3] & 0xF0U) == 0xE0U) {
        const __m128i low = loadThreeByteLanes(state.bytes);
        const __m128i high = loadThreeByteLanes(state.bytes + 12);
        const __m128i units = _mm_packs_epi32(charactersOf(low), charactersOf(high));
        const __m128i form = _mm_packs_epi32(haveThreeByteForm(low), haveThreeByteForm(high));
        std::memcpy(state.units, &units, sizeof units);
        const unsigned stop = 0xFFFFU & ~simd::maskOf(_mm_andnot_si128(areNotPlain(units), form));
        const std::ptrdiff_t run = stop == 0 ? simd::kStep : simd::firstOf(stop);
        state.bytes += 3 * run;
        state.units += run;
        if (stop != 0) {
            return;
        }
    }
}

#else

void utf8ThreeByteRun(Decoding& /*state*/) {}

#endif

// Well-formed characters of two and three bytes; anything else is left to the general rules.
void utf8MultibyteRun(Decoding& state) {
    const Byte* bytes = state.bytes;
    char16_t* units = state.units;
    while (state.bytesEnd - bytes >= 4 && units != state.unitsEnd) {
        const std::uint32_t four = loadFourBytes(bytes);
        if ((four & 0xC0C0F0U) == 0x8080E0U) {
            const auto unit = static_cast<char16_t>((four & 0xFU) << 12U | (four >> 2U & 0xFC0U)
                                                    | (four >> 16U & 0x3FU));
            if (unit < 0x800 || isSpecial(unit)) {
                break;
            }
            *units++ = unit;
            bytes += 3;
        } else if ((four & 0xC0E0U) == 0x80C0U) {
            const auto unit = static_cast<char16_t>((four & 0x1FU) << 6U | (four >> 8U & 0x3FU));
            if (unit < 0x80 || isSpecial(unit)) {
                break;
            }
            *units++ = unit;
            bytes += 2;
        } else {
            break;
        }
    }
    state.bytes = bytes;
    state.units = units;
}

void utf8Run(Decoding& state) {
    const Byte* before = nullptr;
    do {
        widenRun<true>(state);
        before = state.bytes;
        utf8ThreeByteRun(state);
        utf8MultibyteRun(state);
    } while (state.bytes != before);
}

template <bool kBigEndian>
void utf16Run(Decoding& state) {
    while (state.bytesEnd - state.bytes >= 2 && state.units != state.unitsEnd) {
        const unsigned first = state.bytes[0];
        const unsigned second = state.bytes[1];
        const auto unit =
            static_cast<char16_t>(kBigEndian ? first << 8U | second : second << 8U | first);
        if (unit == u'\r' || unit == kNextLine || unit == kLineSeparator || isSurrogate(unit)
            || unit == 0xFFFF) {
            return;
        }
        *state.units++ = unit;
        state.bytes += 2;
    }
}

void plainRun(EncodingMode mode, Decoding& state) {
    switch (mode) {
    case EncodingMode::Utf8: return utf8Run(state);
    case EncodingMode::Utf16LE: return utf16Run<false>(state);
    case EncodingMode::Utf16BE: return utf16Run<true>(state);
    case EncodingMode::Utf32LE:
    case EncodingMode::Utf32BE: return;
    default: return widenRun<false>(state);
    }
}

}  // namespace

DecodedOne decodeOne(EncodingMode mode, const unsigned char* at, const unsigned char* end,
                     bool atEnd) {
    Bytes bytes{at, end};
    const char32_t character = characterOf(mode, bytes);
    if (bytes.exhausted && !atEnd) {
        return {};
    }
    return {character, static_cast<std::size_t>(bytes.at - at), bytes.exhausted};
}

bool isTakenByReturn(const DecodedOne& next, InputTail tail) {
    return next.character == u'\n' || next.character == kNextLine || next.character == 0xFFFF
           || (next.isCut && tail == InputTail::Closed);
}

DecodeStop decode(EncodingMode mode, Decoding& state, InputTail tail) {
    for (;;) {
        plainRun(mode, state);
        if (state.unitsEnd - state.units < 2) {
            return DecodeStop::Full;
        }
        switch (decodeStep(mode, state, tail)) {
        case Step::NeedsBytes: return DecodeStop::NeedsBytes;
        case Step::Unrepresented: return DecodeStop::Unrepresented;
        case Step::Done: break;
        }
    }
}

bool decodeNext(EncodingMode mode, Decoding& state) {
    return decodeStep(mode, state, InputTail::Closed) == Step::Done;
}

}  // namespace ZroCommon::internal
