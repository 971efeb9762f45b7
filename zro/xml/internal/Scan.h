#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Searches over UTF-16 units, eight a step where the processor has SSE2. Each has a scalar twin of
// the same meaning in namespace `scalar`; the two are compared by a test.

namespace ZroCommon::internal {

/// True for what XML calls white space: blank, tab, line feed, carriage return.
constexpr bool isXmlSpace(char32_t c) {
    return c == u' ' || c == u'\n' || c == u'\t' || c == u'\r';
}

/// True for the ASCII characters that may stand inside a name.
constexpr bool isAsciiNameUnit(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9')
           || c == u'_' || c == u'-' || c == u'.';
}

/// Line ends, and the code points behind the last of them.
struct LineCount {
    std::size_t lines = 0;
    std::size_t characters = 0;
};

namespace scalar {

/// The first of the given units in [at, end), or `end`.
template <char16_t... Stops>
inline const char16_t* findAny(const char16_t* at, const char16_t* end) {
    while (at != end && ((*at != Stops) && ...)) {
        ++at;
    }
    return at;
}

/// The first unit that is one of the fixed ones or `stop`.
template <char16_t... Stops>
inline const char16_t* findAnyOr(const char16_t* at, const char16_t* end, char16_t stop) {
    while (at != end && *at != stop && ((*at != Stops) && ...)) {
        ++at;
    }
    return at;
}

/// The first unit that is no ASCII name unit and no colon.
inline const char16_t* findQNameEnd(const char16_t* at, const char16_t* end) {
    while (at != end && (isAsciiNameUnit(*at) || *at == u':')) {
        ++at;
    }
    return at;
}

/// Whether two texts of the same length are equal.
inline bool isSameText(const char16_t* left, const char16_t* right, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
        if (left[i] != right[i]) {
            return false;
        }
    }
    return true;
}

/// Goes on counting the lines and the characters of the last one over [at, end).
inline void countLines(const char16_t* at, const char16_t* end, LineCount& count) {
    for (; at != end; ++at) {
        if (*at == u'\n') {
            ++count.lines;
            count.characters = 0;
        } else {
            count.characters += (*at & 0xFC00U) == 0xD800U ? 0U : 1U;  // its trail counts
        }
    }
}

}  // namespace scalar

#if defined(__SSE2__)

namespace simd {

constexpr std::ptrdiff_t kStep = 8;

inline __m128i load(const char16_t* at) {
    __m128i units;
    std::memcpy(&units, at, sizeof units);
    return units;
}

inline __m128i all(char16_t unit) {
    return _mm_set1_epi16(static_cast<short>(unit));
}

/// Two bits a unit.
inline unsigned maskOf(__m128i matches) {
    return static_cast<unsigned>(_mm_movemask_epi8(matches));
}

inline int firstOf(unsigned mask) {
    return std::countr_zero(mask) / 2;
}

template <char16_t... Stops>
inline __m128i matchAny(__m128i units) {
    __m128i found = _mm_setzero_si128();
    ((found = _mm_or_si128(found, _mm_cmpeq_epi16(units, all(Stops)))), ...);
    return found;
}

/// All ones where the unit lies between the two bounds, both included.
inline __m128i inRange(__m128i units, char16_t low, char16_t high) {
    const __m128i offset = _mm_sub_epi16(units, all(low));
    const __m128i over = _mm_subs_epu16(offset, all(static_cast<char16_t>(high - low)));
    return _mm_cmpeq_epi16(over, _mm_setzero_si128());
}

/// All ones where the unit is no ASCII name unit and no colon. '-', '.' and the digits with ':'
/// are the range from '-' to ':' without '/'.
inline __m128i outsideQName(__m128i units) {
    const __m128i letter = inRange(_mm_or_si128(units, all(0x20)), u'a', u'z');
    const __m128i other =
        _mm_andnot_si128(_mm_cmpeq_epi16(units, all(u'/')), inRange(units, u'-', u':'));
    const __m128i name =
        _mm_or_si128(_mm_or_si128(letter, other), _mm_cmpeq_epi16(units, all(u'_')));
    return _mm_cmpeq_epi16(name, _mm_setzero_si128());
}

}  // namespace simd

template <char16_t... Stops>
inline const char16_t* findAny(const char16_t* at, const char16_t* end) {
    for (; end - at >= simd::kStep; at += simd::kStep) {
        if (const unsigned mask = simd::maskOf(simd::matchAny<Stops...>(simd::load(at)))) {
            return at + simd::firstOf(mask);
        }
    }
    return scalar::findAny<Stops...>(at, end);
}

