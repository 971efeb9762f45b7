#include "tools/zro/Session.h"

#include <iostream>
#include <sstream>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "zro/foundation/ZRError.h"

#include "tools/zro/Opening.h"
#include "tools/zro/Text.h"

namespace zro {

Session::Session(const Settings& settings)
    : m_settings(settings),
      m_outStyle(settings.color, STDOUT_FILENO),
      m_errorStyle(settings.color, STDERR_FILENO),
      m_gate(settings.external),
      m_standardInput([this](std::uint64_t bytes) { countBytes(bytes); }) {}

void Session::startCount(const Input& input, std::uint64_t size) {
    m_bytesRead = 0;
    m_progress.start(input.shownName(), size);
}

void Session::begin(const Input& input) {
    startCount(input, input.size());
    if (input.isStandardInput()) {
        m_gate.expectNoDocument();
        if (const std::string failure = standardInputFailure(); !failure.empty()) {
            throw ZroCommon::ZRError(0, fromUtf8(failure));
        }
    } else {
        m_gate.expectDocument([this](std::uint64_t bytes) { countBytes(bytes); });
    }
}

std::unique_ptr<std::istream> Session::open(const Input& input) {
    m_gate.expectNoDocument();
    if (input.isStandardInput()) {
        startCount(input, 0);
        return standardInputFailure().empty()
                   ? std::make_unique<std::istream>(m_standardInput.rdbuf())
                   : nullptr;
    }
    auto source = openFreely(input.uri());
    if (source != nullptr) {
        source = counted(input, std::move(source));
        startCount(input, input.size());
    }
    return source;
}

std::unique_ptr<std::istream> Session::counted(const Input& input,
                                               std::unique_ptr<std::istream> stream) {
    startCount(input, 0);
    return std::make_unique<OwningStream<CountingBuffer>>(
        std::move(stream), [this](std::uint64_t bytes) { countBytes(bytes); });
}

std::unique_ptr<std::istream> Session::openFreely(const UnicodeString& uri) {
    return m_gate.openFreely(ZroCommon::ZRUri(uri, ZroCommon::URISTR_PATH_OR_URI_CSS));
}

void Session::countBytes(std::uint64_t bytes) {
    m_bytesRead = bytes;
    m_progress.advanceTo(bytes);
}

std::string Session::standardInputFailure() {
    StandardInput& source = m_standardInput.buffer();
    source.sgetc();
    return source.error() == 0
               ? ""
               : "cannot be read: " + std::generic_category().message(source.error());
}

std::unique_ptr<std::istream> Session::reopen(const Input& input) {
    if (!input.isStandardInput()) {
        return reopen(input.uri());
    }
    const StandardInput& source = m_standardInput.buffer();
    return source.isAllKept() ? std::make_unique<std::istringstream>(source.kept()) : nullptr;
}

std::unique_ptr<std::istream> Session::reopen(const UnicodeString& uri) {
    return isReadableAgain(uri) ? openFreely(uri) : nullptr;
}

void Session::report(const Diagnostic& diagnostic) {
    m_progress.clear();
    m_out.flush();  // results that came first are seen first
    std::cerr << (m_settings.json ? asJson(diagnostic) : asText(diagnostic, m_errorStyle));
    if (diagnostic.kind == Diagnostic::Kind::Error) {
        m_status = kErrors;
    }
}

void Session::fail(const std::string& file, const std::string& message, const std::string& hint) {
    Diagnostic diagnostic;
    diagnostic.file = file;
    diagnostic.message = message;
    diagnostic.hint = hint;
    report(diagnostic);
}

void Session::note(const std::string& file, const std::string& message, const std::string& hint) {
    Diagnostic diagnostic;
    diagnostic.kind = Diagnostic::Kind::Note;
    diagnostic.file = file;
    diagnostic.message = message;
    diagnostic.hint = hint;
    report(diagnostic);
}

void Session::end(const Input& input) {
    m_progress.clear();
    m_gate.expectNoDocument();
    for (const MissingResource& missing : m_gate.takeMissing()) {
        noteMissing(input, missing);
    }
}

void Session::noteMissing(const Input& input, const MissingResource& missing) {
    const std::string name = printable(missing.uri);
    if (!missing.isDenied || !isSchemeOpened(missing.uri)) {
        note(input.shownName(), "cannot be opened, reads as empty: " + name + ": "
                                    + reasonNotOpened(*this, missing.uri, missing.failure));
        return;
    }
    note(input.shownName(), "not fetched, reads as empty: " + name,
         m_settings.external == External::None
             ? "--no-external keeps documents from bringing in anything"
             : "--allow-remote lets documents fetch more than local files");
}

}  // namespace zro
