#include "zro/containers/ole/internal/CompoundTables.h"

#include <algorithm>

namespace ZroCommon::internal {

void MiniStreamChain::follow(std::int32_t firstBlock, const BlockTable& fat) {
    m_blocks.clear();  // of what was left when memory ran out
    std::int32_t block = firstBlock;
    while (block >= 0 && m_blocks.push(block, fat.has(block))) {
        block = fat.next(block);
    }
    if (block >= 0) {
        const auto& blocks = m_blocks.blocks();
        m_circleStart = std::find(blocks.begin(), blocks.end(), block) - blocks.begin();
    }
    m_isFollowed = true;
}

std::int32_t MiniStreamChain::at(std::int64_t index, std::int32_t firstBlock,
                                 const BlockTable& fat) {
    if (!m_isFollowed) {
        follow(firstBlock, fat);
    }
    const auto count = static_cast<std::int64_t>(m_blocks.size());
    if (index >= count && m_circleStart >= 0) {
        index = m_circleStart + (index - m_circleStart) % (count - m_circleStart);
    }
    return index < count ? m_blocks[static_cast<std::size_t>(index)] : BlockTable::kNone;
}

}  // namespace ZroCommon::internal