template <char16_t... Stops>
inline const char16_t* findAnyOr(const char16_t* at, const char16_t* end, char16_t stop) {
    const __m128i stops = simd::all(stop);
    for (; end - at >= simd::kStep; at += simd::kStep) {
        const __m128i units = simd::load(at);
        const __m128i found =
            _mm_or_si128(simd::matchAny<Stops...>(units), _mm_cmpeq_epi16(units, stops));
        if (const unsigned mask = simd::maskOf(found)) {
            return at + simd::firstOf(mask);
        }
    }
    return scalar::findAnyOr<Stops...>(at, end, stop);
}

inline const char16_t* findQNameEnd(const char16_t* at, const char16_t* end) {
    for (; end - at >= simd::kStep; at += simd::kStep) {
        if (const unsigned mask = simd::maskOf(simd::outsideQName(simd::load(at)))) {
            return at + simd::firstOf(mask);
        }
    }
    return scalar::findQNameEnd(at, end);
}

namespace simd {

inline __m128i loadFour(const char16_t* at) {
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(at));
}

/// All ones where the units of two texts are the same.
inline __m128i match(const char16_t* left, const char16_t* right) {
    return _mm_cmpeq_epi16(load(left), load(right));
}

}  // namespace simd

// The last step overlaps the one before. Up to 16 units are seen at once.
inline bool isSameText(const char16_t* left, const char16_t* right, std::size_t length) {
    constexpr std::size_t kStep = simd::kStep;
    if (length < 4) {
        return scalar::isSameText(left, right, length);
    }
    if (length < kStep) {
        const auto four = [left, right](std::size_t at) {
            return _mm_cmpeq_epi16(simd::loadFour(left + at), simd::loadFour(right + at));
        };
        return simd::maskOf(_mm_and_si128(four(0), four(length - 4))) == 0xFFFFU;
    }
    const std::size_t last = length - kStep;
    __m128i same = simd::match(left + last, right + last);
    for (std::size_t at = 0; at < last; at += kStep) {
        same = _mm_and_si128(same, simd::match(left + at, right + at));
    }
    return simd::maskOf(same) == 0xFFFFU;
}

namespace simd {

struct IsLineFeed {
    static bool one(char16_t unit) { return unit == u'\n'; }
    static __m128i all(__m128i units) { return _mm_cmpeq_epi16(units, simd::all(u'\n')); }
};

struct IsLead {
    static bool one(char16_t unit) { return (unit & 0xFC00U) == 0xD800U; }
    static __m128i all(__m128i units) {
        return _mm_cmpeq_epi16(_mm_and_si128(units, simd::all(0xFC00)), simd::all(0xD800));
    }
};

/// How many units match. Each byte of a register counts on its own, until it might overflow.
template <class Match>
std::size_t countOf(const char16_t* at, const char16_t* end) {
    constexpr std::ptrdiff_t kTwoSteps = 2 * kStep;
    constexpr std::ptrdiff_t kMost = 255;
    std::size_t count = 0;
    while (end - at >= kTwoSteps) {
        __m128i counts = _mm_setzero_si128();
        for (std::ptrdiff_t left = std::min(kMost, (end - at) / kTwoSteps); left > 0; --left) {
            const __m128i found =
                _mm_packs_epi16(Match::all(load(at)), Match::all(load(at + kStep)));
            counts = _mm_sub_epi8(counts, found);
            at += kTwoSteps;
        }
        const __m128i sums = _mm_sad_epu8(counts, _mm_setzero_si128());
        count += static_cast<std::size_t>(_mm_cvtsi128_si32(sums))
                 + static_cast<std::size_t>(_mm_cvtsi128_si32(_mm_srli_si128(sums, 8)));
    }
    return count + static_cast<std::size_t>(std::count_if(at, end, Match::one));
}

/// Behind the last line feed, of which there is one.
inline const char16_t* lastLine(const char16_t* at, const char16_t* end) {
    for (; end - at >= kStep; end -= kStep) {
        if (const unsigned mask = maskOf(IsLineFeed::all(load(end - kStep)))) {
            return end - std::countl_zero(mask << 16U) / 2;
        }
    }
    while (end[-1] != u'\n') {
        --end;
    }
    return end;
}

}  // namespace simd

inline void countLines(const char16_t* at, const char16_t* end, LineCount& count) {
    if (const std::size_t lines = simd::countOf<simd::IsLineFeed>(at, end)) {
        count.lines += lines;
        count.characters = 0;
        at = simd::lastLine(at, end);
    }
    count.characters += static_cast<std::size_t>(end - at) - simd::countOf<simd::IsLead>(at, end);
}

#else

using scalar::countLines;
using scalar::findAny;
using scalar::findAnyOr;
using scalar::findQNameEnd;
using scalar::isSameText;

#endif

}  // namespace ZroCommon::internal
