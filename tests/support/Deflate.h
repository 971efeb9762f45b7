#pragma once

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include <zlib.h>

namespace ZroCommon::testing {

/// Window bits that make `deflated` write no framing, or gzip's.
constexpr int kRaw = -15;
constexpr int kGzip = 31;

/// `bytes` as zlib packs them. \param level  0 stored to 9 smallest
inline std::string deflated(std::string_view bytes, int windowBits = kRaw, int level = 6) {
    z_stream stream{};
    if (deflateInit2(&stream, level, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("deflateInit2");
    }
    std::string packed(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int code = deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    if (code != Z_STREAM_END) {
        throw std::runtime_error("deflate");
    }
    return packed;
}

/// What stands behind the data of a gzip member.
inline std::string trailer(std::string_view bytes) {
    const uLong check =
        crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size()));
    std::string result;
    for (const std::uint64_t number : {std::uint64_t{check}, std::uint64_t{bytes.size()}}) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            result += static_cast<char>(number >> shift);
        }
    }
    return result;
}

/// Bytes that do not pack well and have no period, the same in every run.
inline std::string noise(std::size_t size) {
    std::string bytes(size, '\0');
    std::uint32_t state = 1;
    std::generate(bytes.begin(), bytes.end(), [&state] {
        state = state * 1664525U + 1013904223U;
        return static_cast<char>('a' + (state >> 24U) % 26U);
    });
    return bytes;
}

}  // namespace ZroCommon::testing
