#include "zro/xml/internal/XmlParserImpl.h"

#include <new>
#include <utility>

#include "zro/foundation/ZRError.h"
#include "zro/foundation/internal/Raise.h"
#include "zro/uri/ZRUri.h"
#include "zro/uri/internal/OpenResource.h"

namespace ZroCommon::internal {

XmlParserImpl::XmlParserImpl() : m_parts(takeParserParts()) {}

XmlParserImpl::~XmlParserImpl() {
    giveParserParts(std::move(m_parts));
}

unsigned int XmlParserImpl::getTypeID() const {
    return getStaticTypeID();
}

bool XmlParserImpl::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRXmlParser::isA(typeID);
}

UnicodeString XmlParserImpl::getTypeName() const {
    return u"XmlParserImpl";
}

ZRPtr<ZRXmlParser> makeXmlParserImpl() {
    return ZRPtr<ZRXmlParser>(new XmlParserImpl);
}

// Inputs.

// While a callback or a resolver of the caller runs, the parser does not move.
void XmlParserImpl::refuseReentry() const {
    if (m_state.isBusy) {
        throwLibraryError(LibraryError::WrongState, ErrorSite::ParserCheckStream);
    }
}

/// Up to where the new stream comes in. Streams of before are forgotten.
void XmlParserImpl::beginInput(const UnicodeString& encoding) {
    closeStream();
    m_callersStream = nullptr;
    m_keptStream = nullptr;
    m_state.reset();
    m_parts->opener.presetEncoding(encoding);
}

void XmlParserImpl::setInput(const UnicodeString& uri, const UnicodeString& encoding,
                             const UnicodeString& baseUri) {
    beginInput(encoding);
    const ZRUri location(uri, URISTR_PATH_OR_URI_CSS);
    std::unique_ptr<std::istream> stream;
    {
        const BusyScope busy(m_state);
        stream = openResource(location);
    }
    if (stream == nullptr) {
        throwIOError(IOError::CannotOpenFile, ErrorSite::ParserSetInput, location.toString());
    }
    DecodedInput& input = m_state.reader.input();
    input.uri = uri;
    input.baseUri = baseUri;
    if (baseUri.isEmpty() && location.isAbsolute() && !location.isDataScheme()) {
        input.baseUri = location.getBaseString();
    }
    input.open(std::move(stream));
    m_parts->opener.checkStream();
}

void XmlParserImpl::setInput(std::istream& stream, const UnicodeString& encoding,
                             const UnicodeString& baseUri) {
    beginInput(encoding);
    m_state.reader.input().baseUri = baseUri;
    m_state.reader.input().open(stream);
    try {
        m_parts->opener.checkStream();
    } catch (...) {
        closeStream();  // a caller need not keep what was not taken
        throw;
    }
    m_callersStream = &stream;
}

void keepStream(ZRXmlParser& parser, std::shared_ptr<std::istream> stream) {
    if (parser.getTypeID() == XmlParserImpl::getStaticTypeID()) {
        static_cast<XmlParserImpl&>(parser).keepStream(std::move(stream));
    }
}

void XmlParserImpl::closeStream() {
    refuseReentry();
    m_state.keepEvent();  // it can still be asked for
    m_state.reader.close();
}

void XmlParserImpl::rewind() {
    closeStream();
    if (m_callersStream != nullptr) {
        try {
            m_callersStream->clear();
            m_callersStream->seekg(0);
        } catch (const std::ios_base::failure&) {
            m_callersStream->exceptions(std::ios_base::goodbit);
        }
        const Encoding encoding = m_state.reader.input().encoding;
        const UnicodeString baseUri = m_state.reader.input().baseUri;
        m_state.reset();
        DecodedInput& input = m_state.reader.input();
        // On purpose: behind a transcoder this is the mode of its output, in which the document's
        // own bytes are then read.
        input.encoding.mode = encoding.mode;
        input.encoding.name = encoding.name;
        input.baseUri = baseUri;
        input.open(*m_callersStream);
    }
    m_parts->opener.checkStream();
}

// Events.

// Passed limits become errors, and whatever leaves the parser between two characters ends it.
template <class Action>
void XmlParserImpl::guarded(Action action) {
    refuseReentry();
    m_hasEntityText = false;
    try {
        action();
    } catch (const LimitBreach& breach) {
        m_state.fail(XmlError::LimitExceeded, breach.limit);
    } catch (const std::bad_alloc&) {
        m_state.lookahead = Lookahead::ForcedEnd;
        throw;
    } catch (const ZRError& error) {
        constexpr unsigned short kOutOfMemory = 0x0801;
        if (error.getErrorCode() == kOutOfMemory) {
            m_state.lookahead = Lookahead::ForcedEnd;
        }
        throw;
    }
}

ZRXmlParser::EventType XmlParserImpl::nextToken() {
    guarded([this] { readToken(); });
    return m_state.event;
}

ZRXmlParser::EventType XmlParserImpl::next() {
    guarded([this] {
        m_state.text.clear();
        m_state.textStart = 0;
        if (readPlainText()) {
            return;
        }
        readToken();
        if (m_state.event >= TEXT) {
            readMerged();
        }
    });
    return m_state.event;
}

// The common case of text: between two tags, without markup, whole in the window. Then it is merged
// text as it stands, and what comes behind it is known.
bool XmlParserImpl::readPlainText() {
    const int depth = m_state.depth() - (m_state.event == END_TAG ? 1 : 0);
    if (!isTag() || depth <= 0 || m_state.lookahead != Lookahead::None) {
        return false;
    }
    const std::u16string_view text = m_parts->content.findPlainText();
    if (text.empty()) {
        return false;
    }
    if (m_state.event == END_TAG) {
        m_state.namespaces->popScope();
    }
    m_state.event = TEXT;
    m_state.entityName = ZRName();
    m_state.plainText = text;
    m_state.reader.moveTo(text.data() + text.size());
    m_state.peekType();
    return true;
}

