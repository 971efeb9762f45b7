#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "zro/containers/ole/OleRefusal.h"

namespace ZroCommon::internal {

/// The first 512 bytes of a compound file, which come before its blocks whatever their size.
struct CompoundHeader {
    static constexpr std::size_t kSize = 512;
    static constexpr std::size_t kFatBlocksHere = 109;  // the numbers of further ones are chained
    static constexpr std::int32_t kEndOfChain = -2;

    /// What a file starts with that is one.
    static bool hasSignature(const unsigned char* bytes);

    /// Takes the fields from 512 bytes and tests them.
    OleRefusal parse(const unsigned char* bytes);

    /// Where a block lies in the file.
    std::int64_t blockOffset(std::int64_t block) const {
        return (block << blockShift) + static_cast<std::int64_t>(kSize);
    }

    bool littleEndian = true;
    std::string version;
    int blockShift = 9;
    int miniShift = 6;
    std::uint32_t fatBlockCount = 0;
    std::int32_t dirStartBlock = -1;
    std::int32_t miniFatCutoff = 64;
    std::int32_t miniFatStartBlock = -1;
    std::uint32_t miniFatBlockCount = 0;
    std::int32_t indirectFatStartBlock = -1;
    std::uint32_t indirectFatBlockCount = 0;
    std::array<std::int32_t, kFatBlocksHere> fatBlocks{};
    std::int64_t bytesPerBlock = 512;
    std::int64_t bytesPerMini = 128;
    std::int64_t minisPerBlock = 4;
    std::int64_t longsPerBlock = 128;

private:
    void readFields(const unsigned char* bytes);
    void computeSizes();
    OleRefusal check() const;
};

}  // namespace ZroCommon::internal
