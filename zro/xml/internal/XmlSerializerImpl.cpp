#include "zro/xml/internal/XmlSerializerImpl.h"

#include <utility>

#include <unicode/locid.h>

#include "zro/foundation/internal/Raise.h"
#include "zro/platform/internal/NativeFile.h"
#include "zro/uri/ZRUri.h"
#include "zro/xml/ZRXmlUtil.h"

namespace ZroCommon::internal {
namespace {

constexpr const char16_t* kGenerator =
    u"Quorrel V4.3 MR2c (4,3,2008,0805) for Windows (x64) ZroCommon";

constexpr int kBaseDeclarations = 2;  // xml and xmlns

}  // namespace

XmlSerializerImpl::XmlSerializerImpl()
    : m_namespaces(new NamespaceManager), m_generator(kGenerator) {}

// A stream of the caller's may be gone by now: it is not touched.
XmlSerializerImpl::~XmlSerializerImpl() = default;

UnicodeString XmlSerializerImpl::getTypeName() const {
    return u"XmlSerializerImpl";
}

// Output and document.

void XmlSerializerImpl::throwStreamError() const {
    throwIOError(m_stream == nullptr ? IOError::NoOutputStream : IOError::OutputError,
                 ErrorSite::SerializerCheckStream);
}

bool XmlSerializerImpl::close() {
    if (m_stream == nullptr) {
        m_phase = Phase::Closed;
        return true;
    }
    std::ostream* const stream = std::exchange(m_stream, nullptr);
    const std::unique_ptr<std::ostream> ownStream = std::move(m_ownStream);
    stream->flush();
    return !stream->fail();
}

void XmlSerializerImpl::setOutput(const UnicodeString& uri, const UnicodeString& encoding) {
    close();
    const ZRUri file(uri, URISTR_PATH_OR_URI_CSS);
    auto stream = file.isFile() ? openOutputFile(file.getLocalPath()) : nullptr;
    if (stream == nullptr) {
        throwIOError(IOError::CannotOpenFile, ErrorSite::SerializerSetOutput, file.toString());
    }
    m_ownStream = std::move(stream);
    begin(*m_ownStream, encoding);
}

void XmlSerializerImpl::setOutput(std::ostream& stream, const UnicodeString& encoding) {
    close();
    begin(stream, encoding);
}

void XmlSerializerImpl::begin(std::ostream& stream, const UnicodeString& encoding) {
    setEncoding(encoding);
    m_namespaces->reset();
    if (m_namespaces->declarationCount(0) > kBaseDeclarations) {
        m_namespaces = new NamespaceManager;  // without the prefixes made outside of all tags
    }
    m_elements.clear();
    m_phase = Phase::OutputSet;
    m_output.open(stream);
    m_stream = &stream;  // last: a stream is taken when nothing has thrown
}

void XmlSerializerImpl::setEncoding(const UnicodeString& encoding) {
    UnicodeString name(encoding);
    name.trim().toUpper(icu::Locale::getRoot());
    m_encoding = Encoding::Unnamed;
    if (name == ZRName(ZRN_SHIFT_JIS).toString()) {
        m_encoding = Encoding::ShiftJis;
    } else if (name == ZRName(ZRN_UTF_8).toString()) {
        m_encoding = Encoding::Utf8;
    }
    m_output.setShiftJis(m_encoding == Encoding::ShiftJis);
}

void XmlSerializerImpl::startDocument(const UnicodeString& encoding,
                                      const UnicodeString& standalone) {
    checkStream();
    if (m_phase != Phase::OutputSet) {
        throwLibraryError(LibraryError::UnexpectedStartDocument,
                          ErrorSite::SerializerStartDocument);
    }
    if (!encoding.isEmpty()) {
        setEncoding(encoding);
    }
    m_output.put("<?xml version=\"1.0\"");
    if (m_encoding != Encoding::Unnamed) {
        m_output.put(m_encoding == Encoding::Utf8 ? " encoding=\"UTF-8\""
                                                  : " encoding=\"Shift_JIS\"");
    }
    if (!standalone.isEmpty()) {
        writeDelimited(" standalone=\"", standalone, "\"");
    }
    m_output.put("?>");
    if (!m_generator.isEmpty()) {
        writeDelimited("<!-- ", m_generator, " -->");
    }
    m_phase = Phase::DocumentStarted;
    m_output.commit();
}

void XmlSerializerImpl::endDocument() {
    checkStream();
    while (!m_elements.empty()) {
        writeEndTag();
    }
    m_output.commit();
    m_phase = Phase::DocumentEnded;
    // On purpose: no other operation tests the stream behind its output, but here no next one would
    // tell that a full disk has lost the last bytes.
    if (!close()) {
        throwIOError(IOError::OutputError, ErrorSite::SerializerCheckStream);
    }
}

void XmlSerializerImpl::flush() {
    beginContent();
    m_output.commit();
    m_stream->flush();
}

void XmlSerializerImpl::setGenerator(const UnicodeString& generator) {
    m_generator = generator;
}

// Namespaces and state.

void XmlSerializerImpl::setPrefix(ZRName prefix, ZRName namespaceUri) {
    beginContent();
    openScope();
    m_namespaces->declare(prefix, namespaceUri);
    m_phase = Phase::PrefixSet;
    m_output.commit();
}

ZRName XmlSerializerImpl::getPrefix(ZRName namespaceUri, bool generate) {
    if (generate) {
        checkStream();
    }
    const ZRName found = m_namespaces->findPrefix(namespaceUri);
    const bool isKnown = !found.isEmpty() || namespaceUri.isEmpty()
                         || m_namespaces->lookup(ZRN_EMPTY) == namespaceUri;
    if (isKnown || !generate) {
        return found;
    }
    ZRName made = ZRName::generateID(UnicodeString());
    while (!m_namespaces->lookup(made).isEmpty()) {  // a document may use names of that form
        made = ZRName::generateID(made);
    }
    // On purpose: outside of a start tag the binding is made too, though nothing will write it.
    m_namespaces->declare(made, namespaceUri);
    return made;
}

int XmlSerializerImpl::getDepth() const {
    return static_cast<int>(m_elements.size());
}

ZRName XmlSerializerImpl::getNamespace() const {
    return m_elements.empty() ? ZRName() : m_elements.back().namespaceUri;
}

ZRName XmlSerializerImpl::getName() const {
    return m_elements.empty() ? ZRName() : m_elements.back().localName;
}

// Tags.

void XmlSerializerImpl::closeStartTag() {
    if (isTagOpen()) {
        writeDeclarations();
        m_output.put('>');
        m_phase = Phase::TagClosed;
    }
}

void XmlSerializerImpl::writeDeclarations() {
    for (const auto& [prefix, uri] : m_namespaces->declarations()) {
        m_output.put(" xmlns");
        if (prefix != ZRN_EMPTY) {
            m_output.put(':');
            m_output.put(ZRName(prefix), Escape::None);
        }
        m_output.put("=\"");
        m_output.put(ZRName(uri), Escape::Attribute);
        m_output.put('"');
    }
}

void XmlSerializerImpl::beginContent() {
    checkStream();
    closeStartTag();
}

void XmlSerializerImpl::openScope() {
    if (m_phase != Phase::PrefixSet) {
        m_namespaces->pushScope();
    }
}

void XmlSerializerImpl::startTag(ZRName namespaceUri, ZRName prefix, ZRName localName) {
    beginContent();
    openScope();
    if (!namespaceUri.isEmpty()) {
        m_namespaces->declare(prefix, namespaceUri);
    }
    writeStartTag(namespaceUri, prefix, localName);
}

void XmlSerializerImpl::startTag(ZRName namespaceUri, ZRName localName) {
    beginContent();
    openScope();
    writeStartTag(namespaceUri, getPrefix(namespaceUri, true), localName);
}

void XmlSerializerImpl::writeStartTag(ZRName namespaceUri, ZRName prefix, ZRName localName) {
    if (namespaceUri.isEmpty()) {
        m_namespaces->declare(ZRN_EMPTY, ZRN_EMPTY);  // ends a default namespace, if there is one
    }
    m_namespaces->setElement(prefix, namespaceUri, localName);
    m_elements.push_back({prefix, namespaceUri, localName, m_namespaces->depth()});
    m_output.put('<');
    writeName(prefix, localName);
    m_phase = Phase::TagOpen;
    m_output.commit();
}

void XmlSerializerImpl::endTag(ZRName namespaceUri, ZRName localName) {
    checkStream();
    if (m_elements.empty()) {
        throwLibraryError(LibraryError::UnexpectedEndTag, ErrorSite::SerializerEndTag);
    }
    const OpenElement& open = m_elements.back();
    if (open.namespaceUri != namespaceUri || open.localName != localName) {
        throwMismatch(namespaceUri, localName);
    }
    writeEndTag();
    m_output.commit();
}

void XmlSerializerImpl::writeEndTag() {
    const OpenElement open = m_elements.back();
    if (isTagOpen()) {
        writeDeclarations();
        m_output.put("/>");
        m_phase = Phase::EmptyTagClosed;
    } else {
        m_output.put("</");
        writeName(open.prefix, open.localName);
        m_output.put('>');
        m_phase = Phase::EndTagWritten;
    }
    while (m_namespaces->depth() >= open.depth) {  // with scopes of prefixes that no tag took up
        m_namespaces->popScope();
    }
    m_elements.pop_back();
}

void XmlSerializerImpl::throwMismatch(ZRName namespaceUri, ZRName localName) const {
    const OpenElement& open = m_elements.back();
    const UnicodeString given = open.namespaceUri == namespaceUri
                                    ? ZRXmlUtil::makeQNameStr(open.prefix, localName)
                                    : ZRXmlUtil::makeNSQNameStr(namespaceUri, localName);
    throwLibraryError(LibraryError::MismatchedEndTag, ErrorSite::SerializerEndTag, given,
                      ZRXmlUtil::makeQNameStr(open.prefix, open.localName));
}

void XmlSerializerImpl::writeName(ZRName prefix, ZRName localName) {
    if (!prefix.isEmpty()) {
        m_output.put(prefix, Escape::None);
        m_output.put(':');
    }
    m_output.put(localName, Escape::None);
}

// Attributes.

void XmlSerializerImpl::attribute(ZRName namespaceUri, ZRName prefix, ZRName localName,
                                  const UnicodeString& value) {
    beginAttribute();
    if (declareByAttribute(namespaceUri, prefix, localName, value)) {
        return;
    }
    if (!prefix.isEmpty() && !namespaceUri.isEmpty()) {
        m_namespaces->declare(prefix, namespaceUri);
    }
    writeAttribute(prefix, localName, value);
}

void XmlSerializerImpl::attribute(ZRName namespaceUri, ZRName localName,
                                  const UnicodeString& value) {
    beginAttribute();
    if (declareByAttribute(namespaceUri, ZRN_EMPTY, localName, value)) {
        return;
    }
    // On purpose: a namespace that is the default one gives no prefix, though attributes do not
    // take part in it.
    writeAttribute(getPrefix(namespaceUri, true), localName, value);
}

void XmlSerializerImpl::beginAttribute() const {
    checkStream();
    if (!isTagOpen()) {
        throwLibraryError(LibraryError::UnexpectedAttribute, ErrorSite::SerializerAttribute);
    }
}

// Declarations go out when the tag is closed, together with those that the tag itself needs.
bool XmlSerializerImpl::declareByAttribute(ZRName namespaceUri, ZRName prefix, ZRName localName,
                                           const UnicodeString& value) {
    if (namespaceUri != ZRN_ns_xmlns && prefix != ZRN_xmlns && localName != ZRN_xmlns) {
        return false;
    }
    m_namespaces->declare(localName == ZRN_xmlns ? ZRName() : localName, ZRName(value));
    return true;
}

void XmlSerializerImpl::writeAttribute(ZRName prefix, ZRName localName,
                                       const UnicodeString& value) {
    m_output.put(' ');
    writeName(prefix, localName);
    m_output.put("=\"");
    m_output.put(value, Escape::Attribute);
    m_output.put('"');
    m_phase = Phase::AttributeWritten;
    m_output.commit();
}

// Content. None of these looks at what it is given.

void XmlSerializerImpl::text(const char16_t* buffer, int start, int length) {
    beginContent();
    if (buffer != nullptr && start >= 0 && length > 0) {
        const std::u16string_view piece(buffer + start, static_cast<std::size_t>(length));
        m_output.put(piece, Escape::Text);
    }
    m_phase = Phase::TextWritten;
    m_output.commit();
}

void XmlSerializerImpl::text(const UnicodeString& text) {
    XmlSerializerImpl::text(text.getBuffer(), 0, text.length());
}

void XmlSerializerImpl::writeDelimited(std::string_view before, const UnicodeString& text,
                                       std::string_view after) {
    m_output.put(before);
    m_output.put(text, Escape::None);
    m_output.put(after);
}

void XmlSerializerImpl::cdsect(const UnicodeString& text) {
    beginContent();
    writeDelimited("<![CDATA[", text, "]]>");
    m_output.commit();
}

void XmlSerializerImpl::entityRef(const UnicodeString& name) {
    beginContent();
    writeDelimited("&", name, ";");
    m_output.commit();
}

void XmlSerializerImpl::processingInstruction(const UnicodeString& text) {
    beginContent();
    writeDelimited("<?", text, "?>");
    m_output.commit();
}

void XmlSerializerImpl::comment(const UnicodeString& text) {
    beginContent();
    writeDelimited("<!--", text, "-->");
    m_output.commit();
}

void XmlSerializerImpl::ignorableWhitespace(const UnicodeString& text) {
    beginContent();
    writeDelimited("", text, "");
    m_output.commit();
}

void XmlSerializerImpl::docdecl(const UnicodeString& text) {
    checkStream();
    if (m_phase != Phase::DocumentStarted) {
        throwLibraryError(LibraryError::UnexpectedDocdecl, ErrorSite::SerializerDocdecl);
    }
    const bool hasBlank = UnicodeString(u" \t\n\r").indexOf(text.charAt(0)) >= 0;
    writeDelimited(hasBlank ? "<!DOCTYPE" : "<!DOCTYPE ", text, ">");
    m_output.commit();
}

}  // namespace ZroCommon::internal
