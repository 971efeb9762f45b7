#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <zlib.h>

#include "tests/support/Bytes.h"

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
    return code == Z_STREAM_END ? packed : throw std::runtime_error("deflate");
}

inline std::uint32_t crcOf(std::string_view bytes) {
    const auto* const start = reinterpret_cast<const Bytef*>(bytes.data());
    return static_cast<std::uint32_t>(crc32_z(0, start, bytes.size()));
}

/// What stands behind the data of a gzip member.
inline std::string trailer(std::string_view bytes) {
    return numberBytes(crcOf(bytes), 4) + numberBytes(bytes.size(), 4);
}

}  // namespace ZroCommon::testing
