#include "zro/foundation/internal/Raise.h"

#include <cstddef>
#include <string_view>

#include "zro/foundation/ZRError.h"
#include "zro/foundation/internal/PackedTexts.h"

namespace ZroCommon::internal {
namespace {

// In site order. The cut and misspelt texts are on purpose: callers see and compare them.
constexpr std::u16string_view kSiteRows[] = {
    u"ZRDocument::loadNextNode",
    u"ZRDocument::doSave",
    u"AttrNodeMap::setNamedItem",
    u"AttrNodeMap::setNamedItemNS",
    u"ZRElement::removeAttributeNode",
    u"ZRNode::setNodeValue",
    u"ZRNode::insertBefore",
    u"ZRNode::replaceChild",
    u"ZRNode::removeChild",
    u"ZRNode::appendChild",
    u"XmlParserImpl::checkStream",
    u"XmlParserImpl::pushStream",
    u"XmlParserImpl::setInput",
    u"XmlParserImpl::isWhitespace",
    u"XmlParserImpl::isEmptyElementTag",
    u"XmlParserImpl::getAttributeNamespace",
    u"XmlParserImpl::getAttributeName",
    u"XmlParserImpl::getAttributePrefix",
    u"XmlParserImpl::getAttributeValue",
    u"XmlSerializerImpl::setOutput",
    u"XmlSerializerImpl::startDocumen",
    u"XmlSerializerImpl::attributeSub",
    u"XmlSerializerImpl::endTagt",
    u"",
    u"XmlSerializerImpl::checkStream",
    u"",
    u"ZRMemStream",
    u"ZRTempFile",
};
constexpr PackedTexts<kSiteRows> kSites;

constexpr std::u16string_view kUnnamedFault = u"ZRErrorCodeZROLIB";

UnicodeString& add(UnicodeString& text, std::u16string_view piece) {
    return text.append(piece.data(), static_cast<int32_t>(piece.size()));
}

UnicodeString sourceOf(ErrorSite site) {
    UnicodeString source;
    const auto index = static_cast<std::size_t>(site);
    if (index < kSites.kCount && !kSites[index].empty()) {
        add(add(source, u"ZroCommon::"), kSites[index]);
    }
    return source;
}

UnicodeString cannotSetValue(const UnicodeString& name) {
    UnicodeString text(u"Cannot set a value on node type");
    // On purpose: with an argument the sentence has no final period.
    return name.isEmpty() ? text.append(u'.') : text.append(u": ").append(name);
}

UnicodeString mismatchedEndTag(const UnicodeString& found, const UnicodeString& open) {
    UnicodeString text(u"End tag '");
    return text.append(found)
        .append(u"' does not match the start tag '")
        .append(open)
        .append(u"'.");
}

UnicodeString libraryText(LibraryError code, const UnicodeString& name,
                          const UnicodeString& second) {
    UnicodeString text = name.isEmpty() ? UnicodeString(u"arg") : name;
    switch (code) {
    case LibraryError::NullArgument: return add(text, u" is null.");
    case LibraryError::WrongDocument:
        // On purpose: "arg" follows the name without a blank, also behind the stand-in "arg".
        return add(text, u"arg is created from a different document.");
    case LibraryError::NotAnAttribute: return add(text, u" is not an ZRAttr object.");
    case LibraryError::AttributeInUse:
        return add(text,
                   u" is an ZRAttr that is already an attribute of another ZRElement object.");
    case LibraryError::NotAChild: return add(text, u" is not a child of this node.");
    case LibraryError::WrongState: return cannotSetValue(name);
    case LibraryError::UnexpectedStartDocument:
        return u"startDocument() must be called just after setOutput().";
    case LibraryError::UnexpectedAttribute:
        return u"attribute() must be called just after startTag().";
    case LibraryError::UnexpectedEndTag: return u"Unexpected endTag().";
    case LibraryError::MismatchedEndTag: return mismatchedEndTag(name, second);
    case LibraryError::UnexpectedDocdecl: return u"Unexpected docdecl().";
    case LibraryError::UnsupportedNodeType: return u"Unsupported node type.";
    case LibraryError::IndexOutOfRange: break;
    }
    text.remove();
    return add(text, kUnnamedFault);  // for every other number as well
}

UnicodeString ioText(IOError code, const UnicodeString& name) {
    switch (code) {
    case IOError::CannotOpenFile: return UnicodeString(u"Cannot open file: ").append(name);
    case IOError::UnexpectedEnd: return u"Unexpected end of input stream.";
    case IOError::NoOutputStream: return u"Output stream is not set.";
    case IOError::InputError: return u"Input stream error.";
    case IOError::OutputError: return u"Output stream error.";
    case IOError::CannotRemoveTempFile:
        return UnicodeString(u"Cannot remove temporary file: ").append(name);
    case IOError::CannotCreateTempFile:
        return UnicodeString(u"Cannot create temporary file: ").append(name);
    }
    return u"ZRErrorCodeIO";
}

}  // namespace

void throwLibraryError(LibraryError code, ErrorSite site, const UnicodeString& name,
                       const UnicodeString& second) {
    UnicodeString message(u"SYSTEM ERROR: ");
    message.append(libraryText(code, name, second));
    throw ZRError(static_cast<unsigned short>(code), message, sourceOf(site));
}

void throwIOError(IOError code, ErrorSite site, const UnicodeString& name) {
    throw ZRError(static_cast<unsigned short>(code), ioText(code, name), sourceOf(site));
}

}  // namespace ZroCommon::internal