void XmlParserImpl::readToken() {
    m_state.plainText = {};
    m_state.text.truncate(m_state.textStart);
    m_state.entityName = ZRName();
    switch (m_state.event) {
    case START_DOCUMENT:
        if (m_state.lookahead != Lookahead::ForcedEnd) {
            startDocument();
        }
        if (m_state.event != START_DOCUMENT) {
            return;
        }
        break;
    case END_DOCUMENT: return readEnd();
    case START_TAG:
        if (m_state.lookahead == Lookahead::EmptyElementEnd) {
            m_state.lookahead = Lookahead::None;
            m_state.event = END_TAG;
            return;
        }
        break;
    case END_TAG: m_state.namespaces->popScope(); break;
    default: break;
    }
    switch (m_state.peekType()) {
    case Lookahead::StartTag: return m_parts->tags.readStartTag();
    case Lookahead::EndTag: return m_parts->tags.readEndTag();
    case Lookahead::Text: return m_parts->content.readText();
    case Lookahead::Reference: return m_parts->content.readReference();
    case Lookahead::Instruction: return readInstruction();
    case Lookahead::Declaration: return readDeclaration();
    default: return readEnd();
    }
}

// A declaration leaves the event as it is, an instruction is the first event.
void XmlParserImpl::startDocument() {
    m_parts->opener.startDocument();
    if (m_state.peekType() == Lookahead::Instruction) {
        readInstruction();
    }
}

void XmlParserImpl::readEnd() {
    if (m_state.depth() > 0) {
        m_state.report(XmlError::MissingEndTag);
    }
    m_state.lookahead = Lookahead::None;
    m_state.event = END_DOCUMENT;
    m_state.reader.close();
}

void XmlParserImpl::readInstruction() {
    m_state.lookahead = Lookahead::None;
    const ZRName target = m_state.names.readName();
    if (target == ZRN_xml) {
        m_parts->opener.readXmlDeclaration();
    } else {
        m_parts->content.readInstruction(target);
    }
}

void XmlParserImpl::readDeclaration() {
    m_state.lookahead = Lookahead::None;
    const char32_t c = m_state.reader.get();
    if (c == u'[') {
        return readSection();
    }
    if (c == u'-') {
        if (m_state.reader.get() != u'-') {
            m_state.report(XmlError::InvalidComment);
        }
        return m_parts->content.readComment();
    }
    m_state.reader.pushBack(c);
    const ZRName name = m_state.names.readName();
    if (name != ZRN_DOCTYPE) {
        m_state.report(XmlError::UnexpectedMarkup, name.toString());
    }
    m_parts->doctype.readDoctype();
}

// On purpose: a section that is no CDATA is stepped over without an event of its own, so the event
// before it comes again.
void XmlParserImpl::readSection() {
    if (m_state.names.readName() == ZRN_CDATA) {
        const char32_t c = m_state.reader.get();
        if (c == u'[') {
            return m_parts->content.readCData();
        }
        m_state.report(XmlError::InvalidCData);
        m_state.reader.pushBack(c);
    }
    m_parts->content.skipSection();
}

// The merged text of `next`. The first token of it has been read.
void XmlParserImpl::readMerged() {
    while (m_state.event >= TEXT) {
        if (!mergeToken()) {
            readToken();
        } else if (mergesOn()) {
            m_state.textStart = m_state.text.size();
            readToken();
        } else {
            m_state.textStart = 0;
            return;
        }
    }
}

bool XmlParserImpl::mergesOn() {
    const Lookahead next = m_state.peekType();
    return next >= Lookahead::Text && next <= Lookahead::Declaration;
}

// Takes a token into the merged text. False when that is still empty: then the token is dropped
// without a trace.
bool XmlParserImpl::mergeToken() {
    const bool isReference = m_state.event == ENTITY_REF;
    const bool isText = m_state.event == TEXT || m_state.event == CDSECT
                        || (isReference && m_state.entityName.isEmpty());
    if (!isText) {
        if (isReference) {
            replaceReference();
        }
        m_state.text.truncate(m_state.textStart);
        if (m_state.textStart == 0) {
            return false;
        }
    }
    m_state.event = TEXT;
    return true;
}

void XmlParserImpl::replaceReference() {
    const ZRName name = m_state.entityName;
    const UnicodeString* value = m_state.generalEntity(name);
    if (value == nullptr) {
        return m_state.report(XmlError::UndefinedEntity, name.toString());
    }
    const UnicodeString* systemId = m_state.entities.systemId(EntityTable::Kind::General, name);
    if (systemId != nullptr) {
        m_parts->opener.openEntity(UnicodeString(*systemId));
    } else {
        m_state.reader.pushReplacement(*value);
    }
}

void XmlParserImpl::scanExternalSubset() {
    guarded([this] {
        startDocument();
        for (;;) {
            m_state.text.clear();
            switch (m_state.peekType()) {
            case Lookahead::Text: m_parts->doctype.readSubsetText(); break;
            case Lookahead::Instruction: readInstruction(); break;
            case Lookahead::Declaration: m_parts->doctype.readSubsetDeclaration(); break;
            default: return readEnd();
            }
        }
    });
}

}  // namespace ZroCommon::internal
