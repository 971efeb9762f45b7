#include "zro/xml/internal/DoctypeScanner.h"

#include <unicode/locid.h>

#include "zro/foundation/ZRError.h"
#include "zro/uri/ZRUri.h"
#include "zro/vocabulary/internal/SharedNames.h"
#include "zro/xml/internal/ExternalSubsetCache.h"
#include "zro/xml/internal/Scan.h"

namespace ZroCommon::internal {
namespace {

using Parser = ZRXmlParser;

constexpr char32_t kEnd = CharReader::kEnd;

constexpr const char16_t* kMathMLDirectory = u"http://www.w3.org/Math/DTD/mathml2/";
constexpr const char16_t* kSvgPublicId = u"-//W3C//DTD SVG";
constexpr std::u16string_view kSvgNamespace = u"http://www.w3.org/2000/svg";
constexpr std::u16string_view kXLinkNamespace = u"http://www.w3.org/1999/xlink";

constexpr bool isQuote(char32_t c) {
    return c == u'"' || c == u'\'';
}

UnicodeString joined(const UnicodeString& head, const UnicodeString& tail) {
    return UnicodeString(head).append(tail);
}

}  // namespace

// The head, up to the internal subset.

void DoctypeScanner::readDoctype() {
    m_state.lookahead = Lookahead::None;
    m_state.event = Parser::DOCDECL;
    if (m_state.rootSeen) {
        m_state.report(XmlError::DoctypeAfterRoot);
    }
    if (m_state.docTypeSeen) {
        m_state.report(XmlError::SecondDoctype);
    }
    const ExternalId id = readHead();
    scanToEnd(Subset::Internal);
    adoptEntities(id);
    m_state.docTypeSeen = true;
}

// What follows is left to be read, be it "[" or ">" or neither.
DoctypeScanner::ExternalId DoctypeScanner::readHead() {
    requireSpace(u"<!DOCTYPE");
    QName root;
    if (!m_state.names.readQName(root)) {
        m_state.report(XmlError::InvalidDoctypeName);
    }
    const UnicodeString head = joined(u"<!DOCTYPE ", qualifiedName(root.prefix, root.local));
    char32_t c = peek();
    if (c == u'[' || c == u'>') {
        return {};
    }
    requireSpace(head);
    c = peek();
    return c == u'[' || c == u'>' ? ExternalId() : readExternalId(head);
}

DoctypeScanner::ExternalId DoctypeScanner::readExternalId(const UnicodeString& head) {
    const ZRName keyword = m_state.names.readName();
    if (keyword != ZRN_SYSTEM && keyword != ZRN_PUBLIC) {
        m_state.report(XmlError::ExternalIdExpected, head);
    }
    UnicodeString upper = keyword.toString();
    upper.toUpper(icu::Locale::getRoot());
    if (peek() != u'>') {
        requireSpace(joined(head, u" ").append(keyword.toString()));
    }
    ExternalId id;
    const bool isPublic = upper == u"PUBLIC";
    if (!isPublic && upper != u"SYSTEM") {
        return id;  // the callback let parsing continue: to the declaration's end
    }
    if (isPublic) {
        readPublicId(head, id);
        return id;
    }
    if (!nextIsQuote()) {
        m_state.report(XmlError::SystemLiteralExpected, joined(head, u" SYSTEM|PUBLIC"));
        return id;
    }
    id.systemId = m_literals.read(LiteralMode::Plain);
    return id;
}

void DoctypeScanner::readPublicId(const UnicodeString& head, ExternalId& id) {
    if (!nextIsQuote()) {
        return m_state.report(XmlError::PublicLiteralExpected, joined(head, u" PUBLIC"));
    }
    id.publicId = m_literals.read(LiteralMode::Plain);
    if (peek() == u'>') {
        return;
    }
    requireSpace(joined(head, u" PUBLIC \"").append(id.publicId).append(u'"'));
    if (nextIsQuote()) {
        id.systemId = m_literals.read(LiteralMode::Plain);
    }
}

// What the identifiers bring in.

void DoctypeScanner::adoptEntities(const ExternalId& id) {
    if (id.publicId.startsWith(kSvgPublicId)) {
        // On purpose: this is the scope under all elements, so that the bindings stay for the
        // documents that the parser reads next.
        m_state.namespaces->declare(ZRName(), internSharedName(kSvgNamespace));
        m_state.namespaces->declare(ZRN_xlink, internSharedName(kXLinkNamespace));
    }
    if (m_state.feature(Parser::FEATURE_SKIP_EXTERNAL_SUBSET) || id.systemId.isEmpty()) {
        return;
    }
    try {
        loadSubset(id.systemId);
    } catch (const ZRError& error) {
        constexpr unsigned short kOutOfMemory = 0x0801;
        const unsigned short code = error.getErrorCode();
        const bool isOfNoSubset =  // but of the whole parse
            code == kOutOfMemory || code == static_cast<unsigned short>(XmlError::LimitExceeded);
        if (isOfNoSubset || !m_state.feature(Parser::FEATURE_IGNORE_EXTERNAL_SUBSET_ERRORS)) {
            throw;
        }
    }
}

void DoctypeScanner::loadSubset(const UnicodeString& systemId) {
    const UnicodeString& baseUri = m_state.reader.input().baseUri;
    const ZRUri uri(ZRUri(baseUri, URISTR_PATH_OR_URI_CSS), systemId, URISTR_PATH_OR_URI_CSS);
    if (uri.toString().startsWith(kMathMLDirectory)) {
        return m_state.entities.addMathML();
    }
    if (m_state.reader.limits.denyExternal || m_state.reader.limits.skipExternal) {
        return;
    }
    const BusyScope busy(m_state);
    m_state.entities.merge(*externalSubset(
        uri.toString(), uri.isAbsolute() ? UnicodeString() : baseUri, m_state.reader.limits));
}

// The declarations.

void DoctypeScanner::readSubsetDeclaration() {
    m_state.lookahead = Lookahead::None;
    m_state.text.append(u"<!");
    scanToEnd(Subset::External);
}

// To the ">" that closes the declaration, with its internal subset. Which construct begins is seen
// by what the text ends in.
void DoctypeScanner::scanToEnd(Subset subset) {
    m_reachedEnd = false;
    int depth = 1;
    while (!m_reachedEnd) {
        appendPlainRun();
        const char32_t c = m_state.reader.get();
        if (c == kEnd) {
            m_reachedEnd = true;
        } else if (!scanMarkup(c, subset, depth)) {
            return;
        }
    }
    m_state.report(XmlError::OpenDeclaration, u"DOCTYPE");
}

void DoctypeScanner::appendPlainRun() {
    const Run& run = m_state.reader.run();
    const char16_t* const start = run.at;
    const char16_t* const end =
        findAny<u'<', u'>', u'"', u'\'', u'-', u'?', u'Y', u'%', u'[', 0xFFFF>(start, run.end);
    m_state.text.append(start, static_cast<std::size_t>(end - start));
    m_state.reader.moveTo(end);
}

// False at the ">" that ends the declaration.
bool DoctypeScanner::scanMarkup(char32_t c, Subset subset, int& depth) {
    TextBuffer& text = m_state.text;
    if (c == u'%') {
        replaceParameter(subset);
        return true;
    }
    const std::size_t before = text.size();
    const auto follows = [&text, before](std::u16string_view start) {
        return text.view().substr(0, before).ends_with(start);
    };
    text.appendCodePoint(c);
    bool isClosing = c == u'>';
    switch (c) {
    case u'<': ++depth; break;
    case u'"':
    case u'\'': scanString(c); break;
    case u'-':
        if (follows(u"<!-")) {
            scanTo(u"--");
            isClosing = true;
        }
        break;
    case u'?':
        if (follows(u"<")) {
            scanTo(u"?");
            isClosing = true;
        }
        break;
    case u'Y':
        if (follows(u"<!ENTIT")) {
            readEntity();
            isClosing = text.endsWith(u">");
        }
        break;
    case u'[':
        if (subset == Subset::External && follows(u"<![IGNORE")) {
            skipIgnored();
        }
        break;
    default: break;
    }
    depth -= isClosing && !m_reachedEnd ? 1 : 0;
    return depth != 0;
}

void DoctypeScanner::scanString(char32_t quote) {
    for (;;) {
        const char32_t c = m_state.reader.get();
        if (c == kEnd) {
            m_reachedEnd = true;
            return;
        }
        m_state.text.appendCodePoint(c);
        if (c == quote) {
            return;
        }
    }
}

// To a ">" behind `ending`, which may be the construct's own beginning: "<!-->" is a whole comment.
void DoctypeScanner::scanTo(std::u16string_view ending) {
    for (;;) {
        const char32_t c = m_state.reader.get();
        if (c == kEnd) {
            m_reachedEnd = true;
            return;
        }
        const bool isEnd = c == u'>' && m_state.text.endsWith(ending);
        m_state.text.appendCodePoint(c);
        if (isEnd) {
            return;
        }
    }
}

// On purpose: the section ends behind two "]", wherever they stand.
void DoctypeScanner::skipIgnored() {
    for (int brackets = 0; brackets < 2;) {
        const char32_t c = m_state.reader.get();
        if (c == kEnd) {
            m_reachedEnd = true;
            return;
        }
        brackets += c == u']' ? 1 : 0;
    }
}

void DoctypeScanner::replaceParameter(Subset subset) {
    const ZRName name = m_state.names.readName();
    if (name.isEmpty()) {
        m_state.report(XmlError::EmptyEntityName);
    }
    const char32_t c = m_state.reader.get();
    if (c != u';') {
        UnicodeString text(u'%');
        m_state.report(XmlError::InvalidReference,
                       text.append(name.toString()).append(static_cast<UChar32>(c)));
    }
    if (m_state.entities.knows(EntityTable::Kind::Parameter, name)) {
        openParameter(name);
    } else if (subset == Subset::Internal
               && !m_state.feature(Parser::FEATURE_EMPTY_UNDEFINED_ENTITY)) {
        m_state.report(XmlError::UndefinedParameterEntity, name.toString());
    }
}

void DoctypeScanner::openParameter(ZRName name) {
    constexpr auto kKind = EntityTable::Kind::Parameter;
    if (const UnicodeString* systemId = m_state.entities.systemId(kKind, name)) {
        m_opener.openEntity(UnicodeString(*systemId));
    } else if (const UnicodeString* value = m_state.entities.value(kKind, name)) {
        m_state.reader.pushReplacement(*value);
    }
}

void DoctypeScanner::readSubsetText() {
    m_state.lookahead = Lookahead::None;
    m_state.event = Parser::TEXT;
    CharReader& reader = m_state.reader;
    if (reader.get() != u'%') {
        return;
    }
    const ZRName name = m_state.names.readName();
    if (name.isEmpty()) {
        return;
    }
    const char32_t c = reader.get();
    if (c != u';') {
        return reader.pushBack(c);
    }
    openParameter(name);
}

// Helpers. White space between the parts of a declaration belongs to its text.

bool DoctypeScanner::skipSpace() {
    char32_t c = m_state.reader.get();
    const bool skipped = isXmlSpace(c);
    for (; isXmlSpace(c); c = m_state.reader.get()) {
        m_state.text.appendCodePoint(c);
    }
    m_state.reader.pushBack(c);
    return skipped;
}

bool DoctypeScanner::requireSpace(const UnicodeString& behind) {
    const bool skipped = isXmlSpace(peek());
    if (!skipped) {
        m_state.report(XmlError::MissingSpace, behind);
    }
    skipSpace();
    return skipped;
}

char32_t DoctypeScanner::peek() {
    const char32_t c = m_state.reader.get();
    m_state.reader.pushBack(c);
    return c;
}

bool DoctypeScanner::nextIsQuote() {
    return isQuote(peek());
}

}  // namespace ZroCommon::internal
