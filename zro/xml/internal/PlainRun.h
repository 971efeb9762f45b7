#pragma once

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

/// The same, eight units a step.
template <Escape kEscape>
std::size_t copyPlainRun(const char16_t* from, std::size_t length, char* to) {
    std::size_t done = 0;
    for (; length - done >= simd::kStep; done += simd::kStep) {
        const __m128i units = simd::load(from + done);
        const __m128i bytes = _mm_packus_epi16(units, units);
        std::memcpy(to + done, &bytes, simd::kStep);
        if (const unsigned mask = simd::maskOf(simd::notPlain<kEscape>(units))) {
            return done + static_cast<std::size_t>(simd::firstOf(mask));
        }
    }
    return done + scalar::copyPlainRun<kEscape>(from + done, length - done, to + done);
}

#else

using scalar::copyPlainRun;

#endif

}  // namespace ZroCommon::internal
