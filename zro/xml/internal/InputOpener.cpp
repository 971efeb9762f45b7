#include "zro/xml/internal/InputOpener.h"

#include <memory>

#include "zro/foundation/internal/Raise.h"
#include "zro/uri/ZRUri.h"
#include "zro/uri/internal/OpenResource.h"
#include "zro/xml/internal/EncodingSniffer.h"
#include "zro/xml/internal/Scan.h"
#include "zro/xml/internal/Transcoder.h"

namespace ZroCommon::internal {

void InputOpener::checkStream() {
    std::istream* stream = m_state.reader.input().stream();
    if (stream == nullptr) {
        throwLibraryError(LibraryError::WrongState, ErrorSite::ParserCheckStream);
    }
    // What was read ahead counts as well, since another start of the document may follow.
    if (m_state.reader.input().bytes().available() != 0) {
        return;
    }
    peekByte(*stream);
    if (!stream->good()) {
        throwIOError(stream->eof() ? IOError::UnexpectedEnd : IOError::InputError,
                     ErrorSite::ParserCheckStream);
    }
}

void InputOpener::startDocument() {
    m_state.reader.settle();  // the text may go on behind a second declaration
    checkStream();
    m_state.reader.startCounting();
    sniff();
}

void InputOpener::sniff() {
    DecodedInput& input = m_state.reader.settle();
    const Sniffed sniffed = sniffEncoding(input.bytes(), input.encoding);
    if (!sniffed.isValid) {
        m_state.report(XmlError::InvalidCharacter);
    }
    for (std::size_t i = sniffed.characterCount; i-- > 0;) {
        m_state.reader.pushCharacter(sniffed.characters[i]);
    }
}

// Encodings.

void InputOpener::presetEncoding(const UnicodeString& name) {
    Encoding& encoding = m_state.reader.input().encoding;
    EncodingMode mode = encoding.mode;
    // On purpose: the preset of an encoding that needs a transcoder leaves no more than the mode
    // of the transcoder's output behind, in which the document's own bytes are then read.
    if (applyName(name, mode) != NameResult::Unknown) {
        encoding.mode = mode;
    }
}

// Stores the name and finds the mode that it stands for.
InputOpener::NameResult InputOpener::applyName(const UnicodeString& name, EncodingMode& mode) {
    DecodedInput& input = m_state.reader.input();
    input.encoding.name = name;
    if (name.isEmpty() || input.isTranscoded()) {
        return NameResult::Unknown;
    }
    input.encoding.name.trim();
    const NamedMode named = modeOfName(input.encoding.name, mode);
    if (named.isBuiltin) {
        mode = named.mode;
        return NameResult::Mode;
    }
    if (m_state.feature(ZRXmlParser::FEATURE_BUILTIN_ENCODINGS_ONLY)) {
        m_state.report(XmlError::UnknownEncoding, name);
        return NameResult::Unknown;
    }
    const UnicodeString trimmed = input.encoding.name;
    if (transcode(trimmed)) {
        mode = EncodingMode::Utf16LE;
        return NameResult::Transcoded;
    }
    if (!m_state.feature(ZRXmlParser::FEATURE_IGNORE_UNKNOWN_ENCODING)) {
        m_state.report(XmlError::UnknownEncoding, trimmed);
    }
    return NameResult::Unknown;
}

bool InputOpener::transcode(const UnicodeString& name) {
    if (!m_state.reader.hasStream()) {
        return openTranscoder(nullptr, name) != nullptr;
    }
    return m_state.reader.settle().transcode(name);
}

void InputOpener::setMode(EncodingMode mode) {
    m_state.reader.settle().encoding.mode = mode;
}

// What the bytes have shown goes before what is declared among the builtin encodings.
void InputOpener::declareEncoding(const UnicodeString& name) {
    const Encoding before = m_state.reader.input().encoding;
    EncodingMode mode = before.mode;
    if (applyName(name, mode) == NameResult::Transcoded) {
        m_state.reader.input().encoding.mode = mode;
        return;
    }
    if (mode == before.mode) {
        return;
    }
    Encoding& encoding = m_state.reader.input().encoding;
    if (before.bomSeen) {
        // The names of UTF-16 and UTF-32 that leave the order open never come here with their own
        // mark: they have not changed the mode.
        m_state.report(XmlError::ConflictingEncoding, encoding.name);
    }
    if (isWideMode(before.mode)) {
        encoding.name = before.name;
    } else {
        setMode(mode);
    }
}

void InputOpener::declareEntityEncoding(const UnicodeString& name) {
    const Encoding before = m_state.reader.input().encoding;
    EncodingMode mode = before.mode;
    if (applyName(name, mode) == NameResult::Transcoded) {
        m_state.reader.input().encoding.mode = mode;
    } else if (mode != before.mode && isOrderedWideMode(before.mode)) {
        m_state.reader.input().encoding.name = before.name;
    } else if (mode != before.mode) {
        setMode(mode);
    }
}

// Declarations.

void InputOpener::readXmlDeclaration() {
    if (m_state.event != ZRXmlParser::START_DOCUMENT) {
        m_state.report(XmlError::UnexpectedDeclaration);
    }
    m_state.lookahead = Lookahead::None;
    if (!m_state.names.skipSpace()) {
        m_state.report(XmlError::MissingSpaceAfter, u"<?xml");
    }
    if (m_state.names.readName() != ZRN_version) {
        m_state.report(XmlError::MissingVersion);
    }
    readEquals(u"<?xml version");
    const UnicodeString version = m_literals.read(LiteralMode::Plain);
    if (version != u"1.0" && version != u"1.1") {
        m_state.report(XmlError::UnsupportedVersion, version);
    }
    bool spaceSkipped = m_state.names.skipSpace();
    ZRName name = m_state.names.readName();
    if (name == ZRN_encoding) {
        if (!spaceSkipped) {
            m_state.report(XmlError::MissingSpaceBefore, u"encoding=");
        }
        readEquals(u"encoding");
        declareEncoding(m_literals.read(LiteralMode::Plain));
        spaceSkipped = m_state.names.skipSpace();
        name = m_state.names.readName();
    }
    if (name == ZRN_standalone) {
        readStandalone(spaceSkipped);
    }
    readDeclarationEnd();
}

void InputOpener::readEquals(const char16_t* name) {
    m_state.names.skipSpace();
    if (m_state.reader.get() != u'=') {
        m_state.report(XmlError::MissingDeclarationEquals, name);
    }
    m_state.names.skipSpace();
}

void InputOpener::readStandalone(bool spaceSkipped) {
    if (!spaceSkipped) {
        m_state.report(XmlError::MissingSpaceBefore, u"standalone=");
    }
    readEquals(u"standalone");
    const UnicodeString value = m_literals.read(LiteralMode::Plain);
    if (value != u"yes" && value != u"no") {
        m_state.report(XmlError::InvalidStandalone);
    }
    m_state.names.skipSpace();
}

void InputOpener::readDeclarationEnd() {
    m_state.expect(u'?');
    m_state.expect(u'>');
}

// External entities.

void InputOpener::openEntity(const UnicodeString& systemId) {
    if (m_state.reader.limits.denyExternal) {
        throw LimitBreach{u"external entity"};
    }
    if (m_state.reader.limits.skipExternal) {
        return;
    }
    const ZRUri base(m_state.reader.input().baseUri, URISTR_PATH_OR_URI_CSS);
    const ZRUri uri(base, systemId, URISTR_PATH_OR_URI_CSS);
    std::unique_ptr<std::istream> stream;
    {
        const BusyScope busy(m_state);
        stream = openResource(uri);
    }
    if (stream == nullptr) {
        // On purpose: what is no file and cannot be opened is empty, and nothing tells.
        if (uri.isFile()) {
            throwIOError(IOError::CannotOpenFile, ErrorSite::ParserPushStream, uri.toString());
        }
        return;
    }
    auto inner = std::make_unique<DecodedInput>();
    inner->open(std::move(stream));
    inner->uri = uri.getLocalPath();
    inner->baseUri = uri.isAbsolute() ? uri.getBaseString() : m_state.reader.input().baseUri;
    m_state.reader.push(std::move(inner));
    m_state.reader.startCounting();
    checkStream();
    sniff();
    if (findTextDeclaration()) {
        readTextDeclaration();
    }
}

// On purpose: a blank among the first characters of an entity that has no declaration is lost, and
// the look for one goes on behind the end of a short entity.
bool InputOpener::findTextDeclaration() {
    CharReader& reader = m_state.reader;
    const std::uint32_t nesting = reader.nesting();
    UnicodeString start;
    int32_t own = 0;  // how much of it is the entity's
    char32_t c = 0;
    for (int count = 0; count < 6; ++count) {
        c = reader.get();
        if (c == CharReader::kEnd || isXmlSpace(c)) {
            break;
        }
        start.append(static_cast<UChar32>(c));
        own = reader.nesting() == nesting ? start.length() : own;
    }
    if (isXmlSpace(c) && start == u"<?xml") {
        return true;
    }
    reader.readAheadOfReturn();  // a reference in front of it may open another input
    reader.pushText(start.tempSubString(own));
    reader.pushText(start.tempSubString(0, own), nesting);
    return false;
}

void InputOpener::readTextDeclaration() {
    m_state.names.skipSpace();
    ZRName name = m_state.names.readName();
    if (name == ZRN_version) {
        readEquals(u"<?xml version");
        m_literals.read(LiteralMode::Plain);
        m_state.names.skipSpace();
        name = m_state.names.readName();
    }
    if (name == ZRN_encoding) {
        readEquals(u"encoding");
        declareEntityEncoding(m_literals.read(LiteralMode::Plain));
    }
    m_state.names.skipSpace();
    readDeclarationEnd();
}

}  // namespace ZroCommon::internal
