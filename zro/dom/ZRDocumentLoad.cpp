// How parser events become nodes, all at once or one by one.
#include "zro/dom/ZRDocument.h"

#include <utility>
#include <vector>

#include "zro/dom/internal/PlainBuilder.h"
#include "zro/dom/internal/TextInput.h"
#include "zro/foundation/internal/Raise.h"
#include "zro/xml/internal/XmlParserImpl.h"

namespace ZroCommon {

using internal::ErrorSite;
using internal::LibraryError;
using internal::PlainBuilder;
using internal::throwLibraryError;

namespace {

/// Says that a node is being loaded, so that code which is called meanwhile cannot start again.
class LoadingMark {
public:
    explicit LoadingMark(bool& mark) : m_mark(mark) { mark = true; }
    LoadingMark(const LoadingMark&) = delete;
    LoadingMark& operator=(const LoadingMark&) = delete;
    ~LoadingMark() { m_mark = false; }

private:
    bool& m_mark;
};

}  // namespace

/// Builds nodes from what the parser reads, one at a time, for one call of `loadNextNode` or of
/// `load`.
class ZRDocument::Builder {
public:
    enum class Extent { OneNode, AllNodes };

    Builder(ZRDocument& document, Extent extent)
        : m_document(document), m_extent(extent), m_mark(document.m_isLoadingNode) {}
    Builder(const Builder&) = delete;
    Builder& operator=(const Builder&) = delete;
    ~Builder() { holdLastLoadingNode(); }

    /// \return the new node, null when there is nothing more to load
    ZRNode* buildNext();

private:
    void prepare();
    void setPoint(ZRNode* node);
    void findPoint();
    ZRXmlParser::EventType next();
    bool isSkipped(ZRXmlParser::EventType event);
    bool closeEnded(ZRXmlParser::EventType& event);
    void closePoint();
    ZRNode* addNodeOrStay(ZRXmlParser::EventType event);
    ZRNode* addNode(ZRXmlParser::EventType event);
    ZRNode* addElement();
    ZRNode* addText();
    ZRNode* addPlainElement();
    ZRNode* addPlainText();
    bool isPlainPoint() const;
    bool isOpenPoint() const;
    void noteLoaded(ZRNode* node, ZRPtr<ZRNode> hold);
    void holdLastLoadingNode();

