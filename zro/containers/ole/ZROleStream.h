#pragma once

#include <cstdint>
#include <istream>
#include <memory>

#include "zro/containers/ole/OleStream.h"
#include "zro/foundation/Export.h"
#include "zro/foundation/StreamBuffer.h"

namespace ZroCommon {

/// The stream buffer of `ZROleStream`.
class ZRO_API ZROleStreamBuf : public StreamBuffer {
public:
    /// See the constructor of `ZROleStream`.
    ZROleStreamBuf(OleStream* stream, int limit);
    ZROleStreamBuf(const ZROleStreamBuf&) = delete;
    ZROleStreamBuf& operator=(const ZROleStreamBuf&) = delete;
    ~ZROleStreamBuf() override;

protected:
    int_type underflow() override;

private:
    int nextPiece() const;

    OleStream* m_stream;
    int m_limit;
    std::int64_t m_blocksRead = 0;
    std::unique_ptr<char[]> m_buffer;
};

/// A stream of a compound file as a standard input stream, from where it stands. It cannot seek.
class ZRO_API ZROleStream : public std::basic_istream<char> {
public:
    /// \param stream  not owned, and must outlive this object; null is an empty one
    /// \param limit   the number of bytes to give at most; negative for the whole stream
    ZROleStream(OleStream* stream, int limit);
    ZROleStream(const ZROleStream&) = delete;
    ZROleStream& operator=(const ZROleStream&) = delete;
    ~ZROleStream() override;

private:
    ZROleStreamBuf m_buffer;
};

}  // namespace ZroCommon
