#include "zro/xml/internal/ParserReport.h"

#include <array>
#include <string_view>

namespace ZroCommon::internal {
namespace {

struct Row {
    XmlError code;
    // The text is head, first argument, middle, second argument, tail.
    std::u16string_view head;
    std::u16string_view middle = {};
    std::u16string_view tail = {};
    std::uint8_t arguments = 0;
};

constexpr std::uint8_t kOne = 1;
constexpr std::uint8_t kTwo = 2;

constexpr std::array kRows = {
    Row{XmlError::MissingEndTag, u"Missing end tag."},
    Row{XmlError::SecondRoot, u"Only one top level element is allowed."},
    Row{XmlError::InvalidDoctypeName, u"Invalid root tag name after '<!DOCTYPE'."},
    Row{XmlError::InvalidStartTagName, u"Invalid start tag name."},
    Row{XmlError::InvalidEndTagName, u"Invalid end tag name."},
    Row{XmlError::MismatchedEndTag, u"End tag '", u"' does not match the start tag '", u"'.", kTwo},
    Row{XmlError::UndeclaredPrefix, u"Undeclared namespace prefix: ", u"", u"", kOne},
    Row{XmlError::DuplicateAttribute, u"Duplicate attribute: ", u"", u"", kOne},
    Row{XmlError::InvalidAttributeName, u"Invalid attribute name."},
    Row{XmlError::MissingEquals, u"Missing '=' after attribute name."},
    Row{XmlError::MissingAttributeSpace, u"Missing whitespace between attributes."},
    Row{XmlError::UnexpectedCharacter, u"Unexpected character: ", u"", u"", kOne},
    Row{XmlError::UnexpectedSpace, u"Unexpected whitespace after '", u"'.", u"", kOne},
    Row{XmlError::TextOutsideRoot, u"Unexpected text at top level of the document: ", u"", u"",
        kOne},
    Row{XmlError::UnexpectedSection, u"Unexpected '<![", u"'.", u"", kOne},
    Row{XmlError::SectionEndInText, u"Unexpected ']]>'."},
    Row{XmlError::OpenCData,
        u"Unexpected end of input while looking for CDATA section terminator ']]>'."},
    Row{XmlError::OpenComment,
        u"Unexpected end of input while looking for comment terminator '-->'."},
    Row{XmlError::DashesInComment, u"Unexpected character after -- in comment"},
    Row{XmlError::DoctypeAfterRoot, u"Unexpected DOCTYPE declaration outside of prolog."},
    Row{XmlError::SecondDoctype, u"Cannot have multiple DOCTYPE declarations."},
    Row{XmlError::MissingSpace, u"Missing whitespace after '", u"'.", u"", kOne},
    Row{XmlError::ExternalIdExpected, u"ExternalID is expected after '", u"'.", u"", kOne},
    Row{XmlError::PublicLiteralExpected, u"PubidLiteral is expected after '", u"'.", u"", kOne},
    Row{XmlError::SystemLiteralExpected, u"SystemLiteral is expected after '", u"'.", u"", kOne},
    Row{XmlError::OpenDeclaration, u"Unexpected end of input in ", u" declaration.", u"", kOne},
    Row{XmlError::EmptyEntityName, u"Empty entity name."},
    Row{XmlError::InvalidReference, u"Invalid character in entity reference: ", u";", u"", kOne},
    Row{XmlError::EntityNameExpected, u"Entity name is expected after '", u"'.", u"", kOne},
    Row{XmlError::NotationExpected, u"NDATA is expected after '", u"'.", u"", kOne},
    Row{XmlError::UnexpectedDeclaration, u"Unexpected XML declaration."},
    Row{XmlError::MissingVersion, u"Missing 'version=' after '<?xml ' in XML declaration."},
    Row{XmlError::MissingDeclarationEquals, u"Missing '=' after '", u"' in XML declaration.", u"",
        kOne},
    Row{XmlError::MissingSpaceAfter, u"Missing whitespace after '", u"' in XML declaration.", u"",
        kOne},
    Row{XmlError::MissingSpaceBefore, u"Missing whitespace before '", u"' in XML declaration.", u"",
        kOne},
    Row{XmlError::UnsupportedVersion, u"Unsupported XML version: ", u"", u"", kOne},
    Row{XmlError::InvalidStandalone, u"Invalid standalone declaration in XML declaration."},
    Row{XmlError::InvalidCData, u"Invalid syntax in CDATA section."},
    Row{XmlError::InvalidComment, u"Invalid syntax in comment."},
    Row{XmlError::UnexpectedMarkup, u"Unexpected '<!", u"'.", u"", kOne},
    Row{XmlError::TargetNotLowerCase, u"The name 'xml' must be lower case: <?", u"", u"", kOne},
    Row{XmlError::MissingTargetSpace, u"Missing whitespace after PI target: <?", u"", u"", kOne},
    Row{XmlError::OpenInstruction,
        u"Unexpected end of input while looking for PI terminator '?>'."},
    Row{XmlError::MissingQuote, u"Missing quotation character (\" or ')."},
    Row{XmlError::OpenLiteral, u"Unexpected end of input while looking for literal terminator (",
        u").", u"", kOne},
    Row{XmlError::LessThanInValue, u"Unexpected '<' in attribute value."},
    Row{XmlError::SpaceInCharacterReference, u"Unexpected whitespace in character reference: &#",
        u";", u"", kOne},
    Row{XmlError::InvalidCharacterReference, u"Invalid character in character reference: &#", u";",
        u"", kOne},
    // On purpose: the collected text ends in a ";" already, so two of them stand at the end.
    Row{XmlError::InvalidCodePoint, u"Invalid unicode character: &#", u";", u"", kOne},
    Row{XmlError::InvalidCharacter, u"Invalid character."},
    Row{XmlError::UnknownEncoding, u"Unknown or unsupported encoding: ", u".", u"", kOne},
    Row{XmlError::ConflictingEncoding, u"Conflict encoding: ", u".", u"", kOne},
    Row{XmlError::LimitExceeded, u"Limit exceeded: ", u".", u"", kOne},
    Row{XmlError::MismatchedEndTagRecoverable, u"End tag '", u"' does not match the start tag '",
        u"'.", kTwo},
    Row{XmlError::UndefinedParameterEntity, u"Reference to undefined entity: %", u";", u"", kOne},
    Row{XmlError::UndefinedEntity, u"Reference to undefined entity: &", u";", u"", kOne},
};

UnicodeString& add(UnicodeString& text, std::u16string_view piece) {
    return text.append(piece.data(), static_cast<int32_t>(piece.size()));
}

}  // namespace

UnicodeString messageOf(XmlError code, const UnicodeString& first, const UnicodeString& second) {
    for (const Row& row : kRows) {
        if (row.code != code) {
            continue;
        }
        UnicodeString message;
        add(message, row.head);
        if (row.arguments >= kOne) {
            add(message.append(first), row.middle);
        }
        if (row.arguments >= kTwo) {
            add(message.append(second), row.tail);
        }
        return message;
    }
    return u"XML parser error.";
}

}  // namespace ZroCommon::internal
