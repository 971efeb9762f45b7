#include "zro/containers/ole/internal/CompoundReader.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

#include "zro/containers/ole/internal/BlockChain.h"
#include "zro/containers/ole/internal/FileNumbers.h"

namespace ZroCommon::internal {
namespace {

constexpr OleRefusal kPassed{};

bool isRefused(const OleRefusal& refusal) {
    return refusal.check != OleCheck::Passed;
}

}  // namespace

OleRefusal CompoundReader::read() {
    if (!m_io.Open()) {
        return {OleCheck::Opening};
    }
    static constexpr auto kSteps = std::to_array(
        {&CompoundReader::readHeader, &CompoundReader::listFatBlocks, &CompoundReader::buildFat,
         &CompoundReader::buildMiniFat, &CompoundReader::buildDirectory});
    for (const auto step : kSteps) {
        const OleRefusal refusal = (this->*step)();
        if (isRefused(refusal)) {
            return refusal;
        }
    }
    return kPassed;
}

OleRefusal CompoundReader::readHeader() {
    std::array<unsigned char, CompoundHeader::kSize> bytes{};
    constexpr int kCount = static_cast<int>(bytes.size());
    if (m_io.Read(bytes.data(), kCount) != kCount) {
        return {OleCheck::HeaderSize};
    }
    CompoundHeader header;  // one that is refused leaves no sizes behind to reckon with
    const OleRefusal refusal = header.parse(bytes.data());
    if (!isRefused(refusal)) {
        m_header = std::move(header);
    }
    return refusal;
}

// The numbers of the first blocks of the FAT stand in the header, those of the others in a chain.
OleRefusal CompoundReader::listFatBlocks() {
    const std::size_t here =
        std::min<std::size_t>(m_header.fatBlockCount, CompoundHeader::kFatBlocksHere);
    m_fatBlocks.assign(m_header.fatBlocks.begin(),
                       m_header.fatBlocks.begin() + static_cast<std::ptrdiff_t>(here));
    return here == m_header.fatBlockCount ? kPassed : listIndirectFatBlocks();
}

OleRefusal CompoundReader::listIndirectFatBlocks() {
    if (m_header.indirectFatStartBlock < 0) {
        return {OleCheck::IndirectFatStart, m_header.indirectFatStartBlock};
    }
    if (m_header.longsPerBlock < 2) {
        return {OleCheck::IndirectFatCapacity, m_header.blockShift};
    }
    const auto perBlock = static_cast<std::size_t>(m_header.longsPerBlock - 1);
    std::int32_t block = m_header.indirectFatStartBlock;
    std::unordered_set<std::int32_t> seen;
    while (m_fatBlocks.size() < m_header.fatBlockCount) {
        if (!seen.insert(block).second) {
            return {OleCheck::IndirectFatLoop, block};
        }
        if (!readBlock(block)) {
            return {OleCheck::IndirectFatRead, block};
        }
        const auto numberAt = [this](std::size_t index) {
            return loadSigned(m_block.data() + 4 * index, m_header.littleEndian);
        };
        const std::size_t count = std::min(perBlock, m_header.fatBlockCount - m_fatBlocks.size());
        for (std::size_t i = 0; i < count; ++i) {
            m_fatBlocks.push_back(numberAt(i));
        }
        block = numberAt(perBlock);
    }
    return kPassed;
}

OleRefusal CompoundReader::buildFat() {
    if (m_header.longsPerBlock == 0) {
        return {OleCheck::FatCapacity, m_header.blockShift};
    }
    const int rowShift = m_header.blockShift - 2;
    m_tables.fat = BlockTable(rowShift);
    m_tables.miniFat = BlockTable(rowShift);
    for (const std::int32_t block : m_fatBlocks) {
        if (!addRow(m_tables.fat, block)) {
            return {OleCheck::FatRead, block};
        }
    }
    return kPassed;
}

OleRefusal CompoundReader::buildMiniFat() {
    const std::size_t count = m_header.miniFatBlockCount;
    if (count > m_tables.fat.numbersHeld() + 1) {
        return {OleCheck::MiniFatLength, m_header.miniFatBlockCount};
    }
    std::int32_t block = m_header.miniFatStartBlock;
    for (std::size_t i = 0; i < count; ++i) {
        if (!addRow(m_tables.miniFat, block)) {
            return {OleCheck::MiniFatRead, block};
        }
        block = m_tables.fat.next(block);
    }
    return kPassed;
}

OleRefusal CompoundReader::buildDirectory() {
    if (m_header.bytesPerBlock < OleDirInfo::kSize) {
        return {OleCheck::DirectoryCapacity, m_header.blockShift};
    }
    BlockChain chain;
    std::int32_t block = m_header.dirStartBlock;
    while (block != CompoundHeader::kEndOfChain) {
        if (block >= 0 && !chain.push(block, m_tables.fat.has(block))) {
            return {OleCheck::DirectoryLoop, block};
        }
        if (!readBlock(block)) {
            return {OleCheck::DirectoryRead, block};
        }
        const OleRefusal refusal = addEntries(block);
        if (isRefused(refusal)) {
            return refusal;
        }
        block = m_tables.fat.next(block);
    }
    return kPassed;
}

// The entries of the block that was read last.
OleRefusal CompoundReader::addEntries(std::int32_t block) {
    for (std::int64_t at = 0; at + OleDirInfo::kSize <= m_header.bytesPerBlock;
         at += OleDirInfo::kSize) {
        OleDirInfo& entry = m_directory.emplace_back();
        if (!entry.parse(m_block.data() + at, m_header.littleEndian)) {
            m_directory.pop_back();
            return {OleCheck::DirectoryName, block};
        }
        entry.setDirID(static_cast<long>(m_directory.size()) - 1);
        if (entry.isRoot()) {
            m_tables.miniStartSect = static_cast<std::int32_t>(entry.getStartSect());
        }
    }
    return kPassed;
}

// In pieces, so that a file that claims blocks of gigabytes takes no more memory than it has bytes.
bool CompoundReader::readBlock(std::int32_t block) {
    if (block < 0 || !m_io.Seek(m_header.blockOffset(block), 0)) {
        return false;
    }
    constexpr std::int64_t kPiece = 65536;
    std::int64_t done = 0;
    while (done < m_header.bytesPerBlock) {
        const int piece = static_cast<int>(std::min(kPiece, m_header.bytesPerBlock - done));
        if (m_block.size() < static_cast<std::size_t>(done + piece)) {
            m_block.resize(static_cast<std::size_t>(done + piece));
        }
        if (m_io.Read(m_block.data() + done, piece) != piece) {
            return false;
        }
        done += piece;
    }
    return true;
}

bool CompoundReader::addRow(BlockTable& table, std::int32_t block) {
    if (table.addKnownRow(block)) {
        return true;
    }
    if (!readBlock(block)) {
        return false;
    }
    table.addRow(block, m_block.data(), m_header.littleEndian);
    return true;
}

}  // namespace ZroCommon::internal
