#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "zro/xml/internal/Scan.h"

namespace ZroCommon::internal {

/// Which characters of a text are written as entity references.
enum class Escape : std::uint8_t {
    None,
    Text,       ///< "&", "<", ">"
    Attribute,  ///< these and the double quotation mark
};

/// True when the unit goes out as the one byte of the same number.
template <Escape kEscape>
constexpr bool isPlain(char16_t unit) {
    if (kEscape == Escape::Attribute && unit == u'"') {
        return false;
    }
    if (kEscape != Escape::None && (unit == u'&' || unit == u'<' || unit == u'>')) {
        return false;
    }
    return unit < 0x80;
}

namespace scalar {

/// Writes the plain units at the start of a text as bytes, up to the first other one.
///
/// \param to  has room for `length` bytes; what lies behind the result may be overwritten
/// \return how many units were plain
template <Escape kEscape>
std::size_t copyPlainRun(const char16_t* from, std::size_t length, char* to) {
    std::size_t done = 0;
    for (; done < length && isPlain<kEscape>(from[done]); ++done) {
        to[done] = static_cast<char>(from[done]);
    }
    return done;
}

}  // namespace scalar

#if defined(__SSE2__)

namespace simd {

/// All ones where the unit is not plain.
template <Escape kEscape>
inline __m128i notPlain(__m128i units) {
    const __m128i high = _mm_cmpgt_epi16(_mm_srli_epi16(units, 7), _mm_setzero_si128());
    if constexpr (kEscape == Escape::None) {
        return high;
    } else if constexpr (kEscape == Escape::Text) {
        return _mm_or_si128(high, matchAny<u'&', u'<', u'>'>(units));
    } else {
        return _mm_or_si128(high, matchAny<u'&', u'<', u'>', u'"'>(units));
    }
}

}  // namespace simd

/// The same, eight units a step, the last step overlapping the one before.
template <Escape kEscape>
std::size_t copyPlainRun(const char16_t* from, std::size_t length, char* to) {
    constexpr std::size_t kStep = simd::kStep;
    if (length < kStep) {
        return scalar::copyPlainRun<kEscape>(from, length, to);
    }
    for (std::size_t done = 0;; done = std::min(done + kStep, length - kStep)) {
        const __m128i units = simd::load(from + done);
        const __m128i bytes = _mm_packus_epi16(units, units);
        std::memcpy(to + done, &bytes, kStep);
        if (const unsigned mask = simd::maskOf(simd::notPlain<kEscape>(units))) {
            return done + static_cast<std::size_t>(simd::firstOf(mask));
        }
        if (done + kStep == length) {
            return length;
        }
    }
}

namespace simd {

/// All ones where the unit is not three bytes in UTF-8: those below U+0800 and surrogates.
inline __m128i notThreeBytes(__m128i units) {
    return _mm_or_si128(inRange(units, 0, 0x7FF), inRange(units, 0xD800, 0xDFFF));
}

/// Of four units, three bytes in each four: writes the twelve, and two more behind them.
inline void putTwelve(__m128i quads, char* to) {
    const __m128i low = _mm_and_si128(quads, _mm_set1_epi64x(0xFFFFFFFF));
    const __m128i sixes = _mm_or_si128(low, _mm_slli_epi64(_mm_srli_epi64(quads, 32), 24));
    const __m128i behind = _mm_srli_si128(sixes, 8);
    std::memcpy(to, &sixes, 8);
    std::memcpy(to + 6, &behind, 8);
}

/// Eight units of three bytes.
inline void putThreeBytes(__m128i units, char* to) {
    const auto trail = [](__m128i bits) {
        return _mm_or_si128(_mm_and_si128(bits, all(0x3F)), all(0x80));
    };
    const __m128i first = _mm_or_si128(_mm_srli_epi16(units, 12), all(0xE0));
    const __m128i second = trail(_mm_srli_epi16(units, 6));
    const __m128i lead = _mm_or_si128(first, _mm_slli_epi16(second, 8));
    putTwelve(_mm_unpacklo_epi16(lead, trail(units)), to);
    putTwelve(_mm_unpackhi_epi16(lead, trail(units)), to + 12);
}

}  // namespace simd

/// Writes the units at the start of a text that are three bytes in UTF-8 and no surrogates, as
/// long as eight of them follow each other.
///
/// \param room  bytes at `to`, of which two behind the result may be overwritten
/// \return how many units were written, a multiple of eight
inline std::size_t copyThreeByteRun(const char16_t* from, std::size_t length, char* to,
                                    std::size_t room) {
    constexpr std::size_t kStep = simd::kStep;
    std::size_t done = 0;
    for (; length - done >= kStep && room - 3 * done >= 3 * kStep + 2; done += kStep) {
        const __m128i units = simd::load(from + done);
        if (simd::maskOf(simd::notThreeBytes(units)) != 0) {
            break;
        }
        simd::putThreeBytes(units, to + 3 * done);
    }
    return done;
}

#else

using scalar::copyPlainRun;

inline std::size_t copyThreeByteRun(const char16_t* /*from*/, std::size_t /*length*/, char* /*to*/,
                                    std::size_t /*room*/) {
    return 0;
}

#endif

}  // namespace ZroCommon::internal
