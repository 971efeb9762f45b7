#include "zro/containers/ole/OleCompFile.h"

#include "zro/containers/ole/internal/CompoundReader.h"
#include "zro/containers/ole/internal/CompoundTables.h"

namespace ZroCommon {
namespace {

using internal::CompoundTables;

// What getters answer before a file is open.
const CompoundTables& closedTables() {
    static const CompoundTables s_closed;
    return s_closed;
}

}  // namespace

OleCompFile::OleCompFile() = default;
OleCompFile::OleCompFile(const OleCompFile& other) = default;
OleCompFile& OleCompFile::operator=(const OleCompFile& other) = default;
OleCompFile::~OleCompFile() = default;

const CompoundTables& OleCompFile::tables() const {
    return m_tables ? *m_tables : closedTables();
}

bool OleCompFile::OLEopen(const char* path) {
    try {
        return openWith(std::make_shared<JZFileIOobj>(path, "rb"));
    } catch (...) {
        return false;
    }
}

bool OleCompFile::OLEopen(JZIOobj* io) {
    try {
        return openWith({std::shared_ptr<void>(), io});  // shares in nothing: not owned
    } catch (...) {
        return false;
    }
}

bool OleCompFile::openWith(std::shared_ptr<JZIOobj> io) {
    m_io = std::move(io);
    m_dirVec.clear();
    m_refusal = {m_io ? OleCheck::Memory : OleCheck::Opening};
    m_tables = std::make_shared<CompoundTables>();
    if (m_io) {
        m_refusal = internal::CompoundReader(*m_io, *m_tables, m_dirVec).read();
    }
    return m_refusal.check == OleCheck::Passed;
}

OleDirInfo* OleCompFile::getDirInfo(long index) {
    return index < 0 || index >= getDirCount() ? nullptr : &m_dirVec[static_cast<size_t>(index)];
}

const OleDirInfo* OleCompFile::getDirInfo(long index) const {
    return index < 0 || index >= getDirCount() ? nullptr : &m_dirVec[static_cast<size_t>(index)];
}

long OleCompFile::getNextBlock(long block, bool mini) const {
    return mini ? tables().miniFat.next(block) : tables().fat.next(block);
}

int OleCompFile::getBlockShift(bool mini) const {
    return mini ? tables().header.miniShift : tables().header.blockShift;
}

long OleCompFile::getBytesPerBlock() const {
    return tables().header.bytesPerBlock;
}
long OleCompFile::getBytesPerMini() const {
    return tables().header.bytesPerMini;
}
long OleCompFile::getMinisPerBlock() const {
    return tables().header.minisPerBlock;
}
long OleCompFile::getLongsPerBlock() const {
    return tables().header.longsPerBlock;
}
long OleCompFile::getMiniFatCutoff() const {
    return tables().header.miniFatCutoff;
}
long OleCompFile::getMiniStartSect() const {
    return tables().miniStartSect;
}
long OleCompFile::getDirStartBlock() const {
    return tables().header.dirStartBlock;
}
long OleCompFile::getFatBlockCount() const {
    return tables().header.fatBlockCount;
}
long OleCompFile::getMiniFatStartBlock() const {
    return tables().header.miniFatStartBlock;
}
long OleCompFile::getMiniFatBlockCount() const {
    return tables().header.miniFatBlockCount;
}
long OleCompFile::getIndirectFatStartBlock() const {
    return tables().header.indirectFatStartBlock;
}
long OleCompFile::getIndirectFatBlockCount() const {
    return tables().header.indirectFatBlockCount;
}
const std::string& OleCompFile::getVersion() const {
    return tables().header.version;
}
bool OleCompFile::isLittleEndian() const {
    return tables().header.littleEndian;
}

int OleCompFile::ReadIO(char* buffer, int count) {
    return m_io ? m_io->Read(buffer, count) : 0;
}

int OleCompFile::ReadIO(unsigned char* buffer, int count) {
    return m_io ? m_io->Read(buffer, count) : 0;
}

bool OleCompFile::SeekIO(long offset, int origin) {
    return m_io && m_io->Seek(offset, origin);
}

}  // namespace ZroCommon
