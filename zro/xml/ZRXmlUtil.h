#pragma once

#include <iosfwd>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/vocabulary/ZRName.h"
#include "zro/xml/ZRXmlParser.h"
#include "zro/xml/ZRXmlSerializer.h"

namespace ZroCommon {

/// Makes parsers and serializers, takes qualified names apart, and looks at the root element of a
/// document to tell what it is before it is loaded.
///
/// The look at a root skips external subsets and forgives undeclared entities, undeclared attribute
/// prefixes and unknown encodings; any other fault of the document up to its root is thrown as
/// `ZRError`.
class ZRO_API ZRXmlUtil {
public:
    ZRXmlUtil() = delete;

    [[nodiscard]] static ZRPtr<ZRXmlParser> createXmlParser();
    [[nodiscard]] static ZRPtr<ZRXmlSerializer> createXmlSerializer();

    /// What stands before the first ":", or empty. A ":" at the very start makes no prefix.
    static ZRName getPrefixFromQName(ZRName qName);
    static UnicodeString getPrefixFromQNameStr(const UnicodeString& qName);

    /// What stands behind the first ":", or the name itself when it has none.
    static ZRName getLocalPartFromQName(ZRName qName);
    static UnicodeString getLocalPartFromQNameStr(const UnicodeString& qName);

    /// "prefix:localName", or `localName` itself when the prefix is empty.
    static ZRName makeQName(ZRName prefix, ZRName localName);
    static UnicodeString makeQNameStr(const UnicodeString& prefix, const UnicodeString& localName);

    /// An expanded name for people to read: "{uri}:localName", with "xml:" and "xmlns:" for the two
    /// namespaces of XML itself and the local name alone without a namespace.
    static UnicodeString makeNSQNameStr(const UnicodeString& namespaceUri,
                                        const UnicodeString& localName);

    /// A parser that stands at the root's start tag; null when the document has no root or the URI
    /// is empty.
    /// \throws ZRError  also when the resource cannot be opened
    [[nodiscard]] static ZRPtr<ZRXmlParser> getRootParser(const UnicodeString& uri);
    /// The same on a stream, which must outlive the parser.
    /// \param contentType, extension  hints for the parser, may be empty
    [[nodiscard]] static ZRPtr<ZRXmlParser> getRootParser(std::istream& stream,
                                                          const UnicodeString& contentType,
                                                          const UnicodeString& extension);

    /// \param localName  set to the root's local name, empty without a root
    /// \return the root's namespace
    static ZRName getRootName(ZRName& localName, const UnicodeString& uri);
    static ZRName getRootName(ZRName& localName, std::istream& stream,
                              const UnicodeString& contentType, const UnicodeString& extension);

    /// As `getRootName`, but an `fo:root` with an `xsl:version` attribute, a stylesheet in its
    /// simplified form, is answered with the XSLT namespace. The stream is read twice, so it has to
    /// be seekable; a document by URI need not be. An empty URI gives empty names.
    /// \throws ZRError  as `getRootParser`; 0x1003 when the URI gives no stream
    static ZRName getXSLStylesheetNamespace(ZRName& localName, const UnicodeString& uri);
    static ZRName getXSLStylesheetNamespace(ZRName& localName, std::istream& stream,
                                            const UnicodeString& contentType,
                                            const UnicodeString& extension);
};

}  // namespace ZroCommon