    ZRDocument& m_document;
    const Extent m_extent;
    const LoadingMark m_mark;
    ZRPtr<ZRXmlParser> m_parser;
    internal::XmlParserImpl* m_plainParser = nullptr;  // the same, where the plain way can be gone
    std::vector<ZRPtr<ZRNode>> m_open;                 // of all nodes, plain elements that are open
    ZRNode* m_point = nullptr;                         // where nodes are added
    ZRPtr<ZRNode> m_hold;                              // the same, unless it is held elsewhere
    bool m_hasPoint = false;
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
    if (!pull) {
        loadAll();
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

/// What `loadNextNode` does, until there is nothing more to load.
void ZRDocument::loadAll() {
    Builder builder(*this, Builder::Extent::AllNodes);
    do {
        if (getLastLoadingNode() == nullptr) {
            setLastLoadingNode(nullptr);
            return;
        }
    } while (builder.buildNext() != nullptr);
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
    return Builder(*this, Builder::Extent::OneNode).buildNext();
}

/// The parser and the place may have been changed by what was called meanwhile.
void ZRDocument::Builder::prepare() {
    ZRXmlParser* parser = m_document.getParser();
    if (parser != m_parser.get()) {
        m_parser = parser;
        m_plainParser = PlainBuilder::parserFor(m_document, *parser);
    }
    if (!m_hasPoint) {
        findPoint();
    }
}

ZRNode* ZRDocument::Builder::buildNext() {
    prepare();
    while (!m_document.m_isAborted) {
        ZRXmlParser::EventType event = next();
        if (isSkipped(event)) {
            continue;
        }
        if (!closeEnded(event)) {
            m_document.setLastLoadingNode(nullptr);
            return nullptr;
        }
        if (ZRNode* node = addNodeOrStay(event)) {
            return node;
        }
    }
    return nullptr;
}

ZRXmlParser::EventType ZRDocument::Builder::next() {
    return m_plainParser != nullptr ? m_plainParser->next() : m_parser->next();
}

/// It is held, since what is called meanwhile may take it out of the tree.
void ZRDocument::Builder::setPoint(ZRNode* node) {
    m_point = node;
    m_hasPoint = true;
    // A document need not be counted at all.
    const bool isHeld =
        isOpenPoint() || node == m_document.m_lastLoadingHold.get() || node == &m_document;
    m_hold = ZRPtr<ZRNode>(isHeld ? nullptr : node);
}

void ZRDocument::Builder::findPoint() {
    ZRNode* last = m_document.m_lastLoadingNode;
    setPoint(last->isText() && !last->isLoading() ? last->getParentNode() : last);
}

bool ZRDocument::Builder::isSkipped(ZRXmlParser::EventType event) {
    int& skipDepth = m_document.m_skipDepth;
    if (skipDepth == 0) {
        return false;
    }
    if (event == ZRXmlParser::END_DOCUMENT) {
        skipDepth = 0;
        return false;
    }
    if (event == ZRXmlParser::END_TAG && m_parser->getDepth() == skipDepth) {
        skipDepth = 0;
    }
    return true;
}

/// Finishes the nodes whose end tags come next. \return false when there is nothing more to load
bool ZRDocument::Builder::closeEnded(ZRXmlParser::EventType& event) {
    const auto finish = [](ZRNode& node) {
        node.setFlag(kLoading, false);
        node.setFlag(kLoaded, true);
    };
    while (m_point != nullptr && event == ZRXmlParser::END_TAG) {
        finish(*m_point);
        closePoint();
        event = next();
    }
    if (m_point != nullptr && event == ZRXmlParser::END_DOCUMENT) {
        finish(*m_point);
        return false;
    }
    return m_point != nullptr;
}

void ZRDocument::Builder::closePoint() {
    const bool isPlain = isPlainPoint();
    ZRPtr<ZRNode> ended = std::move(m_hold);
    if (isOpenPoint()) {
        const bool isLast = m_point == m_document.m_lastLoadingNode;
        (isLast ? m_document.m_lastLoadingHold : ended) = std::move(m_open.back());
        m_open.pop_back();
    }
    setPoint(isPlain ? PlainBuilder::parentOf(*m_point) : m_point->getParentNodeUncomplemental());
}

/// What was made the plain way stays so.
bool ZRDocument::Builder::isPlainPoint() const {
    return m_plainParser != nullptr
           && (isOpenPoint() || PlainBuilder::isPlain(*m_point, m_document));
}

/// Whether the point is the plain element that was opened last.
bool ZRDocument::Builder::isOpenPoint() const {
    return !m_open.empty() && m_open.back().get() == m_point;
}

/// When a derived class throws, loading can go on where the node would have been.
ZRNode* ZRDocument::Builder::addNodeOrStay(ZRXmlParser::EventType event) {
    try {
        return addNode(event);
    } catch (...) {
        m_document.setLastLoadingNode(m_point);
        throw;
    }
}

ZRNode* ZRDocument::Builder::addNode(ZRXmlParser::EventType event) {
    switch (event) {
    case ZRXmlParser::START_TAG: return isPlainPoint() ? addPlainElement() : addElement();
    case ZRXmlParser::TEXT: return isPlainPoint() ? addPlainText() : addText();
    default: throwLibraryError(LibraryError::WrongState, ErrorSite::DocumentLoadNextNode);
    }
}

/// An element that is refused, or whose making throws, leaves the skip depth set, and so is dropped
/// with all that it contains.
ZRNode* ZRDocument::Builder::addElement() {
    const ZRXmlParser& parser = *m_parser;
    m_document.m_skipDepth = parser.getDepth();
    const ZRPtr<ZRElement> element =
        m_document.createElementNS(parser.getNamespace(), parser.getPrefix(), parser.getName());
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
    ZRNode* placed = m_point->appendChildEx(element);
    if (placed == nullptr || !placed->isA(ZRElement::getStaticTypeID())) {
        return nullptr;
    }
    m_document.m_skipDepth = 0;
    if (!m_document.m_isAborted) {
        placed->setFlag(kLoading, true);  // it need not be the element that was given
        m_document.setLastLoadingNode(placed);
    }
    m_hasPoint = false;
    return placed;
}

ZRNode* ZRDocument::Builder::addText() {
    ZRNode* node = m_point->appendChildText(m_parser->getText());
    if (node != nullptr && !m_document.m_isAborted) {
        m_document.setLastLoadingNode(node);
        m_hasPoint = false;
    }
    return node;
}

ZRNode* ZRDocument::Builder::addPlainElement() {
    m_document.m_skipDepth = m_plainParser->getDepth();
    const bool isOfMany = m_extent == Extent::AllNodes;
    if (isOfMany) {
        m_open.emplace_back();
    }
    ZRPtr<ZRNode> element = PlainBuilder::addElement(m_document, *m_point, *m_plainParser);
    ZRNode* added = element.get();
    if (isOfMany) {
        m_open.back().swap(element);
    }
    m_document.m_skipDepth = 0;
    noteLoaded(added, std::move(element));
    m_point = added;
    m_hold = nullptr;
    return added;
}

ZRNode* ZRDocument::Builder::addPlainText() {
    ZRPtr<ZRNode> text = PlainBuilder::addText(m_document, *m_point, *m_plainParser);
    ZRNode* added = text.get();
    if (m_point == m_document.m_lastLoadingHold.get()) {
        m_hold = std::move(m_document.m_lastLoadingHold);
    }
    noteLoaded(added, std::move(text));
    return added;
}

/// \param hold  a reference on it, null when it is held already
void ZRDocument::Builder::noteLoaded(ZRNode* node, ZRPtr<ZRNode> hold) {
    if (!m_document.m_isAborted) {
        m_document.m_lastLoadingNode = node;
        m_document.m_lastLoadingHold = std::move(hold);
    }
}

/// What this leaves to be loaded has to be there then.
void ZRDocument::Builder::holdLastLoadingNode() {
    ZRNode* last = m_document.m_lastLoadingNode;
    if (last != m_document.m_lastLoadingHold.get()) {
        m_document.setLastLoadingNode(last);
    }
}

}  // namespace ZroCommon
