#pragma once

#include "zro/dom/ZRNode.h"

namespace ZroCommon {
class ZRXmlParser;
}

namespace ZroCommon::internal {

class ParserState;
class XmlParserImpl;

/// Adds what the library's own parser read to a document of the library's own class. The nodes are
/// those that the virtual members of document and elements would make, but they are made from the
/// parser's texts where these lie, and their references are not counted one by one.
class PlainBuilder {
public:
    /// The parser, when nobody outside has a hand in what it reads and in what becomes of it; else
    /// null.
    static XmlParserImpl* parserFor(const ZRDocument& document, ZRXmlParser& parser);

    /// Whether a node takes children the plain way.
    static bool isPlain(const ZRNode& node, const ZRDocument& document);
    /// What `getParentNodeUncomplemental` of a plain node says.
    static ZRNode* parentOf(const ZRNode& node);

    // Each adds to a plain node, and leaves the caller a reference on the new one.
    static ZRPtr<ZRNode> addElement(ZRDocument& document, ZRNode& parent,
                                    const XmlParserImpl& parser);
    static ZRPtr<ZRNode> addText(ZRDocument& document, ZRNode& parent, const XmlParserImpl& parser);

private:
    static ZRPtr<ZRNode> append(ZRNode& parent, ZRNode& child);
};

}  // namespace ZroCommon::internal
