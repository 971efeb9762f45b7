#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ZroCommon::internal {

/// The blocks of a chain, as a list and, once it is long, as one bit for each block up to the
/// highest, so that to tell when a chain comes back to a block takes linear time.
class BlockChain {
public:
    /// \param block    not negative
    /// \param canLoop  false for a block that nothing follows, so that it cannot come again
    /// \return false when the block is there already
    bool push(std::int32_t block, bool canLoop) {
        if (canLoop && !isNew(block)) {
            return false;
        }
        m_blocks.push_back(block);
        return true;
    }

    std::size_t size() const { return m_blocks.size(); }
    std::int32_t operator[](std::size_t index) const { return m_blocks[index]; }
    const std::vector<std::int32_t>& blocks() const { return m_blocks; }

    void clear() {
        m_blocks.clear();
        m_bits.clear();
    }

private:
    static constexpr std::size_t kShort = 32;

    bool isNew(std::int32_t block) {
        if (m_blocks.size() < kShort) {
            return std::find(m_blocks.begin(), m_blocks.end(), block) == m_blocks.end();
        }
        if (m_bits.empty()) {
            for (const std::int32_t earlier : m_blocks) {
                mark(earlier);
            }
        }
        return mark(block);
    }

    bool mark(std::int32_t block) {
        const auto index = static_cast<std::size_t>(block);
        if (index >= m_bits.size()) {
            m_bits.resize(std::max(index + 1, m_bits.size() + m_bits.size() / 2));
        }
        const bool wasUnmarked = !m_bits[index];
        m_bits[index] = true;
        return wasUnmarked;
    }

    std::vector<std::int32_t> m_blocks;
    std::vector<bool> m_bits;
};

}  // namespace ZroCommon::internal
