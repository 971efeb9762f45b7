#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ZroCommon::internal {

/// Blocks that a chain has come to, to tell when it comes back. A few are held as a list, more as
/// one bit for each block up to the highest: a long chain costs linear time.
class BlockSet {
public:
    /// \param block  not negative, and small enough for a table of bits
    /// \return false when it is there already
    bool insert(std::int32_t block) {
        if (m_bits.empty()) {
            if (std::find(m_few.begin(), m_few.end(), block) != m_few.end()) {
                return false;
            }
            if (m_few.size() < kFew) {
                m_few.push_back(block);
                return true;
            }
            for (const std::int32_t earlier : m_few) {
                set(earlier);
            }
        }
        return set(block);
    }

private:
    static constexpr std::size_t kFew = 16;

    bool set(std::int32_t block) {
        const auto index = static_cast<std::size_t>(block);
        if (index >= m_bits.size()) {
            m_bits.resize(std::max(index + 1, m_bits.size() + m_bits.size() / 2));
        }
        const bool isNew = !m_bits[index];
        m_bits[index] = true;
        return isNew;
    }

    std::vector<std::int32_t> m_few;
    std::vector<bool> m_bits;
};

}  // namespace ZroCommon::internal
