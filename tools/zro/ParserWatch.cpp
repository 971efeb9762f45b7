#include "tools/zro/ParserWatch.h"

#include <utility>

#include "tools/zro/Opening.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRError;
using ZroCommon::ZRXmlParser;

constexpr int kCannotOpen = 0x1003;
constexpr int kTextAtTopLevel = 0x180E;
constexpr int kUnknownEncoding = 0x1835;

[[noreturn]] void throwAgain(ZRError error) {
    error.setErrorCode(static_cast<unsigned short>(plainCode(error)));
    throw error;
}

}  // namespace

ParserWatch::ParserWatch(Session& session, const Input& input, ZRXmlParser& parser, int mostErrors)
    : m_session(session), m_input(input), m_parser(parser), m_mostErrors(mostErrors) {
    m_parser.setCallbackError(&ParserWatch::onError, this);
    m_parser.setLimits(session.settings().limits);
}

ParserWatch::~ParserWatch() {
    m_parser.setCallbackError(nullptr, nullptr);
}

void ParserWatch::setOpenElements(std::function<std::vector<OpenElement>()> openElements) {
    m_openElements = std::move(openElements);
}

void ParserWatch::open() {
    m_session.begin(m_input);
    if (m_input.isStandardInput()) {
        m_parser.setInput(m_session.standardInput(), UnicodeString(), m_input.baseUri());
    } else {
        m_parser.setInput(m_input.uri(), UnicodeString(), UnicodeString());
    }
}

void ParserWatch::onError(const ZRError& error, void* self) {
    auto& watch = *static_cast<ParserWatch*>(self);
    if (watch.m_isOver) {
        throwAgain(error);
    }
    const auto position =
        parsePosition(watch.m_parser.getPositionDescription()).value_or(Position());
    if (watch.isRepetition(error, position)) {
        return;
    }
    watch.add(error, position);
    if (watch.m_errorCount == watch.m_mostErrors || plainCode(error) == kUnknownEncoding) {
        watch.m_ended = true;
        watch.m_isOver = true;
        throwAgain(error);
    }
}

void ParserWatch::report(const ZRError& thrown) {
    if (std::exchange(m_isOver, true)) {
        return;
    }
    ZRError error = thrown;
    UnicodeString message = thrown.getRawMessage();
    auto position = takePosition(message);
    error.setRawMessage(message);
    if (!position) {  // of a resource; the parser stands where it is asked for
        position = parsePosition(m_parser.getPositionDescription());
    }
    add(error, position.value_or(Position()));
}

bool ParserWatch::requireRoot(bool hasRoot) {
    if (!hasRoot) {
        ++m_errorCount;
        m_session.fail(m_input.shownName(), "has no root element");
    }
    return hasRoot;
}

bool ParserWatch::isRepetition(const ZRError& error, const Position& position) {
    const Position last = std::exchange(m_lastPosition, position);
    const int lastCode = std::exchange(m_lastCode, plainCode(error));
    return lastCode == kTextAtTopLevel && m_lastCode == kTextAtTopLevel
           && last.name == position.name && last.line == position.line;
}

void ParserWatch::add(const ZRError& error, const Position& position) {
    ++m_errorCount;
    Diagnostic diagnostic;
    diagnostic.code = plainCode(error);
    diagnostic.message = printable(error.getRawMessage()) + reason(error);
    diagnostic.source = toUtf8(error.getSource());
    diagnostic.file = shownName(position.name);
    diagnostic.line = position.line;
    diagnostic.column = position.column;
    const SourceText* source = sourceOf(position.name, {position.line, position.column});
    if (source != nullptr) {
        diagnostic.excerpt = placeOf(error, *source);
    }
    const auto open = m_openElements ? m_openElements() : std::vector<OpenElement>();
    diagnostic.hint = adviceOn(error, open, source);
    m_session.report(diagnostic);
}

// A parser of a stream tells the base instead of a name.
bool ParserWatch::isDocument(const UnicodeString& name) const {
    return name.isEmpty() || name == m_input.uri()
           || (m_input.isStandardInput() && name == m_input.baseUri());
}

std::string ParserWatch::shownName(const UnicodeString& name) const {
    return isDocument(name) ? m_input.shownName() : shownPath(name);
}

SourceText* ParserWatch::sourceOf(const UnicodeString& name, ReadPosition position) {
    if (position.line <= 0) {
        return nullptr;
    }
    const bool isOpen = m_source && m_sourceName == name && !m_input.isStandardInput();
    if (isOpen && m_source->moveTo(position)) {
        return m_source.get();
    }
    auto stream = reopen(name);
    if (!stream) {
        return nullptr;
    }
    m_source = std::make_unique<SourceText>(std::move(stream));
    m_sourceName = name;
    return m_source->moveTo(position) ? m_source.get() : nullptr;
}

// Only what can be read twice: no pipes, nothing from the network.
std::unique_ptr<std::istream> ParserWatch::reopen(const UnicodeString& name) const {
    return isDocument(name) ? m_session.reopen(m_input) : m_session.reopen(name);
}

// What the message leaves open.
std::string ParserWatch::reason(const ZRError& error) {
    if (plainCode(error) != kCannotOpen) {
        return {};
    }
    const UnicodeString& message = error.getRawMessage();
    const UnicodeString name(message, message.indexOf(u": ") + 2);
    const UnicodeString fromLibrary =
        isDocument(name) ? m_session.failure() : m_session.takeFailure(name);
    return ": " + reasonNotOpened(m_session, name, fromLibrary);
}

}  // namespace zro
