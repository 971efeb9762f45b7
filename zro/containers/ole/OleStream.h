#pragma once

#include <cstdint>
#include <memory>

#include "zro/foundation/Export.h"

namespace ZroCommon {

class OleCompFile;

namespace internal {
class BlockChain;
}  // namespace internal

// NOLINTBEGIN(readability-identifier-naming): the names of this family are given

/// A stream in a compound file, for reading.
///
/// Made by `OleCompFile::OLEopenStream`. It must not outlive its file, whose position it moves:
/// several streams of a file can be read in turn, by one thread. Small streams lie in the mini
/// stream, in blocks of their own size; nobody needs to know. Nothing here throws.
class ZRO_API OleStream {
public:
    /// A stream that is nowhere; see `GetStreamChain`.
    /// \param file  not owned; null makes everything fail
    explicit OleStream(OleCompFile* file);
    OleStream(const OleStream&) = delete;
    OleStream& operator=(const OleStream&) = delete;
    virtual ~OleStream();

    /// Moves to a position, cut to what lies between 0 and the size.
    /// \param origin  0 from the start, 1 from the present position, 2 backward from the end
    /// \return the new position; -1, at the old position, when there is no block for it or the
    ///         chain to it is broken
    virtual long OLEseek(long offset, int origin);
    virtual long OLEtell();

    /// Reads from the position on.
    /// \return the number of bytes read; less than `count` at the end, or where the chain breaks or
    ///         the file ends
    virtual int OLEread(void* buffer, int count);

    /// The size in bytes that the directory gives; 0 when that is negative.
    virtual long GetStreamSize();

    /// Copies the stream to a file without the header at its start, whose length the first two
    /// bytes of the stream give, themselves included. A file that is there is overwritten and not
    /// shortened.
    /// \param path  in the default code page
    /// \return false when the file cannot be opened or there is no header. A copy that was cut
    ///         short is no failure.
    virtual bool CopyToFile(const char* path);

    /// Makes this object the stream of a directory entry. The position stays as it is: seek.
    /// \return false when the entry is no stream, or a small one in a file without a mini stream
    virtual bool GetStreamChain(long dirID);

    /// Looks up the chain of blocks as far as a given block of the stream. An end of the chain
    /// before it is no failure.
    /// \return false when the chain is broken, or comes to a block twice
    virtual bool GetStreamChainIndex(long index);

private:
    struct Place;

    bool isReadable() const;
    bool findPlace(std::int64_t position, Place& place);
    std::int64_t runLength(const Place& place, std::int64_t wanted);
    std::int32_t chainAt(std::int64_t index) const;
    std::int64_t fileOffset(std::int64_t block) const;
    bool extendChain(std::int64_t index);

    OleCompFile* m_file;
    std::unique_ptr<internal::BlockChain> m_chain;  // as far as it was needed
    std::int32_t m_nextBlock = -2;
    std::int32_t m_size = 0;
    bool m_isMini = false;
    std::int32_t m_position = 0;
};

// NOLINTEND(readability-identifier-naming)

}  // namespace ZroCommon
