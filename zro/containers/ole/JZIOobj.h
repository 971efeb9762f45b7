#pragma once

#include <cstdint>
#include <istream>
#include <memory>
#include <string>

#include "zro/foundation/Export.h"

namespace ZroCommon {

// NOLINTBEGIN(readability-identifier-naming): the names of this family are given

/// Access to the bytes of a file, as the reader of compound files needs it. Derive from it to hand
/// in bytes from elsewhere; what is not overridden fails.
///
/// Positions are in bytes. Nothing here throws. One thread at a time.
class ZRO_API JZIOobj {
public:
    JZIOobj();
    JZIOobj(const JZIOobj&) = delete;
    JZIOobj& operator=(const JZIOobj&) = delete;
    virtual ~JZIOobj();

    /// \return true when the bytes can be reached, also when they could be before
    virtual bool Open();
    virtual bool Close();
    /// \return the number of bytes read, 0 at the end or on a failure
    virtual int Read(char* buffer, int count);
    /// \return the number of bytes written
    virtual int Write(const char* buffer, int count);
    /// \param origin  0 from the start, 1 from the present position, 2 from the end
    virtual bool Seek(long offset, int origin);
    virtual long Tell();

    int Read(unsigned char* buffer, int count);
    int Write(const unsigned char* buffer, int count);

    bool IsOpened() const { return has(kOpened); }
    void SetOpened(bool on) { set(kOpened, on); }
    /// Whether a header of 128 bytes comes first, which positions do not count.
    bool IsMACBinary() const { return has(kMacBinary); }
    void SetMACBinary(bool on) { set(kMacBinary, on); }
    bool IsBinary() const { return has(kBinary); }
    void SetBinary(bool on) { set(kBinary, on); }
    bool IsWritable() const { return has(kWritable); }
    void SetWritable(bool on) { set(kWritable, on); }

protected:
    std::uint32_t m_flags = 0;                  ///< 1 opened, 2 Mac binary, 4 binary, 8 writable
    std::int64_t m_size = 0;                    ///< of the file, in bytes, where it is known
    std::unique_ptr<unsigned char[]> m_buffer;  ///< scratch memory for derived classes, if any

private:
    static constexpr std::uint32_t kOpened = 1;
    static constexpr std::uint32_t kMacBinary = 2;
    static constexpr std::uint32_t kBinary = 4;
    static constexpr std::uint32_t kWritable = 8;

    bool has(std::uint32_t flag) const { return (m_flags & flag) != 0; }
    void set(std::uint32_t flag, bool on) { m_flags = on ? m_flags | flag : m_flags & ~flag; }
};

/// A file of the operating system, without a buffer.
///
/// Letters of a mode: "r" not writable, "w" writable, "b" binary, "t" not binary; others are passed
/// over. Opening for writing creates a file that is missing and leaves the content of one that is
/// there. Directories are refused.
class ZRO_API JZFileIOobj : public JZIOobj {
public:
    /// \param name  in the default code page; null is no file. It is opened by `Open`.
    JZFileIOobj(const char* name, const char* mode);
    /// Takes over an open descriptor; a negative one is none.
    JZFileIOobj(int fd, char* mode);
    /// Closes the file.
    ~JZFileIOobj() override;

    bool Open() override;
    bool Close() override;
    int Read(char* buffer, int count) override;
    int Write(const char* buffer, int count) override;
    bool Seek(long offset, int origin) override;
    long Tell() override;
    using JZIOobj::Read;
    using JZIOobj::Write;

private:
    void takeMode(const char* mode);

    std::string m_fileName;
    int m_fd = -1;
};

/// A standard stream that can seek. It is never written to.
///
/// On purpose: the state of the stream is never cleared, so behind a read that came up short every
/// operation fails.
class ZRO_API JZStreamIOobj : public JZIOobj {
public:
    /// \param stream  not owned; must outlive the object
    JZStreamIOobj(std::istream* stream);
    ~JZStreamIOobj() override;

    bool Open() override;
    bool Close() override;
    int Read(char* buffer, int count) override;
    /// \param origin  any other than 0 and 1 counts from the end
    bool Seek(long offset, int origin) override;
    long Tell() override;
    using JZIOobj::Read;

private:
    std::istream* m_stream;
};

// NOLINTEND(readability-identifier-naming)

}  // namespace ZroCommon
