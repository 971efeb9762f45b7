#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace ZroCommon::internal {

/// A table of the blocks that follow blocks: the FAT or the MiniFAT. It grows by a row, the numbers
/// of one block of the file.
///
/// A block that gives several rows is held once, so that the table stays as small as what the file
/// really holds, whatever it claims.
class BlockTable {
public:
    static constexpr std::int32_t kNone = -1;

    /// \param rowShift  logarithm to base 2 of the numbers in a row
    explicit BlockTable(int rowShift = 0) : m_rowShift(rowShift) {}

    /// Adds the row of a block that gave one before. \return false when it did not
    bool addKnownRow(std::int32_t block);
    /// Adds a row from the bytes of a block.
    void addRow(std::int32_t block, const unsigned char* bytes, bool littleEndian);

    /// What follows a block; -1 for a negative one and for one beyond the table.
    std::int32_t next(std::int64_t block) const {
        if (!has(block)) {
            return kNone;
        }
        const auto index = static_cast<std::size_t>(block);
        const std::size_t mask = (std::size_t{1} << m_rowShift) - 1;
        return m_numbers[m_rows[index >> m_rowShift] + (index & mask)];
    }

    /// Whether the table reaches as far as a block.
    bool has(std::int64_t block) const {
        return block >= 0 && static_cast<std::size_t>(block >> m_rowShift) < m_rows.size();
    }

    /// Numbers that are held: no chain comes to more blocks than these and its first.
    std::size_t numbersHeld() const { return m_numbers.size(); }

private:
    int m_rowShift;
    std::vector<std::size_t> m_rows;  // where the numbers of each start
    std::vector<std::int32_t> m_numbers;
    std::unordered_map<std::int32_t, std::size_t> m_rowOfBlock;
};

}  // namespace ZroCommon::internal
