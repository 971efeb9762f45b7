#pragma once

#include <functional>
#include <vector>

#include "zro/dom/ZRDocument.h"
#include "zro/foundation/ZRPtr.h"

#include "tools/zro/ParserWatch.h"
#include "tools/zro/Session.h"

namespace zro {

/// A document of the library whose errors are reported.
class DocumentReader {
public:
    DocumentReader(Session& session, const Input& input);

    ZroCommon::ZRDocument& document() { return *m_document; }

    /// Loads the document, at once or, in its pull mode, when it is walked.
    /// \throws ZRError
    void load();

    /// Runs what may throw a `ZRError` of the document, and reports the first of these. Nothing
    /// more is loaded then. \return whether there was none
    bool attempt(const std::function<void()>& work);

    /// Reports that a document without an element is none. \return `hasRoot`
    bool requireRoot(bool hasRoot) { return m_watch.requireRoot(hasRoot); }

private:
    std::vector<OpenElement> openElements() const;

    Session& m_session;
    const Input& m_input;
    ZroCommon::ZRPtr<ZroCommon::ZRDocument> m_document;
    ParserWatch m_watch;
};

/// Writes the document to a path or URI, or to the session's output for "-". Failures are reported.
/// \param encoding, docType  as for `ZRDocument::save`
/// \return whether it was written
bool saveDocument(Session& session, ZroCommon::ZRDocument& document, const std::string& output,
                  const std::string& encoding, const std::string& docType);

}  // namespace zro
