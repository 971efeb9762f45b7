#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <unordered_set>
#include <vector>

namespace ZroCommon::internal {

/// The blocks of a chain, as a list and, once it is long, as one bit for each block up to the
/// highest, so that to tell when a chain comes back to a block takes linear time. Blocks so high
/// that no file of 8 GiB has them are held one by one: a few numbers of a small file can lead
/// there.
class BlockChain {
public:
    /// \param block    not negative
    /// \param canLoop  false for a block that nothing follows, so that it cannot come again
    /// \return false when the block is there already
    bool push(std::int32_t block, bool canLoop) {
        if (canLoop && has(block)) {
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
        m_marked = 0;
        m_bits.clear();
        m_high.clear();
    }

private:
    static constexpr std::size_t kShort = 32;
    static constexpr std::size_t kHigh = std::size_t{1} << 24;

    bool has(std::int32_t block) {
        if (m_blocks.size() < kShort) {
            return std::find(m_blocks.begin(), m_blocks.end(), block) != m_blocks.end();
        }
        for (; m_marked < m_blocks.size(); ++m_marked) {
            mark(m_blocks[m_marked]);
        }
        const auto index = static_cast<std::size_t>(block);
        return index < kHigh ? index < m_bits.size() && m_bits[index] : m_high.contains(block);
    }

    void mark(std::int32_t block) {
        const auto index = static_cast<std::size_t>(block);
        if (index >= kHigh) {
            m_high.insert(block);
            return;
        }
        if (index >= m_bits.size()) {
            m_bits.resize(std::max(index + 1, m_bits.size() + m_bits.size() / 2));
        }
        m_bits[index] = true;
    }

    std::vector<std::int32_t> m_blocks;
    std::size_t m_marked = 0;  // blocks that are in the two below as well
    std::vector<bool> m_bits;
    std::unordered_set<std::int32_t> m_high;
};

}  // namespace ZroCommon::internal
