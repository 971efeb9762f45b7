#pragma once

#include <iosfwd>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/foundation/ZRCStr.h"

namespace ZroCommon {

/// Owner of the name of a temporary file: the file is removed with its owner.
///
/// Names are unique among all processes, and a file that is there already, a planted link too, is
/// never taken. A copy owns the same file: hand names on by `releaseFileName`. Texts given as
/// `const char*` are in the default code page (UTF-8), and null is the empty text. The class
/// operations may be called by any thread.
class ZRO_API ZRTempFile {
public:
    /// Owns no file.
    ZRTempFile() = default;

    /// Makes a file and owns it; see `getTempFile`.
    ZRTempFile(const UnicodeString& dir, const UnicodeString& prefix, const UnicodeString& suffix);
    ZRTempFile(const char* dir, const char* prefix, const char* suffix);

    ZRTempFile(const ZRTempFile&) = default;
    /// On purpose: the file of the old name is left where it is.
    ZRTempFile& operator=(const ZRTempFile&) = default;

    /// Removes the file. \throws ZRError  as `remove`, unless another exception is under way
    ~ZRTempFile() noexcept(false);

    ZRCStr getFileName() const { return m_fileName; }
    bool isTempFile() const { return !m_fileName.isEmpty(); }

    /// Gives the name away; the file stays.
    ZRCStr releaseFileName();

    /// Removes the old file and takes over the name; whether there is such a file does not matter.
    /// \throws ZRError  as `remove`
    ZRCStr setFileName(const UnicodeString& name);
    ZRCStr setFileName(const char* name);

    /// Removes the old file and makes a new one; see `getTempFile`.
    /// \throws ZRError  as `remove` and `getTempFile`
    ZRCStr setFileName(const UnicodeString& dir, const UnicodeString& prefix,
                       const UnicodeString& suffix);
    ZRCStr setFileName(const char* dir, const char* prefix, const char* suffix);

    /// Removes the file; the name stays. A file that is gone already is no error.
    /// \throws ZRError  0x100D when it cannot be removed
    void remove() const;

    /// Expands a raw deflate block (RFC 1951) into the file, which is emptied first.
    /// \return false when the block or the file has a fault; what came before it is in the file
    bool inflate(const unsigned char* data, unsigned int size) const;
    /// The same into a stream.
    static bool inflate(std::ostream& stream, const unsigned char* data, unsigned int size);

    /// The folder for temporary files of this process, with a "/" at its end.
    static ZRCStr getTempDirectory();

    /// Makes a new, empty file that only this user may open.
    /// \param dir     with a separator at its end, or empty for `getTempDirectory`
    /// \param prefix  begins the name
    /// \param suffix  ends the name, with the dot of an extension
    /// \return its name
    /// \throws ZRError  0x100E when none can be made
    static ZRCStr getTempFile(const UnicodeString& dir, const UnicodeString& prefix,
                              const UnicodeString& suffix);
    static ZRCStr getTempFile(const char* dir, const char* prefix, const char* suffix);

    /// Removes a file. \return false when it is still there
    static bool removeTempFile(const UnicodeString& name);
    static bool removeTempFile(const char* name);

private:
    UnicodeString m_fileName;
};

}  // namespace ZroCommon
