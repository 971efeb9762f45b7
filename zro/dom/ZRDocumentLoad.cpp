// How parser events become nodes, all at once or one by one.
#include "zro/dom/ZRDocument.h"

#include "zro/dom/internal/TextInput.h"
#include "zro/foundation/internal/Raise.h"
#include "zro/xml/internal/XmlParserImpl.h"

namespace ZroCommon {

using internal::ErrorSite;
using internal::LibraryError;
using internal::throwLibraryError;

namespace {

/// Says that a node is being loaded, so that code which is called meanwhile cannot start again.
class LoadingMark {
public:
    explicit LoadingMark(bool& mark) : m_mark(mark) { m_mark = true; }
    LoadingMark(const LoadingMark&) = delete;
    LoadingMark& operator=(const LoadingMark&) = delete;
    ~LoadingMark() { m_mark = false; }

private:
    bool& m_mark;
};

}  // namespace

/// Where loading adds nodes. It is held, since what is called meanwhile may take it out of the
/// tree; a document is not, which need not be counted at all.
class ZRDocument::InsertionPoint {
public:
    InsertionPoint(const ZRDocument& document, ZRNode* node) : m_document(document) { set(node); }

    ZRNode* get() const { return m_node; }
    void set(ZRNode* node) {
        m_node = node;
        m_hold = ZRPtr<ZRNode>(node != &m_document ? node : nullptr);
    }

private:
    const ZRDocument& m_document;
    ZRNode* m_node = nullptr;
    ZRPtr<ZRNode> m_hold;
};

void ZRDocument::requireNotLoading() const {
    if (m_isLoadingNode) {
        throwLibraryError(LibraryError::WrongState, ErrorSite::DocumentLoadNextNode);
    }
}

/// What was aborted before is over; `abort` means this load from here on.
void ZRDocument::beginLoad() {
    requireNotLoading();
    if (m_isAborted.exchange(false)) {
        setLastLoadingNode(nullptr);
    }
}

void ZRDocument::load(const UnicodeString& uri, ZRNode* node) {
    const ZRMutex guard(m_loadLock);
    beginLoad();
    if (isSelf(node)) {
        m_documentUri = uri;
    }
    getParser()->setInput(uri, UnicodeString(), m_baseUri);
    m_textInput.reset();
    doLoad(node, m_pullMode);
}

void ZRDocument::load(std::istream& stream, ZRNode* node) {
    const ZRMutex guard(m_loadLock);
    beginLoad();
    if (isSelf(node)) {
        m_documentUri.remove();
    }
    getParser()->setInput(stream, UnicodeString(), m_baseUri);
    m_textInput.reset();
    doLoad(node, m_pullMode);
}

void ZRDocument::load() {
    const ZRMutex guard(m_loadLock);
    beginLoad();
    doLoad(nullptr, m_pullMode);
}

void ZRDocument::loadXml(const UnicodeString& text, ZRNode* node) {
    const ZRMutex guard(m_loadLock);
    beginLoad();
    if (isSelf(node)) {
        m_documentUri.remove();
    }
    auto input = std::make_shared<internal::TextInput>(text);
    getParser()->setInput(*input, u"UTF-16", m_baseUri);
    internal::keepStream(*getParser(), input);
    m_textInput.swap(input);
    // On purpose: the whole tree, pull mode or not.
    doLoad(node, false);
    m_textInput->drop();
}

void ZRDocument::doLoad(ZRNode* node, bool pull) {
    m_skipDepth = 0;
    ZRNode* target = node != nullptr ? node : this;
    setLastLoadingNode(target);
    target->setFlag(kLoading, true);
    target->removeAllChildNodes();
    while (!pull && loadNextNode() != nullptr) {
    }
}

/// Takes no lock, which the load to be ended may hold for long.
void ZRDocument::abort() {
    m_isAborted = true;
}

void ZRDocument::setLastLoadingNode(ZRNode* node) {
    m_lastLoadingNode = node;
    m_lastLoadingHold = ZRPtr<ZRNode>(node != this ? node : nullptr);
}

ZRNode* ZRDocument::loadNextNode() {
    const ZRMutex guard(m_loadLock);
    if (getLastLoadingNode() == nullptr) {
        if (!m_isLoadingNode) {
            setLastLoadingNode(nullptr);
        }
        return nullptr;
    }
    requireNotLoading();
    const LoadingMark mark(m_isLoadingNode);
    return buildNextNode();
}

ZRNode* ZRDocument::buildNextNode() {
    const ZRPtr<ZRXmlParser> parser(getParser());  // may be replaced meanwhile
    InsertionPoint point(*this, insertionPoint());
    while (!m_isAborted) {
        ZRXmlParser::EventType event = parser->next();
        if (isSkipped(*parser, event)) {
            continue;
        }
        if (!closeEnded(*parser, point, event)) {
            setLastLoadingNode(nullptr);
            return nullptr;
        }
        if (ZRNode* node = addNodeOrStay(*parser, *point.get(), event)) {
            return node;
        }
    }
    return nullptr;
}

ZRNode* ZRDocument::insertionPoint() const {
    ZRNode* last = m_lastLoadingNode;
    return last->isText() && !last->isLoading() ? last->getParentNode() : last;
}

bool ZRDocument::isSkipped(const ZRXmlParser& parser, ZRXmlParser::EventType event) {
    if (m_skipDepth == 0) {
        return false;
    }
    if (event == ZRXmlParser::END_DOCUMENT) {
        m_skipDepth = 0;
        return false;
    }
    if (event == ZRXmlParser::END_TAG && parser.getDepth() == m_skipDepth) {
        m_skipDepth = 0;
    }
    return true;
}

/// Finishes the nodes whose end tags come next. \return false when there is nothing more to load
bool ZRDocument::closeEnded(ZRXmlParser& parser, InsertionPoint& point,
                            ZRXmlParser::EventType& event) {
    const auto finish = [](ZRNode& node) {
        node.setFlag(kLoading, false);
        node.setFlag(kLoaded, true);
    };
    while (point.get() != nullptr && event == ZRXmlParser::END_TAG) {
        finish(*point.get());
        point.set(point.get()->getParentNodeUncomplemental());
        event = parser.next();
    }
    if (point.get() != nullptr && event == ZRXmlParser::END_DOCUMENT) {
        finish(*point.get());
        return false;
    }
    return point.get() != nullptr;
}

/// When a derived class throws, loading can go on where the node would have been.
ZRNode* ZRDocument::addNodeOrStay(const ZRXmlParser& parser, ZRNode& point,
                                  ZRXmlParser::EventType event) {
    try {
        return addNode(parser, point, event);
    } catch (...) {
        setLastLoadingNode(&point);
        throw;
    }
}

ZRNode* ZRDocument::addNode(const ZRXmlParser& parser, ZRNode& point,
                            ZRXmlParser::EventType event) {
    switch (event) {
    case ZRXmlParser::START_TAG: return addElement(parser, point);
    case ZRXmlParser::TEXT: return addText(parser, point);
    default: throwLibraryError(LibraryError::WrongState, ErrorSite::DocumentLoadNextNode);
    }
}

/// An element that is refused, or whose making throws, leaves the skip depth set, and so is dropped
/// with all that it contains.
ZRNode* ZRDocument::addElement(const ZRXmlParser& parser, ZRNode& point) {
    m_skipDepth = parser.getDepth();
    const ZRPtr<ZRElement> element =
        createElementNS(parser.getNamespace(), parser.getPrefix(), parser.getName());
    if (element.get() == nullptr) {
        return nullptr;
    }
    element->setFlag(kLoading, true);
    element->setSourceLineNumber(parser.getLineNumber());
    element->setSourceColumnNumber(parser.getColumnNumber());
    const int count = parser.getAttributeCount();
    for (int i = 0; i < count; ++i) {
        element->setAttributeEx(parser.getAttributeNamespace(i), parser.getAttributePrefix(i),
                                parser.getAttributeName(i), parser.getAttributeValue(i));
    }
    ZRNode* placed = point.appendChildEx(element);
    if (placed == nullptr || !placed->isA(ZRElement::getStaticTypeID())) {
        return nullptr;
    }
    m_skipDepth = 0;
    if (!m_isAborted) {
        placed->setFlag(kLoading, true);  // it need not be the element that was given
        setLastLoadingNode(placed);
    }
    return placed;
}

ZRNode* ZRDocument::addText(const ZRXmlParser& parser, ZRNode& point) {
    ZRNode* node = point.appendChildText(parser.getText());
    if (node != nullptr && !m_isAborted) {
        setLastLoadingNode(node);
    }
    return node;
}

}  // namespace ZroCommon
