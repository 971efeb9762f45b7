#pragma once

#include <cstdint>
#include <istream>
#include <memory>
#include <string>
#include <vector>

#include "zro/containers/ole/JZIOobj.h"
#include "zro/containers/ole/OleDirInfo.h"
#include "zro/containers/ole/OleRefusal.h"
#include "zro/containers/ole/OleStream.h"
#include "zro/foundation/Export.h"
#include "zro/uri/ZRUri.h"

namespace ZroCommon {

namespace internal {
struct CompoundTables;
}  // namespace internal

/// Which application wrote a compound file.
enum OLEDOCUMENT_TYPE : std::uint8_t {
    OLEDOCUMENT_NONE,
    OLEDOCUMENT_WORD,
    OLEDOCUMENT_EXCEL,
    OLEDOCUMENT_POWERPOINT,
    OLEDOCUMENT_DOCUMENT_VIEW_STYLES
};

// NOLINTBEGIN(readability-identifier-naming): the names of this family are given

/// A compound file, the container of office documents before their XML formats: a directory of
/// storages and streams over blocks that are chained by a table, the FAT.
///
/// Empty until it is opened; opening reads the directory and the tables, reading streams needs the
/// file still. Only blocks of 512 bytes are at home here: those of 4096 bytes are taken to start
/// behind the first 512 bytes too, and are misread. Copies share the bytes and the tables, and the
/// last one gives back what is owned. Failures answer with false, null, -1 or 0, and nothing is
/// thrown. One thread at a time for a file, its copies and its streams.
class ZRO_API OleCompFile {
public:
    OleCompFile();
    OleCompFile(const OleCompFile& other);
    OleCompFile& operator=(const OleCompFile& other);
    virtual ~OleCompFile();

    /// Opens a file. Streams of a file that was open before must not be used any more.
    /// \param path  in the default code page
    bool OLEopen(const char* path);
    /// \param io  not owned; must outlive this object and its streams
    bool OLEopen(JZIOobj* io);

    /// Why the last opening failed.
    const OleRefusal& getRefusal() const { return m_refusal; }

    /// The stream at a path, at its start.
    /// \return a new object for `OLEcloseStream`, or null when there is none or it has no place
    OleStream* OLEopenStream(OleDirPath* path);

    /// The presentation of an embedded object, "\2OlePres000" in the storage at a path. Only right
    /// siblings of the first entry there are looked at, and the last one is taken when none has
    /// that name.
    /// \return a new object for `OLEcloseStream`, or null
    OleStream* OLEopenObject(OleDirPath* path);

    /// Deletes a stream. Null is allowed.
    void OLEcloseStream(OleStream* stream);

    /// The index of an entry by its path, without regard to case.
    /// \return negative when there is no such entry, and 0, the root, when there is no such storage
    ///         on the way to it
    long getDirIndex(OleDirPath* path);

    /// The entry at an index, or null outside of the directory.
    OleDirInfo* getDirInfo(long index);
    const OleDirInfo* getDirInfo(long index) const;
    std::vector<OleDirInfo>& getDirVec() { return m_dirVec; }
    const std::vector<OleDirInfo>& getDirVec() const { return m_dirVec; }
    long getDirCount() const { return static_cast<long>(m_dirVec.size()); }

    /// The block that follows in the FAT, or in the MiniFAT: -2 at the end of a chain, -1 for a
    /// negative block and for one beyond the table.
    long getNextBlock(long block, bool mini) const;

    /// Sizes in bytes, and their logarithms to base 2.
    int getBlockShift(bool mini) const;
    long getBytesPerBlock() const;
    long getBytesPerMini() const;
    /// Mini blocks in a block; 0 when they are larger than it.
    long getMinisPerBlock() const;
    /// Numbers in a block of the FAT.
    long getLongsPerBlock() const;
    /// Streams below this size lie in the mini stream.
    long getMiniFatCutoff() const;
    /// First block of the mini stream, -1 for none.
    long getMiniStartSect() const;
    long getDirStartBlock() const;
    long getFatBlockCount() const;
    long getMiniFatStartBlock() const;
    long getMiniFatBlockCount() const;
    long getIndirectFatStartBlock() const;
    long getIndirectFatBlockCount() const;
    /// The version bytes in the order of the file, such as "3e 00".
    const std::string& getVersion() const;
    bool isLittleEndian() const;

    /// Straight access to the bytes, at the position that streams move as well. 0 and false without
    /// a file.
    int ReadIO(char* buffer, int count);
    int ReadIO(unsigned char* buffer, int count);
    bool SeekIO(long offset, int origin);

    /// Whether 512 bytes can be read from where a stream stands and start as a compound file does.
    /// The stream is left behind them.
    static bool isOLEUri(std::istream& stream);
    static bool isOLEUri(ZRUri uri);

    /// What kind of document a compound file is, by the names of its streams. The stream must be
    /// able to seek; it is read from its start and left anywhere.
    static OLEDOCUMENT_TYPE detectOLEDocument(std::istream& stream);
    static OLEDOCUMENT_TYPE detectOLEDocument(ZRUri uri);

private:
    friend class OleStream;

    bool openWith(std::shared_ptr<JZIOobj> io);
    OleStream* openStreamAt(long index);
    const internal::CompoundTables& tables() const;

    std::shared_ptr<JZIOobj> m_io;
    std::shared_ptr<internal::CompoundTables> m_tables;  // null before the first opening
    std::vector<OleDirInfo> m_dirVec;
    OleRefusal m_refusal;
};

// NOLINTEND(readability-identifier-naming)

}  // namespace ZroCommon
