#pragma once

#include <cstdint>
#include <exception>
#include <new>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

/// The top five bits of an error code.
enum ZRErrorCategory : std::uint16_t {
    ZRErrorCodeZROLIB = 0x0800,  ///< wrong use of tree and serializer calls, internal faults
    ZRErrorCodeIO = 0x1000,      ///< files and streams
    ZRErrorCodeXML = 0x1800,     ///< XML well-formedness
};

/// The one exception type of the library, thrown by value; also what a parser's error callback
/// gets.
///
/// A plain value: a 16-bit code, a message, the place that raised it and, where known, line, column
/// and URI of the document in error.
class ZRO_API ZRError {
public:
    /// No error: code 0, empty texts, no position.
    ZRError() = default;

    /// \param line, column  -1 when unknown; any other number counts as known.
    ZRError(unsigned short code, const UnicodeString& message,
            const UnicodeString& source = UnicodeString(), int line = -1, int column = -1,
            const UnicodeString& uri = UnicodeString());

    /// Code 0x0801, "Out of memory.".
    ZRError(std::bad_alloc& error, const UnicodeString& source);

    /// Code 0x0802, "C++ exception: " and the text of `what()`, read in the default code page.
    ZRError(std::exception& error, const UnicodeString& source);

    unsigned short getErrorCode() const { return m_code; }
    void setErrorCode(unsigned short code) { m_code = code; }
    /// A mask of the code and no more: codes without a named category give their bits.
    ZRErrorCategory getErrorCategory() const {
        return static_cast<ZRErrorCategory>(m_code & 0xF800U);
    }

    /// The message without the position that `getMessage` adds. That of an error which a parser
    /// throws ends with the parser's position, on a line of its own.
    const UnicodeString& getRawMessage() const { return m_rawMessage; }
    void setRawMessage(const UnicodeString& message) { m_rawMessage = message; }

    /// The raising place, such as "ZroCommon::ZRNode::appendChild".
    const UnicodeString& getSource() const { return m_source; }
    void setSource(const UnicodeString& source) { m_source = source; }

    int getLineNumber() const { return m_lineNumber; }
    void setLineNumber(int line) { m_lineNumber = line; }
    int getColumnNumber() const { return m_columnNumber; }
    void setColumnNumber(int column) { m_columnNumber = column; }
    const UnicodeString& getUri() const { return m_uri; }
    void setUri(const UnicodeString& uri) { m_uri = uri; }

    /// "Line 12, Col 7, file.xml", each piece only when known; empty when nothing is.
    UnicodeString getPositionDescription() const;

    /// The raw message, and on a line of its own the position if there is one.
    UnicodeString getMessage() const;

    /// Stores a message; an ending that `getMessage` of this position would add is taken off again.
    void setMessage(const UnicodeString& message);

    /// Adds a line to the raw message; an empty argument adds nothing.
    void appendMessage(const UnicodeString& message);

    /// Throws a copy of itself, unless the code is 0 or marked as recoverable (bit 0x0400).
    /// \throws ZRError
    void throwFatalError() const;

private:
    std::uint16_t m_code = 0;
    UnicodeString m_rawMessage;
    UnicodeString m_source;
    std::int32_t m_lineNumber = -1;
    std::int32_t m_columnNumber = -1;
    UnicodeString m_uri;
};

}  // namespace ZroCommon
