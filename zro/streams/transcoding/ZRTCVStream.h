#pragma once

#include <cstddef>
#include <istream>
#include <memory>

#include "zro/foundation/Export.h"
#include "zro/foundation/StreamBuffer.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

namespace internal {
class CodeConverter;
}

/// The stream buffer of `ZRTCVStream`.
class ZRO_API ZRTCVStreamBuf : public StreamBuffer {
public:
    /// See the constructor of `ZRTCVStream`.
    ZRTCVStreamBuf(std::istream* source, const char* encoding);
    ZRTCVStreamBuf(const ZRTCVStreamBuf&) = delete;
    ZRTCVStreamBuf& operator=(const ZRTCVStreamBuf&) = delete;
    ~ZRTCVStreamBuf() override;

    bool is_open() const {  // NOLINT(readability-identifier-naming): as file streams have it
        return m_output != nullptr;
    }

protected:
    int_type underflow() override;

private:
    void topUpInput();
    std::size_t convertMore(std::size_t kept);
    void close();

    std::istream* m_source;
    std::unique_ptr<internal::CodeConverter> m_converter;  // null when all was converted
    std::unique_ptr<char[]> m_input;
    std::size_t m_inputLength = 0;
    std::unique_ptr<char[]> m_output;
};

/// Reads bytes in a named encoding and delivers them as UTF-16LE, without a byte order mark of its
/// own.
///
/// Any encoding that ICU knows can be read, and those for which there is a table where
/// `setTCVTablePath` says. A malformed sequence becomes U+FFFD. "UTF-16" and "UTF-32" drop a
/// byte order mark; in UTF-8, and where the name says the order, one is the character U+FEFF. After
/// a refill at least the last 16 bytes can be put back; the stream cannot seek. Nothing is thrown
/// but by a lack of memory: a source or conversion that fails looks like the end. The source is not
/// owned and has to live as long.
class ZRO_API ZRTCVStream : public std::basic_istream<char> {
public:
    /// \param source    read ahead, up to 4096 bytes at a time; null is empty
    /// \param encoding  in any case. "Shift_JIS", "GB2312", "Big5" and "KS_C_5601-1987" and their
    ///                  like stand for the larger sets that files of that name hold: those of
    ///                  Windows. Null lets the encoding be detected, for which the source must be
    ///                  able to seek: it is rewound to its start.
    ZRTCVStream(std::istream* source, const char* encoding);
    ~ZRTCVStream() override;

    /// False when the encoding is not known or could not be detected. Stays true behind the end.
    bool is_open() const {  // NOLINT(readability-identifier-naming): as file streams have it
        return m_buffer.is_open();
    }

    /// Guesses the encoding of a text by its first 2048 bytes, then rewinds the stream to its
    /// start. Reliable for multibyte encodings from some dozens of characters on.
    /// \param source    has to be able to seek, or its start is lost; null is empty
    /// \param encoding  set to a name for the constructor, when something was found
    /// \param flag      set to true then
    /// \return whether something was found, also by the first 128 bytes alone when there are more
    static bool detectEncoding(std::istream* source, UnicodeString& encoding, bool& flag);
    /// The same with what a path or URI names. \return false also when it cannot be opened
    static bool detectEncoding(const char* path, UnicodeString& encoding, bool& flag);

    /// Where further tables lie: files such as "x-my-set.cnv" as `makeconv` makes them from UCM
    /// files, one an encoding. They go before the builtin conversions. For the whole process, from
    /// any thread; streams that are open keep their conversions. Empty, as at the start: none.
    static void setTCVTablePath(const UnicodeString& path);

private:
    ZRTCVStreamBuf m_buffer;
};

}  // namespace ZroCommon
