#include "zro/containers/ole/internal/BlockTable.h"

#include "zro/containers/ole/internal/FileNumbers.h"

namespace ZroCommon::internal {

bool BlockTable::addKnownRow(std::int32_t block) {
    const auto known = m_rowOfBlock.find(block);
    if (known == m_rowOfBlock.end()) {
        return false;
    }
    m_rows.push_back(known->second);
    return true;
}

void BlockTable::addRow(std::int32_t block, const unsigned char* bytes, bool littleEndian) {
    const std::size_t start = m_numbers.size();
    const std::size_t count = std::size_t{1} << m_rowShift;
    m_numbers.resize(start + count);
    for (std::size_t i = 0; i < count; ++i) {
        m_numbers[start + i] = loadSigned(bytes + i * sizeof(std::int32_t), littleEndian);
    }
    m_rows.push_back(start);
    m_rowOfBlock.emplace(block, start);
}

}  // namespace ZroCommon::internal
