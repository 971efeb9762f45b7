#pragma once

#include <cstdint>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// Codes of wrong calls and internal faults; the decimal form stands in some messages and tests.
enum class LibraryError : std::uint16_t {
    NullArgument = 0x0803,             // 2051
    IndexOutOfRange = 0x0804,          // 2052
    WrongDocument = 0x0806,            // 2054
    NotAnAttribute = 0x0807,           // 2055
    AttributeInUse = 0x0808,           // 2056
    NotAChild = 0x0809,                // 2057
    WrongState = 0x080B,               // 2059
    UnexpectedStartDocument = 0x080C,  // 2060
    UnexpectedAttribute = 0x080D,      // 2061
    UnexpectedEndTag = 0x080E,         // 2062
    MismatchedEndTag = 0x080F,         // 2063
    UnexpectedDocdecl = 0x0810,        // 2064
    UnsupportedNodeType = 0x0812,      // 2066
};

enum class IOError : std::uint16_t {
    CannotOpenFile = 0x1003,        // 4099
    UnexpectedEnd = 0x1004,         // 4100
    NoOutputStream = 0x1005,        // 4101
    InputError = 0x1006,            // 4102
    OutputError = 0x1007,           // 4103
    CannotRemoveTempFile = 0x100D,  // 4109
    CannotCreateTempFile = 0x100E,  // 4110
};

/// The raising places that have a text of their own; the number is the row of the site table.
enum class ErrorSite : std::uint8_t {
    DocumentLoadNextNode,
    DocumentDoSave,
    AttrNodeMapSetNamedItem,
    AttrNodeMapSetNamedItemNS,
    ElementRemoveAttributeNode,
    NodeSetNodeValue,
    NodeInsertBefore,
    NodeReplaceChild,
    NodeRemoveChild,
    NodeAppendChild,
    ParserCheckStream,
    ParserPushStream,
    ParserSetInput,
    ParserIsWhitespace,
    ParserIsEmptyElementTag,
    ParserGetAttributeNamespace,
    ParserGetAttributeName,
    ParserGetAttributePrefix,
    ParserGetAttributeValue,
    SerializerSetOutput,
    SerializerStartDocument,
    SerializerAttribute,
    SerializerEndTag,
    SerializerDocdecl,
    SerializerCheckStream,
    ForeignParser,
    MemStream,
    TempFile,
};

/// Composes "SYSTEM ERROR: " and the message of the code, and throws.
/// \param name    first argument of the message; where it is a name, an empty one reads "arg".
/// \throws ZRError  always, without a position.
[[noreturn]] void throwLibraryError(LibraryError code, ErrorSite site,
                                    const UnicodeString& name = UnicodeString(),
                                    const UnicodeString& second = UnicodeString());

/// The same for files and streams, without the prefix.
/// \throws ZRError  always, without a position.
[[noreturn]] void throwIOError(IOError code, ErrorSite site,
                               const UnicodeString& name = UnicodeString());

}  // namespace ZroCommon::internal
