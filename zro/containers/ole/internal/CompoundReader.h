#pragma once

#include <cstdint>
#include <vector>

#include "zro/containers/ole/JZIOobj.h"
#include "zro/containers/ole/OleDirInfo.h"
#include "zro/containers/ole/OleRefusal.h"
#include "zro/containers/ole/internal/CompoundTables.h"

namespace ZroCommon::internal {

/// Reads what an open compound file keeps in memory: header, FAT, MiniFAT and directory. The first
/// check that fails ends the work and is the answer.
///
/// Numbers of the file are claims: memory is taken as blocks are read, and each chain ends at the
/// latest where it has come to every block.
class CompoundReader {
public:
    CompoundReader(JZIOobj& io, CompoundTables& tables, std::vector<OleDirInfo>& directory)
        : m_io(io), m_tables(tables), m_header(tables.header), m_directory(directory) {}

    OleRefusal read();

private:
    OleRefusal readHeader();
    OleRefusal listFatBlocks();
    OleRefusal listIndirectFatBlocks();
    OleRefusal buildFat();
    OleRefusal buildMiniFat();
    OleRefusal buildDirectory();
    OleRefusal addEntries(std::int32_t block);
    bool readBlock(std::int32_t block);
    bool addRow(BlockTable& table, std::int32_t block);

    JZIOobj& m_io;
    CompoundTables& m_tables;
    CompoundHeader& m_header;
    std::vector<OleDirInfo>& m_directory;
    std::vector<std::int32_t> m_fatBlocks;
    std::vector<unsigned char> m_block;
};

}  // namespace ZroCommon::internal
