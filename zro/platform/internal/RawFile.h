#pragma once

#include <cstddef>
#include <cstdint>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// A file by its descriptor, without a buffer. What fails answers with -1 or false.
///
/// The descriptor is closed by `close` alone: it may have come from elsewhere, and whoever holds
/// the object decides.
class RawFile {
public:
    RawFile() = default;
    explicit RawFile(int descriptor) : m_descriptor(descriptor < 0 ? kNone : descriptor) {}

    /// Opens an existing file for reading, or for reading and writing a file that is created when
    /// it is missing (for its owner alone) and keeps its content when it is not. Directories are
    /// refused.
    static RawFile open(const UnicodeString& path, bool isWritable);

    bool isOpen() const { return m_descriptor != kNone; }
    int get() const { return m_descriptor; }
    void close();

    /// \return the bytes read, less than `count` only at the end of the file or on a failure
    std::int64_t read(char* bytes, std::size_t count) const;
    /// \return the bytes written, less than `count` only on a failure
    std::int64_t write(const char* bytes, std::size_t count) const;
    /// \param origin  0 from the start, 1 from the present position, 2 from the end
    /// \return the new position, or -1
    std::int64_t seek(std::int64_t offset, int origin) const;

private:
    static constexpr int kNone = -1;
    int m_descriptor = kNone;
};

}  // namespace ZroCommon::internal
