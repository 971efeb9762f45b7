#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string_view>
#include <vector>

#include "zro/foundation/ZRPtr.h"
#include "zro/xml/ZRXmlSerializer.h"
#include "zro/xml/internal/NamespaceManager.h"
#include "zro/xml/internal/XmlOutput.h"

namespace ZroCommon::internal {

/// The serializer. What an operation writes is composed in one block and handed to the stream's
/// buffer before the operation ends.
class XmlSerializerImpl final : public ZRXmlSerializer {
public:
    XmlSerializerImpl();

    UnicodeString getTypeName() const override;

    void setOutput(const UnicodeString& uri, const UnicodeString& encoding) override;
    void setOutput(std::ostream& stream, const UnicodeString& encoding) override;
    void startDocument(const UnicodeString& encoding, const UnicodeString& standalone) override;
    void endDocument() override;
    void setPrefix(ZRName prefix, ZRName namespaceUri) override;
    ZRName getPrefix(ZRName namespaceUri, bool generate) override;
    int getDepth() const override;
    ZRName getNamespace() const override;
    ZRName getName() const override;
    void startTag(ZRName namespaceUri, ZRName prefix, ZRName localName) override;
    void startTag(ZRName namespaceUri, ZRName localName) override;
    void attribute(ZRName namespaceUri, ZRName prefix, ZRName localName,
                   const UnicodeString& value) override;
    void attribute(ZRName namespaceUri, ZRName localName, const UnicodeString& value) override;
    void endTag(ZRName namespaceUri, ZRName localName) override;
    void text(const char16_t* buffer, int start, int length) override;
    void text(const UnicodeString& text) override;
    void cdsect(const UnicodeString& text) override;
    void entityRef(const UnicodeString& name) override;
    void processingInstruction(const UnicodeString& text) override;
    void comment(const UnicodeString& text) override;
    void docdecl(const UnicodeString& text) override;
    void ignorableWhitespace(const UnicodeString& text) override;
    void flush() override;
    void setGenerator(const UnicodeString& generator) override;

protected:
    ~XmlSerializerImpl() override;

private:
    enum class Phase : std::uint8_t {
        Created,
        OutputSet,
        DocumentStarted,
        DocumentEnded,
        Closed,
        PrefixSet,  // a scope is open for the next start tag
        TagOpen,
        AttributeWritten,  // and the tag still open
        TagClosed,
        EndTagWritten,
        EmptyTagClosed,
        TextWritten,
    };

    enum class Encoding : std::uint8_t { Unnamed, Utf8, ShiftJis };

    struct OpenElement {
        ZRName prefix;
        ZRName namespaceUri;
        ZRName localName;
        int depth = 0;  // of its scope
    };

    void checkStream() const {
        if (m_stream == nullptr || m_stream->fail()) {
            throwStreamError();
        }
    }
    [[noreturn]] void throwStreamError() const;
    bool close();
    void begin(std::ostream& stream, const UnicodeString& encoding);
    void setEncoding(const UnicodeString& encoding);

    bool isTagOpen() const {
        return m_phase == Phase::TagOpen || m_phase == Phase::AttributeWritten;
    }
    void closeStartTag();
    void writeDeclarations();
    void beginContent();
    void openScope();
    void writeStartTag(ZRName namespaceUri, ZRName prefix, ZRName localName);
    void writeEndTag();
    [[noreturn]] void throwMismatch(ZRName namespaceUri, ZRName localName) const;

    void beginAttribute() const;
    bool declareByAttribute(ZRName namespaceUri, ZRName prefix, ZRName localName,
                            const UnicodeString& value);
    void writeAttribute(ZRName prefix, ZRName localName, const UnicodeString& value);
    void writeName(ZRName prefix, ZRName localName);
    void writeDelimited(std::string_view before, const UnicodeString& text, std::string_view after);

    ZRPtr<NamespaceManager> m_namespaces;
    std::vector<OpenElement> m_elements;
    Phase m_phase = Phase::Created;
    Encoding m_encoding = Encoding::Unnamed;
    std::ostream* m_stream = nullptr;
    std::unique_ptr<std::ostream> m_ownStream;  // null when the stream is the caller's
    XmlOutput m_output;
    UnicodeString m_generator;
};

}  // namespace ZroCommon::internal
