#pragma once

#include <cstdint>

#include "zro/containers/ole/internal/BlockChain.h"
#include "zro/containers/ole/internal/BlockTable.h"
#include "zro/containers/ole/internal/CompoundHeader.h"

namespace ZroCommon::internal {

/// The chain of blocks of the mini stream, looked up when the first small stream is.
///
/// It is followed wherever it leads: one that runs in a circle goes on for ever.
class MiniStreamChain {
public:
    /// The block at an index, negative when the chain ends before.
    std::int32_t at(std::int64_t index, std::int32_t firstBlock, const BlockTable& fat);

private:
    void follow(std::int32_t firstBlock, const BlockTable& fat);

    bool m_isFollowed = false;
    BlockChain m_blocks;              // up to the end, or to where the circle closes
    std::int64_t m_circleStart = -1;  // index of the block that follows the last; -1 for none
};

/// What is known of an open compound file but for its directory.
struct CompoundTables {
    CompoundHeader header;
    BlockTable fat;
    BlockTable miniFat;
    std::int32_t miniStartSect = -1;
    MiniStreamChain miniStream;
};

}  // namespace ZroCommon::internal
