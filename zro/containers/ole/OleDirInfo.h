#pragma once

#include <array>
#include <cstdint>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

/// What a directory entry of a compound file is.
enum OleStorageType : std::uint8_t {
    OLESTORAGE_UNKNOWN,
    OLESTORAGE_STORAGE,
    OLESTORAGE_STREAM,
    OLESTORAGE_LOCKBYTES,
    OLESTORAGE_PROPERTY,
    OLESTORAGE_ROOT
};

/// A class identifier as it lies in the file, byte by byte.
using OLE_CLSID = std::array<std::uint8_t, 16>;

/// One entry of the directory of a compound file: a storage, a stream or the root. A value.
///
/// Entries of one storage hang together as a tree of siblings, whose root is the child of the
/// storage. The numbers of siblings and child come from the file: they may be outside of the
/// directory or lead in circles.
class ZRO_API OleDirInfo {
public:
    /// Bytes of an entry in the file.
    static constexpr int kSize = 128;

    OleDirInfo() = default;

    /// Takes the fields from the 128 bytes at `data`; the index stays.
    /// \param littleEndian  the byte order of all numbers, the units of the name among them
    /// \return false when the name claims to be longer than it can be; the fields are then as
    /// before
    bool parse(const unsigned char* data, bool littleEndian);

    /// The name without any U+0000. A unit below U+0020 at its start belongs to it.
    const UnicodeString& getName() const { return m_name; }

    /// Whether this is the name, whatever the case of its letters.
    /// \param name  in the default code page; null is no name
    bool compareName(const char* name) const;

    /// The index in the directory; -1 for an entry that is in none.
    long getDirID() const { return m_dirID; }
    void setDirID(long dirID) { m_dirID = static_cast<std::int32_t>(dirID); }

    /// Indexes in the directory, -1 for none.
    long getLeftSiblingID() const { return m_leftSiblingID; }
    long getRightSiblingID() const { return m_rightSiblingID; }
    long getChildID() const { return m_childID; }

    OleStorageType getStorageType() const { return m_storageType; }
    bool isRoot() const { return m_storageType == OLESTORAGE_ROOT; }
    bool isStorage() const { return m_storageType == OLESTORAGE_STORAGE; }
    bool isStream() const { return m_storageType == OLESTORAGE_STREAM; }

    /// First block of a stream, or of the mini stream for the root; -1 for anything else.
    long getStartSect() const { return m_startSect; }
    /// Size in bytes as the file claims it, which may be negative; 0 for anything but streams and
    /// the root.
    long getStreamSize() const { return m_streamSize; }

    /// Storages and the root have these; they are zero for anything else.
    const OLE_CLSID& getClsid() const { return m_clsid; }
    std::uint32_t getStateBits() const { return m_stateBits; }
    /// In units of 100 ns since the start of 1601 (UTC); 0 for none.
    std::uint64_t getCreateTime() const { return m_createTime; }
    std::uint64_t getModifyTime() const { return m_modifyTime; }

    /// 0 red, 1 black: the balance of the tree of siblings. Not used.
    std::uint8_t getColor() const { return m_color; }

private:
    UnicodeString m_name;
    OleStorageType m_storageType = OLESTORAGE_UNKNOWN;
    std::uint8_t m_color = 0;
    std::int32_t m_dirID = -1;
    std::int32_t m_leftSiblingID = -1;
    std::int32_t m_rightSiblingID = -1;
    std::int32_t m_childID = -1;
    OLE_CLSID m_clsid{};
    std::uint32_t m_stateBits = 0;
    std::uint64_t m_createTime = 0;
    std::uint64_t m_modifyTime = 0;
    std::int32_t m_startSect = -1;
    std::int32_t m_streamSize = 0;
};

/// The way to a stream: the names of its storages, outermost first, and its own name last.
struct OleDirPath {
    std::int32_t count;    ///< names given, 1 to 4
    const char* names[4];  ///< in the default code page; borrowed
};

}  // namespace ZroCommon
