#include "tools/zro/DocumentReader.h"

#include <algorithm>

#include "tools/zro/Names.h"
#include "tools/zro/Opening.h"
#include "tools/zro/Text.h"

namespace zro {

using ZroCommon::ZRDocument;
using ZroCommon::ZRError;
using ZroCommon::ZRNode;

DocumentReader::DocumentReader(Session& session, const Input& input)
    : m_session(session),
      m_input(input),
      m_document(new ZRDocument),
      m_watch(session, input, *m_document->getParser(), 1) {
    m_watch.setOpenElements([this] { return openElements(); });
}

void DocumentReader::load() {
    m_session.begin(m_input);
    if (m_input.isStandardInput()) {
        m_document->setBaseUri(m_input.baseUri());
        m_document->load(m_session.standardInput());
    } else {
        m_document->load(m_input.uri());
    }
}

bool DocumentReader::attempt(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const ZRError& error) {
        m_watch.report(error);
        m_document->getParser()->closeStream();
        return false;
    }
}

std::vector<OpenElement> DocumentReader::openElements() const {
    std::vector<OpenElement> result;
    for (const ZRNode* node = m_document->getLastLoadingNode(); node != nullptr;
         node = node->getParentNodeFast()) {
        if (node->isElementNode() && node->isLoading()) {
            result.push_back({qualifiedName(node->getPrefix(), node->getLocalName()),
                              node->getSourceLineNumber()});
        }
    }
    std::reverse(result.begin(), result.end());
    return result;
}

bool saveDocument(Session& session, ZRDocument& document, const std::string& output,
                  const std::string& encoding, const std::string& docType) {
    const UnicodeString name = absoluteName(output);
    try {
        if (output == "-") {
            document.save(session.out(), nullptr, fromUtf8(encoding), fromUtf8(docType));
        } else {
            document.save(name, nullptr, fromUtf8(encoding), fromUtf8(docType));
        }
        return true;
    } catch (const ZRError& error) {
        if (output == "-" && session.isOutputLost()) {
            return false;  // told at the end, or not at all when the reader just went away
        }
        Diagnostic diagnostic;
        diagnostic.file = output;
        diagnostic.code = error.getErrorCode();
        diagnostic.message =
            printable(error.getRawMessage()) + ": " + reasonNotWritten(localPath(name));
        diagnostic.source = toUtf8(error.getSource());
        session.report(diagnostic);
        return false;
    }
}

}  // namespace zro
