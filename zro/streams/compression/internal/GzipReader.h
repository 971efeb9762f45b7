#pragma once

#include <cstddef>
#include <istream>
#include <memory>
#include <span>

#include "zro/streams/compression/internal/ExpandedBlock.h"

namespace ZroCommon::internal {

/// Gives the bytes of gzip data, or of what is none as it stands.
class GzipReader {
public:
    GzipReader() = default;
    GzipReader(const GzipReader&) = delete;
    GzipReader& operator=(const GzipReader&) = delete;
    virtual ~GzipReader() = default;

    /// Reads up to as many bytes as there is room for. \return their number, 0 at the end
    virtual std::size_t read(std::span<char> room) = 0;

    ExpandedBlock& block() { return m_block; }

private:
    ExpandedBlock m_block;
};

/// Reads all members of a file, and holds back what zlib's file functions hold back before a fault
/// when they fill runs of 16384 bytes; a wrong check value of the header is none.
/// \return null without a file
std::unique_ptr<GzipReader> readGzipFile(std::unique_ptr<std::istream> file);

/// Reads the first member of a stream that can seek, from the start of the stream. It must live as
/// long as the reader.
std::unique_ptr<GzipReader> readGzipStream(std::istream& stream);

}  // namespace ZroCommon::internal
