// How trees are written.
#include "zro/dom/ZRDocument.h"

#include <limits>
#include <new>
#include <sstream>

#include "zro/dom/internal/TreeWriter.h"
#include "zro/foundation/ZRError.h"

namespace ZroCommon {

using internal::TreeWriter;

namespace {

UnicodeString textOf(std::string_view bytes) {
    UnicodeString text;
    if (bytes.size() <= static_cast<std::size_t>(std::numeric_limits<int32_t>::max())) {
        text = UnicodeString::fromUTF8(
            icu::StringPiece(bytes.data(), static_cast<int32_t>(bytes.size())));
    } else {
        text.setToBogus();
    }
    if (text.isBogus()) {
        std::bad_alloc tooLong;
        throw ZRError(tooLong, u"ZroCommon::ZRDocument::saveXml");
    }
    return text;
}

/// Makes a serializer let go of a stream that dies: others may hold the serializer, and use it.
void takeAway(std::ostream& stream, ZRXmlSerializer& serializer) {
    stream.clear();
    try {
        serializer.endDocument();
    } catch (...) {  // NOLINT(bugprone-empty-catch): the error before this one is told
    }
}

}  // namespace

void ZRDocument::saveTo(ZRNode* node, const UnicodeString& docType) {
    const ZRPtr<ZRXmlSerializer> serializer(getSerializer());
    serializer->startDocument(UnicodeString(), UnicodeString());
    if (!docType.isEmpty()) {
        serializer->docdecl(docType);
    }
    TreeWriter(*serializer).write(node != nullptr ? node : this);
    serializer->endDocument();
}

/// Runs an operation on the serializer, which is detached when it fails, so that the next save
/// starts with a new one.
template <class Operation>
void ZRDocument::detachingOnError(Operation operation) {
    try {
        operation();
    } catch (...) {
        setSerializer(nullptr);
        throw;
    }
}

void ZRDocument::save(const UnicodeString& uri, ZRNode* node, const UnicodeString& encoding,
                      const UnicodeString& docType) {
    detachingOnError([&] {
        getSerializer()->setOutput(uri, encoding);
        saveTo(node, docType);
    });
}

void ZRDocument::save(std::ostream& stream, ZRNode* node, const UnicodeString& encoding,
                      const UnicodeString& docType) {
    detachingOnError([&] {
        getSerializer()->setOutput(stream, encoding);
        saveTo(node, docType);
    });
}

void ZRDocument::save(const UnicodeString& encoding, const UnicodeString& docType,
                      std::ostream& stream, ZRNode* node) {
    save(stream, node, encoding, docType);
}

void ZRDocument::save(const UnicodeString& uri, ZRNode* node, const UnicodeString& encoding) {
    save(uri, node, encoding, UnicodeString());
}

void ZRDocument::save(std::ostream& stream, ZRNode* node, const UnicodeString& encoding) {
    save(stream, node, encoding, UnicodeString());
}

void ZRDocument::save(const UnicodeString& uri, ZRNode* node) {
    save(uri, node, UnicodeString(), UnicodeString());
}

void ZRDocument::save(std::ostream& stream, ZRNode* node) {
    save(stream, node, UnicodeString(), UnicodeString());
}

UnicodeString ZRDocument::saveXml(ZRNode* node) {
    std::ostringstream bytes;
    detachingOnError([&] {
        const ZRPtr<ZRXmlSerializer> serializer(getSerializer());
        serializer->setOutput(bytes, u"UTF-8");
        try {
            if (isSelf(node)) {
                serializer->startDocument(UnicodeString(), UnicodeString());
            }
            TreeWriter(*serializer).write(node != nullptr ? node : this);
            serializer->endDocument();
        } catch (...) {
            takeAway(bytes, *serializer);
            throw;
        }
    });
    return textOf(bytes.view());
}

void ZRDocument::startDocumentElement() {
    getSerializer()->startDocument(UnicodeString(), UnicodeString());
    if (ZRElement* element = getDocumentElement()) {
        TreeWriter(*getSerializer()).writeStart(*element);
    }
}

void ZRDocument::saveDocumentElement(const UnicodeString& uri) {
    getSerializer()->setOutput(uri, UnicodeString());
    startDocumentElement();
}

void ZRDocument::saveDocumentElement(std::ostream& stream) {
    getSerializer()->setOutput(stream, UnicodeString());
    startDocumentElement();
}

void ZRDocument::saveChildElement(ZRNode* node) {
    TreeWriter(*getSerializer()).write(node);
}

void ZRDocument::closeDocumentElement() {
    const ZRElement* element = getDocumentElement();
    if (element != nullptr && !TreeWriter::isTextElement(*element)) {
        getSerializer()->endTag(element->getNamespaceUri(), element->getLocalName());
    }
    getSerializer()->endDocument();
}

}  // namespace ZroCommon
