#pragma once

#include <istream>
#include <memory>
#include <utility>

#include "zro/foundation/ZRPtr.h"
#include "zro/foundation/internal/Raise.h"
#include "zro/xml/ZRXmlParser.h"
#include "zro/xml/internal/ParserParts.h"

namespace ZroCommon::internal {

/// The library's own parser: the order of events, over scanners that read one thing each.
class XmlParserImpl final : public ZRXmlParser {
public:
    XmlParserImpl();

    static unsigned int getStaticTypeID() { return 0x5C58F35AU; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    void setFeature(Feature feature, bool on) override;
    bool getFeature(Feature feature) const override;
    void setStreamType(const UnicodeString& contentType, const UnicodeString& extension) override;
    void setCallbackError(void (*callback)(const ZRError&, void*), void* userData) override;
    void setInput(const UnicodeString& uri, const UnicodeString& encoding,
                  const UnicodeString& baseUri) override;
    void setInput(std::istream& stream, const UnicodeString& encoding,
                  const UnicodeString& baseUri) override;
    void closeStream() override;
    UnicodeString getInputEncoding() const override;
    void defineEntityReplacementText(ZRName name, const UnicodeString& value) override;
    int getNamespaceCount(int depth) const override;
    ZRName getNamespacePrefix(int index) const override;
    ZRName getNamespaceUri(int index) const override;
    ZRName getNamespace() const override;
    ZRName getNamespace(ZRName prefix) const override;
    int getDepth() const override;
    UnicodeString getPositionDescription() const override;
    int getLineNumber() const override;
    int getColumnNumber() const override;
    bool isWhitespace() const override;
    UnicodeString getText() const override;
    ZRName getName() const override;
    ZRName getPrefix() const override;
    bool isEmptyElementTag() const override;
    int getAttributeCount() const override;
    ZRName getAttributeNamespace(int index) const override;
    ZRName getAttributeName(int index) const override;
    ZRName getAttributePrefix(int index) const override;
    UnicodeString getAttributeValue(ZRName namespaceUri, ZRName name) const override;
    UnicodeString getAttributeValue(int index) const override;
    EventType getEventType() const override;
    EventType next() override;
    EventType nextToken() override;
    UnicodeString getBaseUri() const override;
    void addMathMLEntityMap() override;
    void rewind() override;
    void setLimits(const ZRLimits& limits) override;

    /// Keeps the stream of the last `setInput` alive until the next one.
    void keepStream(std::shared_ptr<std::istream> stream) { m_keptStream = std::move(stream); }

    /// Reads an external subset to its end, for its entities.
    void scanExternalSubset();
    const EntityTable& entities() const { return m_state.entities; }
    /// What there is to know of the current event, for readers that need no copy of it.
    const ParserState& state() const { return m_state; }

protected:
    ~XmlParserImpl() override;

private:
    template <class Action>
    void guarded(Action action);
    void refuseReentry() const;
    void beginInput(const UnicodeString& encoding);
    bool readPlainText();
    void readToken();
    void readMerged();
    bool mergeToken();
    void replaceReference();
    bool mergesOn();
    void startDocument();
    void readEnd();
    void readInstruction();
    void readDeclaration();
    void readSection();
    bool isTag() const;
    const Attribute& attributeAt(int index, ErrorSite site) const;
    UnicodeString valueOf(const Attribute& attribute) const;

    std::shared_ptr<std::istream> m_keptStream;  // dies behind what reads from it
    std::unique_ptr<ParserParts> m_parts;
    ParserState& m_state{m_parts->state};

    std::istream* m_callersStream = nullptr;  // the one to rewind
    UnicodeString m_contentType;
    UnicodeString m_extension;
    mutable UnicodeString m_entityText;  // of the current reference
    mutable bool m_hasEntityText = false;
};

/// A new parser. `ZRXmlUtil::createXmlParser` is the public door.
ZRPtr<ZRXmlParser> makeXmlParserImpl();

/// Shares the stream that the parser was set to, so that it may outlive whoever made it. A parser
/// of another class just has to be used no longer than the stream lives.
void keepStream(ZRXmlParser& parser, std::shared_ptr<std::istream> stream);

}  // namespace ZroCommon::internal
