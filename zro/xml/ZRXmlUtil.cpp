#include "zro/xml/ZRXmlUtil.h"

#include <istream>
#include <memory>

#include "zro/foundation/internal/Raise.h"
#include "zro/streams/ZRMemStream.h"
#include "zro/uri/ZRUri.h"
#include "zro/xml/internal/XmlParserImpl.h"
#include "zro/xml/internal/XmlSerializerImpl.h"

namespace ZroCommon {
namespace {

// A parser that gets to the root even when DTD, entities, prefixes or encoding are out of reach.
ZRPtr<ZRXmlParser> makeRootParser() {
    ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    for (const ZRXmlParser::Feature feature :
         {ZRXmlParser::FEATURE_SKIP_EXTERNAL_SUBSET, ZRXmlParser::FEATURE_EMPTY_UNDEFINED_ENTITY,
          ZRXmlParser::FEATURE_KEEP_UNDECLARED_ATTRIBUTE_PREFIX,
          ZRXmlParser::FEATURE_IGNORE_UNKNOWN_ENCODING}) {
        parser->setFeature(feature, true);
    }
    return parser;
}

ZRPtr<ZRXmlParser> atRoot(ZRPtr<ZRXmlParser> parser) {
    for (;;) {
        switch (parser->next()) {
        case ZRXmlParser::START_TAG: return parser;
        case ZRXmlParser::END_DOCUMENT: return nullptr;
        default: break;
        }
    }
}

ZRName namesOf(const ZRPtr<ZRXmlParser>& parser, ZRName& localName) {
    localName = parser == nullptr ? ZRName() : parser->getName();
    return parser == nullptr ? ZRName() : parser->getNamespace();
}

bool hasXslVersion(const ZRXmlParser& parser) {
    for (int i = parser.getAttributeCount() - 1; i >= 0; --i) {
        if (parser.getAttributeName(i) == ZRN_version
            && parser.getAttributeNamespace(i) == ZRN_ns_xslt) {
            return true;
        }
    }
    return false;
}

}  // namespace

ZRPtr<ZRXmlParser> ZRXmlUtil::createXmlParser() {
    return internal::makeXmlParserImpl();
}

ZRPtr<ZRXmlSerializer> ZRXmlUtil::createXmlSerializer() {
    return {new internal::XmlSerializerImpl};
}

ZRPtr<ZRXmlParser> ZRXmlUtil::getRootParser(const UnicodeString& uri) {
    if (uri.isEmpty()) {
        return nullptr;
    }
    const ZRPtr<ZRXmlParser> parser = makeRootParser();
    parser->setInput(uri, {}, {});
    return atRoot(parser);
}

ZRPtr<ZRXmlParser> ZRXmlUtil::getRootParser(std::istream& stream, const UnicodeString& contentType,
                                            const UnicodeString& extension) {
    const ZRPtr<ZRXmlParser> parser = makeRootParser();
    parser->setStreamType(contentType, extension);
    parser->setInput(stream, {}, {});
    return atRoot(parser);
}

ZRName ZRXmlUtil::getRootName(ZRName& localName, const UnicodeString& uri) {
    return namesOf(getRootParser(uri), localName);
}

ZRName ZRXmlUtil::getRootName(ZRName& localName, std::istream& stream,
                              const UnicodeString& contentType, const UnicodeString& extension) {
    return namesOf(getRootParser(stream, contentType, extension), localName);
}

ZRName ZRXmlUtil::getXSLStylesheetNamespace(ZRName& localName, std::istream& stream,
                                            const UnicodeString& contentType,
                                            const UnicodeString& extension) {
    const ZRName namespaceUri = getRootName(localName, stream, contentType, extension);
    if (namespaceUri != ZRN_ns_fo || localName != ZRN_root) {
        return namespaceUri;
    }
    stream.clear();
    stream.seekg(0);
    const ZRPtr<ZRXmlParser> parser = getRootParser(stream, contentType, extension);
    return parser != nullptr && hasXslVersion(*parser) ? ZRName(ZRN_ns_xslt) : namespaceUri;
}

ZRName ZRXmlUtil::getXSLStylesheetNamespace(ZRName& localName, const UnicodeString& uri) {
    localName = ZRName();
    const ZRUri resource(uri, URISTR_PATH_OR_URI_CSS);
    if (resource.isEmpty()) {
        return {};
    }
    UnicodeString contentType;
    const std::unique_ptr<std::istream> source(resource.getStream(&contentType));
    if (source == nullptr) {  // as a parser says it that opens the same resource
        internal::throwIOError(internal::IOError::CannotOpenFile,
                               internal::ErrorSite::ParserSetInput, resource.toString());
    }
    ZRMemStream stream(source.get(), 8192);  // so that it can be read twice whatever it is
    return getXSLStylesheetNamespace(localName, stream, contentType, resource.getExtension());
}

}  // namespace ZroCommon
