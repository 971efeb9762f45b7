#pragma once

#include <cstdint>

#include "zro/foundation/Text.h"

namespace ZroCommon {
class ZRError;
}

namespace ZroCommon::internal {

/// The errors of a document, by code. Those with bits 0x0600 are marked as recoverable for a
/// callback; thrown they lose the mark.
enum class XmlError : std::uint16_t {
    MissingEndTag = 0x1801,
    SecondRoot = 0x1802,
    InvalidDoctypeName = 0x1803,
    InvalidStartTagName = 0x1804,
    InvalidEndTagName = 0x1805,
    MismatchedEndTag = 0x1806,
    UndeclaredPrefix = 0x1807,
    DuplicateAttribute = 0x1808,
    InvalidAttributeName = 0x1809,
    MissingEquals = 0x180A,
    MissingAttributeSpace = 0x180B,
    UnexpectedCharacter = 0x180C,
    UnexpectedSpace = 0x180D,
    TextOutsideRoot = 0x180E,
    UnexpectedSection = 0x180F,
    SectionEndInText = 0x1810,
    OpenCData = 0x1811,
    OpenComment = 0x1812,
    DashesInComment = 0x1813,
    DoctypeAfterRoot = 0x1814,
    SecondDoctype = 0x1815,
    MissingSpace = 0x1816,
    ExternalIdExpected = 0x1817,
    PublicLiteralExpected = 0x1818,
    SystemLiteralExpected = 0x1819,
    OpenDeclaration = 0x181A,
    EmptyEntityName = 0x181B,
    InvalidReference = 0x181C,
    EntityNameExpected = 0x181F,
    NotationExpected = 0x1820,
    UnexpectedDeclaration = 0x1821,
    MissingVersion = 0x1822,
    MissingDeclarationEquals = 0x1823,
    MissingSpaceAfter = 0x1824,
    MissingSpaceBefore = 0x1825,
    UnsupportedVersion = 0x1826,
    InvalidStandalone = 0x1827,
    InvalidCData = 0x1828,
    InvalidComment = 0x1829,
    UnexpectedMarkup = 0x182A,
    TargetNotLowerCase = 0x182B,
    MissingTargetSpace = 0x182C,
    OpenInstruction = 0x182D,
    MissingQuote = 0x182E,
    OpenLiteral = 0x182F,
    LessThanInValue = 0x1830,
    SpaceInCharacterReference = 0x1831,
    InvalidCharacterReference = 0x1832,
    InvalidCodePoint = 0x1833,
    InvalidCharacter = 0x1834,
    UnknownEncoding = 0x1835,
    ConflictingEncoding = 0x1839,
    LimitExceeded = 0x183A,
    MismatchedEndTagRecoverable = 0x1E06,
    UndefinedParameterEntity = 0x1E1D,
    UndefinedEntity = 0x1E1E,
};

/// The message of an error. Codes without a text of their own read "XML parser error.".
UnicodeString messageOf(XmlError code, const UnicodeString& first, const UnicodeString& second);

}  // namespace ZroCommon::internal
