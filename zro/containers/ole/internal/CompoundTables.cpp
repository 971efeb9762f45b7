#include "zro/containers/ole/internal/CompoundTables.h"

#include <algorithm>

#include "zro/containers/ole/internal/BlockSet.h"

namespace ZroCommon::internal {

void MiniStreamChain::follow(std::int32_t firstBlock, const BlockTable& fat) {
    m_isFollowed = true;
    BlockSet seen;
    std::int32_t block = firstBlock;
    while (block >= 0) {
        // Nothing follows a block beyond the table, so it cannot come again.
        if (fat.has(block) && !seen.insert(block)) {
            m_circleStart = std::find(m_blocks.begin(), m_blocks.end(), block) - m_blocks.begin();
            return;
        }
        m_blocks.push_back(block);
        block = fat.next(block);
    }
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
