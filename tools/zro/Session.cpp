#include "tools/zro/Session.h"

#include <iostream>
#include <sstream>
#include <unistd.h>

#include "tools/zro/Text.h"

namespace zro {

Session::Session(const Settings& settings)
    : m_settings(settings),
      m_outStyle(settings.color, STDOUT_FILENO),
      m_errorStyle(settings.color, STDERR_FILENO),
      m_gate(settings.external),
      m_standardInput([this](std::uint64_t bytes) { countBytes(bytes); }) {}

void Session::begin(const Input& input) {
    m_bytesRead = 0;
    m_progress.start(input.shownName(), input.size());
    if (input.isStandardInput()) {
        m_gate.expectNoDocument();
    } else {
        m_gate.expectDocument([this](std::uint64_t bytes) { countBytes(bytes); });
    }
}

void Session::countBytes(std::uint64_t bytes) {
    m_bytesRead = bytes;
    m_progress.advanceTo(bytes);
}

std::unique_ptr<std::istream> Session::reopen(const Input& input) {
    if (!input.isStandardInput()) {
        return reopen(input.uri());
    }
    const StandardInput& source = m_standardInput.buffer();
    return source.isAllKept() ? std::make_unique<std::istringstream>(source.kept()) : nullptr;
}

std::unique_ptr<std::istream> Session::reopen(const UnicodeString& uri) {
    if (!isReadableAgain(uri)) {
        return nullptr;
    }
    return m_gate.openFreely(ZroCommon::ZRUri(uri, ZroCommon::URISTR_PATH_OR_URI_CSS));
}

void Session::report(const Diagnostic& diagnostic) {
    m_progress.clear();
    m_out.flush();  // results that came first are seen first
    std::cerr << (m_settings.json ? asJson(diagnostic) : asText(diagnostic, m_errorStyle));
    if (diagnostic.kind == Diagnostic::Kind::Error) {
        m_status = kErrors;
    }
}

void Session::end(const Input& input) {
    m_progress.clear();
    m_gate.expectNoDocument();
    for (const UnicodeString& uri : m_gate.takeDenied()) {
        Diagnostic note;
        note.kind = Diagnostic::Kind::Note;
        note.file = input.shownName();
        note.message = "not fetched, reads as empty: " + printable(uri);
        note.hint = m_settings.external == External::None
                        ? "--no-external keeps documents from bringing in anything"
                        : "--allow-remote lets documents fetch more than local files";
        report(note);
    }
}

}  // namespace zro
