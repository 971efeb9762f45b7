// The check value of gzip, where the processor can multiply polynomials: several times as fast as
// by tables, which would be a fifth of the time that expanding takes.
#include "zro/streams/compression/internal/Crc32.h"

#include <zlib.h>

#if defined(__x86_64__)
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace ZroCommon::internal {
namespace {

std::uint32_t byTables(std::uint32_t before, std::span<const char> bytes) {
    return static_cast<std::uint32_t>(
        crc32_z(before, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

#if defined(__x86_64__)

#define ZRO_MULTIPLIES __attribute__((target("pclmul,sse4.1")))

constexpr std::size_t kLane = sizeof(__m128i);
constexpr std::size_t kLanes = 4;
constexpr std::size_t kStep = kLane * kLanes;

// Powers of x modulo the polynomial, bits reversed as gzip has them: V. Gopal and others, "Fast CRC
// Computation for Generic Polynomials Using PCLMULQDQ Instruction", 2009.
constexpr long long kFourLanesOn[] = {0x154442bd4, 0x1c6e41596};  // x^(512+32), x^(512-32)
constexpr long long kOneLaneOn[] = {0x1751997d0, 0x0ccaa009e};    // x^(128+32), x^(128-32)
constexpr long long kLastFold = 0x163cd6124;                      // x^64
constexpr long long kReduction[] = {0x1db710641, 0x1f7011641};    // the polynomial, its reciprocal

ZRO_MULTIPLIES inline __m128i load(const char* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

// Carries a remainder `factors` further on and adds what stands there.
ZRO_MULTIPLIES inline __m128i fold(__m128i remainder, __m128i factors, __m128i next) {
    const __m128i low = _mm_clmulepi64_si128(remainder, factors, 0x00);
    const __m128i high = _mm_clmulepi64_si128(remainder, factors, 0x11);
    return _mm_xor_si128(_mm_xor_si128(low, high), next);
}

// 128 bits to 32, by two more folds and Barrett's reduction.
ZRO_MULTIPLIES inline std::uint32_t reduce(__m128i remainder) {
    const __m128i lowWords = _mm_setr_epi32(-1, 0, -1, 0);
    const __m128i factors = _mm_set_epi64x(kOneLaneOn[1], kOneLaneOn[0]);
    __m128i value =
        _mm_xor_si128(_mm_srli_si128(remainder, 8), _mm_clmulepi64_si128(remainder, factors, 0x10));
    value = _mm_xor_si128(
        _mm_srli_si128(value, 4),
        _mm_clmulepi64_si128(_mm_and_si128(value, lowWords), _mm_set_epi64x(0, kLastFold), 0x00));
    const __m128i modulus = _mm_set_epi64x(kReduction[1], kReduction[0]);
    __m128i quotient = _mm_clmulepi64_si128(_mm_and_si128(value, lowWords), modulus, 0x10);
    quotient = _mm_clmulepi64_si128(_mm_and_si128(quotient, lowWords), modulus, 0x00);
    return static_cast<std::uint32_t>(_mm_extract_epi32(_mm_xor_si128(value, quotient), 1));
}

// \param bytes  a whole number of lanes, four at least
ZRO_MULTIPLIES std::uint32_t byMultiplying(std::uint32_t before, std::span<const char> bytes) {
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    __m128i lanes[kLanes];
    for (__m128i& lane : lanes) {
        lane = load(at);
        at += kLane;
    }
    lanes[0] = _mm_xor_si128(lanes[0], _mm_cvtsi32_si128(static_cast<int>(~before)));
    __m128i factors = _mm_set_epi64x(kFourLanesOn[1], kFourLanesOn[0]);
    for (; static_cast<std::size_t>(end - at) >= kStep; at += kStep) {
        for (std::size_t i = 0; i < kLanes; ++i) {
            lanes[i] = fold(lanes[i], factors, load(at + i * kLane));
        }
    }
    factors = _mm_set_epi64x(kOneLaneOn[1], kOneLaneOn[0]);
    __m128i remainder = lanes[0];
    for (std::size_t i = 1; i < kLanes; ++i) {
        remainder = fold(remainder, factors, lanes[i]);
    }
    for (; at < end; at += kLane) {
        remainder = fold(remainder, factors, load(at));
    }
    return ~reduce(remainder);
}

/// Asks the processor at the first use. What compilers have for it, `__builtin_cpu_supports`, asks
/// a dozen times whenever the library is loaded, which costs more than all else there on a machine
/// that is a virtual one.
bool canMultiply() {
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    constexpr unsigned kNeeded = bit_PCLMUL | bit_SSE4_1;
    return __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & kNeeded) == kNeeded;
}

#endif

}  // namespace

std::uint32_t extendCrc32(std::uint32_t before, std::span<const char> bytes) {
#if defined(__x86_64__)
    static const bool s_multiplies = canMultiply();
    const std::size_t whole = bytes.size() - bytes.size() % kLane;
    if (s_multiplies && whole >= kStep) {
        before = byMultiplying(before, bytes.first(whole));
        bytes = bytes.subspan(whole);
    }
#endif
    return byTables(before, bytes);
}

}  // namespace ZroCommon::internal
