#include "zro/xml/internal/ParserState.h"

#include <array>

#include "zro/foundation/ZREmptyString.h"
#include "zro/foundation/ZRError.h"
#include "zro/foundation/internal/AppendNumber.h"
#include "zro/xml/internal/Scan.h"

namespace ZroCommon::internal {
namespace {

constexpr auto kEventNames = std::to_array({
    u"START_DOCUMENT",
    u"END_DOCUMENT",
    u"START_TAG",
    u"END_TAG",
    u"TEXT",
    u"CDSECT",
    u"ENTITY_REF",
    u"IGNORABLE_WHITESPACE",
    u"PROCESSING_INSTRUCTION",
    u"COMMENT",
    u"DOCDECL",
});

constexpr const char16_t* kSource = u"ZroCommon::XmlParserImpl";

}  // namespace

ParserState::ParserState() : namespaces(new NamespaceManager) {
    reader.onWindowLeft = [this] {
        keepEvent();
    };
}

void ParserState::reset() {
    event = ZRXmlParser::START_DOCUMENT;
    lookahead = Lookahead::None;
    docTypeSeen = false;
    rootSeen = false;
    text.shrink();
    textStart = 0;
    plainText = {};
    entityName = ZRName();
    attributes.shrink();
    reader.reset();
    entities.reset();
    namespaces->reset();
}

void ParserState::rest() {
    reset();
    reader.shrink();
    reader.limits = {};
    entities.forgetAll();
    m_features = {};
    callback = nullptr;
    callbackData = nullptr;
    isBusy = false;
    namespaces->rest();
}

void ParserState::wake() {
    namespaces->wake();
    names.startRound();
}

void ParserState::keepEvent() {
    attributes.keepValues();
    text.append(plainText);
    plainText = {};
}

bool ParserState::feature(ZRXmlParser::Feature which) const {
    const auto index = static_cast<std::size_t>(which);
    return index < m_features.size() && m_features[index];
}

void ParserState::setFeature(ZRXmlParser::Feature which, bool on) {
    const auto index = static_cast<std::size_t>(which);
    if (index < m_features.size()) {
        m_features[index] = on;
    }
}

void ParserState::report(XmlError code, const UnicodeString& first, const UnicodeString& second) {
    if (isBusy) {
        return;  // a report made by the callback itself
    }
    UnicodeString message = messageOf(code, first, second);
    if (callback == nullptr) {
        throwError(code, message);
    }
    const Lookahead before = lookahead;
    lookahead = Lookahead::ForcedEnd;  // should the callback throw
    const BusyScope busy(*this);
    callback(ZRError(static_cast<unsigned short>(code), message, kSource), callbackData);
    lookahead = before;
}

void ParserState::reportCharacter(XmlError code, char32_t c) {
    report(code, UnicodeString(static_cast<UChar32>(c)));
}

void ParserState::fail(XmlError code, const UnicodeString& first) {
    throwError(code, messageOf(code, first, UnicodeString()));
}

void ParserState::throwError(XmlError code, UnicodeString message) {
    lookahead = Lookahead::ForcedEnd;
    const UnicodeString position = positionDescription();
    if (!position.isEmpty()) {
        message.append(u'\n').append(position);
    }
    throw ZRError(static_cast<unsigned short>(static_cast<unsigned>(code) & 0xF8FFU), message,
                  kSource);
}

UnicodeString ParserState::positionDescription() const {
    UnicodeString result(kEventNames[event]);
    const DecodedInput& input = reader.input();
    const UnicodeString& name = input.uri.isEmpty() ? input.baseUri : input.uri;
    if (!name.isEmpty()) {
        result.append(u", '", 3).append(name).append(u'\'');
    }
    if (reader.line() != -1) {
        appendNumber(result.append(u", Line ", 7), reader.line());
    }
    if (reader.column() != -1) {
        appendNumber(result.append(u", Col ", 6), reader.column());
    }
    return result.append(u'.');
}

bool ParserState::expect(char32_t wanted) {
    const char32_t c = reader.get();
    if (c != wanted) {
        reportCharacter(XmlError::UnexpectedCharacter, c);
    }
    return c == wanted;
}

Lookahead ParserState::findType() {
    const char32_t c = reader.get();
    if (c == u'<') {
        return markupType();
    }
    if (c == u'&') {
        return Lookahead::Reference;
    }
    if (c != CharReader::kEnd) {
        reader.pushBack(c);
        return Lookahead::Text;
    }
    if (reader.hasFailed()) {
        return Lookahead::End;
    }
    report(XmlError::InvalidCharacter);  // the document itself holds a U+FFFF
    return Lookahead::Reference;
}

// Behind "<".
Lookahead ParserState::markupType() {
    const char32_t next = reader.get();
    switch (next) {
    case u'!': return Lookahead::Declaration;
    case u'/': return Lookahead::EndTag;
    case u'?': return Lookahead::Instruction;
    default: reader.pushBack(next); return Lookahead::StartTag;
    }
}

const UnicodeString* ParserState::generalEntity(ZRName name) const {
    if (const UnicodeString* value = entities.value(EntityTable::Kind::General, name)) {
        return value;
    }
    const bool isEmpty = entities.systemId(EntityTable::Kind::General, name) != nullptr
                         || feature(ZRXmlParser::FEATURE_EMPTY_UNDEFINED_ENTITY);
    return isEmpty ? &ZREmptyString::EMPTY_VALUE : nullptr;
}

UnicodeString qualifiedName(ZRName prefix, ZRName local) {
    UnicodeString name;
    if (!prefix.isEmpty()) {
        name.append(prefix.toString()).append(u':');
    }
    return name.append(local.toString());
}

}  // namespace ZroCommon::internal
