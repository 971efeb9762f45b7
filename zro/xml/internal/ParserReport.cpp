#include "zro/xml/internal/ParserReport.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "zro/foundation/internal/PackedTexts.h"

namespace ZroCommon::internal {
namespace {

struct Row {
    XmlError code;
    std::u16string_view text;  // \1 and \2 stand for the arguments
};

// For the compiler alone: what follows is made of it.
constexpr Row kRows[] = {
    {XmlError::MissingEndTag, u"Missing end tag."},
    {XmlError::SecondRoot, u"Only one top level element is allowed."},
    {XmlError::InvalidDoctypeName, u"Invalid root tag name after '<!DOCTYPE'."},
    {XmlError::InvalidStartTagName, u"Invalid start tag name."},
    {XmlError::InvalidEndTagName, u"Invalid end tag name."},
    {XmlError::MismatchedEndTag, u"End tag '\1' does not match the start tag '\2'."},
    {XmlError::UndeclaredPrefix, u"Undeclared namespace prefix: \1"},
    {XmlError::DuplicateAttribute, u"Duplicate attribute: \1"},
    {XmlError::InvalidAttributeName, u"Invalid attribute name."},
    {XmlError::MissingEquals, u"Missing '=' after attribute name."},
    {XmlError::MissingAttributeSpace, u"Missing whitespace between attributes."},
    {XmlError::UnexpectedCharacter, u"Unexpected character: \1"},
    {XmlError::UnexpectedSpace, u"Unexpected whitespace after '\1'."},
    {XmlError::TextOutsideRoot, u"Unexpected text at top level of the document: \1"},
    {XmlError::UnexpectedSection, u"Unexpected '<![\1'."},
    {XmlError::SectionEndInText, u"Unexpected ']]>'."},
    {XmlError::OpenCData,
     u"Unexpected end of input while looking for CDATA section terminator ']]>'."},
    {XmlError::OpenComment, u"Unexpected end of input while looking for comment terminator '-->'."},
    {XmlError::DashesInComment, u"Unexpected character after -- in comment"},
    {XmlError::DoctypeAfterRoot, u"Unexpected DOCTYPE declaration outside of prolog."},
    {XmlError::SecondDoctype, u"Cannot have multiple DOCTYPE declarations."},
    {XmlError::MissingSpace, u"Missing whitespace after '\1'."},
    {XmlError::ExternalIdExpected, u"ExternalID is expected after '\1'."},
    {XmlError::PublicLiteralExpected, u"PubidLiteral is expected after '\1'."},
    {XmlError::SystemLiteralExpected, u"SystemLiteral is expected after '\1'."},
    {XmlError::OpenDeclaration, u"Unexpected end of input in \1 declaration."},
    {XmlError::EmptyEntityName, u"Empty entity name."},
    {XmlError::InvalidReference, u"Invalid character in entity reference: \1;"},
    {XmlError::EntityNameExpected, u"Entity name is expected after '\1'."},
    {XmlError::NotationExpected, u"NDATA is expected after '\1'."},
    {XmlError::UnexpectedDeclaration, u"Unexpected XML declaration."},
    {XmlError::MissingVersion, u"Missing 'version=' after '<?xml ' in XML declaration."},
    {XmlError::MissingDeclarationEquals, u"Missing '=' after '\1' in XML declaration."},
    {XmlError::MissingSpaceAfter, u"Missing whitespace after '\1' in XML declaration."},
    {XmlError::MissingSpaceBefore, u"Missing whitespace before '\1' in XML declaration."},
    {XmlError::UnsupportedVersion, u"Unsupported XML version: \1"},
    {XmlError::InvalidStandalone, u"Invalid standalone declaration in XML declaration."},
    {XmlError::InvalidCData, u"Invalid syntax in CDATA section."},
    {XmlError::InvalidComment, u"Invalid syntax in comment."},
    {XmlError::UnexpectedMarkup, u"Unexpected '<!\1'."},
    {XmlError::TargetNotLowerCase, u"The name 'xml' must be lower case: <?\1"},
    {XmlError::MissingTargetSpace, u"Missing whitespace after PI target: <?\1"},
    {XmlError::OpenInstruction, u"Unexpected end of input while looking for PI terminator '?>'."},
    {XmlError::MissingQuote, u"Missing quotation character (\" or ')."},
    {XmlError::OpenLiteral, u"Unexpected end of input while looking for literal terminator (\1)."},
    {XmlError::LessThanInValue, u"Unexpected '<' in attribute value."},
    {XmlError::SpaceInCharacterReference, u"Unexpected whitespace in character reference: &#\1;"},
    {XmlError::InvalidCharacterReference, u"Invalid character in character reference: &#\1;"},
    // On purpose: the collected text ends in a ";" already, so two of them stand at the end.
    {XmlError::InvalidCodePoint, u"Invalid unicode character: &#\1;"},
    {XmlError::InvalidCharacter, u"Invalid character."},
    {XmlError::UnknownEncoding, u"Unknown or unsupported encoding: \1."},
    {XmlError::ConflictingEncoding, u"Conflict encoding: \1."},
    {XmlError::LimitExceeded, u"Limit exceeded: \1."},
    {XmlError::MismatchedEndTagRecoverable, u"End tag '\1' does not match the start tag '\2'."},
    {XmlError::UndefinedParameterEntity, u"Reference to undefined entity: %\1;"},
    {XmlError::UndefinedEntity, u"Reference to undefined entity: &\1;"},
};

constexpr auto kCodes = columnOf<kRows, &Row::code>();
constexpr auto kViews = columnOf<kRows, &Row::text>();
constexpr PackedTexts<kViews> kTexts;

}  // namespace

UnicodeString messageOf(XmlError code, const UnicodeString& first, const UnicodeString& second) {
    const auto* const found = std::find(kCodes.begin(), kCodes.end(), code);
    if (found == kCodes.end()) {
        return u"XML parser error.";
    }
    UnicodeString message;
    for (const char16_t unit : kTexts[static_cast<std::size_t>(found - kCodes.begin())]) {
        switch (unit) {
        case u'\1': message.append(first); break;
        case u'\2': message.append(second); break;
        default: message.append(unit);
        }
    }
    return message;
}

}  // namespace ZroCommon::internal
