#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <ostream>

#include "zro/foundation/Export.h"
#include "zro/foundation/StreamBuffer.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

namespace internal {
class CodeConverter;
struct ConversionBlock;
}  // namespace internal

/// The stream buffer of `ZRTCVOStream`.
class ZRO_API ZRTCVOStreamBuf : public StreamBuffer {
public:
    /// What a conversion is to do with line ends: a number that is passed on to it.
    enum LF_CONVERT : int {};  // NOLINT(readability-identifier-naming): the name is given

    /// See the constructor of `ZRTCVOStream`.
    ZRTCVOStreamBuf(std::ostream* target, const char* encoding, bool a, LF_CONVERT lf, bool b);
    ZRTCVOStreamBuf(const ZRTCVOStreamBuf&) = delete;
    ZRTCVOStreamBuf& operator=(const ZRTCVOStreamBuf&) = delete;
    ~ZRTCVOStreamBuf() override;

    bool is_open() const {  // NOLINT(readability-identifier-naming): as file streams have it
        return m_input != nullptr;
    }
    void setLimit(std::size_t limit) { m_limit = limit; }
    bool isLimitOver();
    std::size_t getOutputLength() const { return static_cast<std::size_t>(m_outputLength); }
    std::ostream* getOutputStream();
    void writeRawBuffer(const char* data, std::size_t count);
    void writeRawStream(std::istream& source);

protected:
    /// Takes a conversion over. \param converter  null: the stream is not open
    ZRTCVOStreamBuf(std::ostream* target, std::unique_ptr<internal::CodeConverter> converter);

    int_type overflow(int_type character = traits_type::eof()) override;
    int sync() override;

private:
    bool isOver() const { return m_limit != 0 && m_outputLength > m_limit; }
    std::uint64_t room() const;
    void writeTarget(const char* data, std::size_t count);
    void emit(std::size_t count);
    bool convertAll(std::size_t length);
    bool convertPiece(internal::ConversionBlock& block, std::size_t end);
    bool convertNul(internal::ConversionBlock& block);
    void copyStream(std::istream& source);
    void copyWithinLimit(std::istream& source);

    std::ostream* m_target;
    std::unique_ptr<internal::CodeConverter> m_converter;
    std::unique_ptr<char[]> m_input;
    std::unique_ptr<char[]> m_output;
    std::uint64_t m_outputLength = 0;
    std::uint64_t m_limit = 0;  // 0 without one
};

/// Takes UTF-16LE and writes it in a named encoding, up to a limit of bytes for a preview.
///
/// What the encoding cannot hold becomes U+3013 or, where it cannot hold that either, a question
/// mark. No byte order mark is written unless the name asks for one, as "UnicodeBig" does. A U+0000
/// ahead of a line feed becomes zero bytes, as many as a space takes. A limit divides no character.
/// What was written goes on at the latest when the stream is destroyed; only then an encoding with
/// shift states returns to its first one. Nothing is thrown but by a lack of memory. The target is
/// not owned and has to live as long.
class ZRO_API ZRTCVOStream : public std::basic_ostream<char> {
public:
    using LF_CONVERT = ZRTCVOStreamBuf::LF_CONVERT;

    /// \param encoding  the name of an encoding, or of a table where `ZRTCVStream::setTCVTablePath`
    ///                  says; unlike on reading, it means what it says
    /// \param a, lf, b  are passed on to the conversion; those that there are do not heed them
    ZRTCVOStream(std::ostream* target, const char* encoding, bool a, LF_CONVERT lf, bool b);
    ~ZRTCVOStream() override;

    /// False when the encoding is not known, or without a target. Text then goes nowhere.
    bool is_open() const {  // NOLINT(readability-identifier-naming): as file streams have it
        return m_buffer.is_open();
    }

    /// How many bytes may reach the target, raw ones included; 0 is no limit.
    void setLimit(std::size_t bytes) { m_buffer.setLimit(bytes); }
    /// Whether there was more to write than the limit allows.
    bool isLimitOver() const { return m_buffer.isLimitOver(); }
    /// Bytes made so far. Once the limit is over, a number above it and no more.
    std::size_t getOutputLength() const { return m_buffer.getOutputLength(); }
    /// The target, with all that was written up to now, but an incomplete or NUL character.
    std::ostream* getOutputStream() const { return m_buffer.getOutputStream(); }

    void writeString(const UnicodeString& text);
    /// Writes bytes as they are, cut at the limit; all of them count.
    void writeRawBuffer(const char* data, std::size_t count) {
        m_buffer.writeRawBuffer(data, count);
    }
    /// Writes the rest of a stream as it is, cut at the limit, behind which it is read no further
    /// than its block. Without a limit it is not counted.
    void writeRawStream(std::istream& source) { m_buffer.writeRawStream(source); }

private:
    mutable ZRTCVOStreamBuf m_buffer;  // asking what has reached the target sends it there
};

}  // namespace ZroCommon
