#pragma once

#include <atomic>
#include <iosfwd>
#include <memory>

#include "zro/dom/ZRElement.h"
#include "zro/dom/ZRNode.h"
#include "zro/foundation/ZRLock.h"
#include "zro/xml/ZRXmlParser.h"
#include "zro/xml/ZRXmlSerializer.h"

namespace ZroCommon {

class ZRDocumentFragment;
class ZRPINode;
class ZRTextNode;

namespace internal {
class TextInput;
}

/// The root of a tree, the factory of its nodes, and its way from and to XML.
///
/// Loading either builds the whole tree at once or, in pull mode, one node per demand: `load` then
/// returns at once, and the accessors of the nodes read on as far as they have to. The document
/// holds the node that was loaded last until the next one is. Ask for what follows a node before
/// you remove it: what is read into a removed node is not in the tree, and loading ends with it.
///
/// The document has to outlive the use of its nodes. It is no other node's child, and no document
/// can be put into a tree.
///
/// Errors of the parser pass through whatever caused the load, and leave the tree as far as it was
/// built.
class ZRO_API ZRDocument : public ZRNode {
public:
    ZRDocument();
    ~ZRDocument() override;

    static unsigned int getStaticTypeID() { return 0xF6B431AFU; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;
    ZRName getLocalName() const override { return ZRN_hash_document; }
    ZRNodeType getNodeType() const override { return ZRNodeTypeDocument; }

    /// The first child that is an element, or null: a document of blanks and comments has none.
    /// Loads until there is one.
    virtual ZRElement* getDocumentElement();

    // New nodes belong to this document and have no parent.

    /// An element whose namespace follows the `xmlns` attributes in scope.
    virtual ZRPtr<ZRElement> createElement(ZRName name);
    virtual ZRPtr<ZRElement> createElementNS(ZRName namespaceUri, ZRName prefix, ZRName name);
    virtual ZRPtr<ZRElement> createElementNS(ZRName namespaceUri, ZRName qualifiedName);
    virtual ZRPtr<ZRTextNode> createTextNode(const UnicodeString& data);
    /// \param data  target, one white space character, and the rest
    virtual ZRPtr<ZRPINode> createProcessingInstruction(const UnicodeString& data);
    virtual ZRPtr<ZRDocumentFragment> createDocumentFragment();
    virtual ZRPtr<ZRAttr> createAttribute(ZRName name);
    virtual ZRPtr<ZRAttr> createAttributeNS(ZRName namespaceUri, ZRName prefix, ZRName name);
    /// The prefixes "xmlns" and "xml" bring their own namespace.
    virtual ZRPtr<ZRAttr> createAttributeNS(ZRName namespaceUri, ZRName qualifiedName);
    /// What loading makes of a run of text. A derived document may make another node, or none.
    /// \param parent  where it will be appended
    virtual ZRPtr<ZRNode> createTextNodeElement(const UnicodeString& text, ZRNode* parent);

    /// What relative references resolve against; the document's own URI unless one was set.
    /// Entities and DTDs are found beside the document only when that is absolute.
    const UnicodeString& getBaseUri() const;
    void setBaseUri(const UnicodeString& baseUri) { m_baseUri = baseUri; }
    bool isBaseUriSpecified() const { return !m_baseUri.isEmpty(); }
    /// Where the document was loaded from; the base URI when it came from a stream.
    const UnicodeString& getDocumentUri() const;

    /// Replaces the parser and forgets the document's URI. Null makes a new one when needed.
    /// A parser of the host's own class that was given to `loadXml` must be given another input
    /// before it is used without this document, whose text it still reads from.
    void setParser(ZRXmlParser* parser);
    void setSerializer(ZRXmlSerializer* serializer);
    /// Made when first asked for.
    ZRXmlParser* getParser();
    ZRXmlSerializer* getSerializer();

    /// Whether `load` leaves the tree to be built on demand. Off in a new document.
    void setPullMode(bool pullMode) { m_pullMode = pullMode; }
    bool getPullMode() const { return m_pullMode; }
    /// The node loaded last, null when there is nothing more to load.
    ZRNode* getLastLoadingNode() const { return m_isAborted ? nullptr : m_lastLoadingNode; }

    /// Loads a document in place of a node's children.
    /// \param node  null for this document itself, whose URI then changes
    /// \throws ZRError  of the parser; 0x080B when called while a node is being loaded
    void load(const UnicodeString& uri, ZRNode* node = nullptr);
    /// The same from a stream, which has to live as long as there is something to load.
    void load(std::istream& stream, ZRNode* node = nullptr);
    /// Loads from an attached parser that has its input already.
    void load();
    /// Loads from a text, whole even in pull mode.
    void loadXml(const UnicodeString& text, ZRNode* node = nullptr);

    /// Loads one node. Called by the nodes' accessors, under a lock of the document.
    /// \return the new node, null when there is nothing more
    /// \throws ZRError  of the parser; 0x080B when called from within itself, by a derived class
    ///                  that navigates while it makes or appends a node
    ZRNode* loadNextNode();
    /// Ends loading, also from another thread than the one that loads, which then adds one node
    /// more at most. The tree stays as it is; open nodes still say that they are loading.
    void abort();

    /// Writes a document with only the start tag of the root, to be followed by its children one by
    /// one and `closeDocumentElement`.
    void saveDocumentElement(const UnicodeString& uri);
    void saveDocumentElement(std::ostream& stream);
    void saveChildElement(ZRNode* node);
    void closeDocumentElement();

    /// Writes a node and what is below it as a document.
    /// \param node      null for this document
    /// \param encoding  "Shift_JIS", else UTF-8
    /// \param docType   what stands between "<!DOCTYPE" and ">"; empty for none
    ///
    /// A compound value of an attribute is written as one attribute a member, "name.member"; the
    /// member without a name goes out under the attribute's own. Empty values are left out.
    /// \throws ZRError  of the serializer, which is detached then; 0x0812 for an attribute, as the
    ///                  node itself or among the children
    void save(const UnicodeString& uri, ZRNode* node, const UnicodeString& encoding,
              const UnicodeString& docType);
    void save(std::ostream& stream, ZRNode* node, const UnicodeString& encoding,
              const UnicodeString& docType);
    void save(const UnicodeString& uri, ZRNode* node, const UnicodeString& encoding);
    void save(std::ostream& stream, ZRNode* node, const UnicodeString& encoding);
    void save(const UnicodeString& uri, ZRNode* node = nullptr);
    void save(std::ostream& stream, ZRNode* node = nullptr);
    void save(const UnicodeString& encoding, const UnicodeString& docType, std::ostream& stream,
              ZRNode* node = nullptr);

    /// The same as a text. A node other than the document is written without an XML declaration.
    UnicodeString saveXml(ZRNode* node = nullptr);

private:
    class Builder;

    bool isSelf(const ZRNode* node) const { return node == nullptr || node == this; }
    void requireNotLoading() const;
    void beginLoad();
    void doLoad(ZRNode* node, bool pull);
    void loadAll();
    void setLastLoadingNode(ZRNode* node);

    template <class Operation>
    void detachingOnError(Operation operation);
    void saveTo(ZRNode* node, const UnicodeString& docType);
    void startDocumentElement();

    ZRPtr<ZRXmlParser> m_parser;
    ZRPtr<ZRXmlSerializer> m_serializer;
    UnicodeString m_baseUri;
    UnicodeString m_documentUri;
    std::shared_ptr<internal::TextInput> m_textInput;  // of `loadXml`; the parser may still know it
    ZRNode* m_lastLoadingNode = nullptr;
    ZRPtr<ZRNode> m_lastLoadingHold;  // the same node, unless it is this document
    int m_skipDepth = 0;  // depth of the rejected element that is being skipped, 0 for none
    bool m_pullMode = false;
    bool m_isLoadingNode = false;
    std::atomic<bool> m_isAborted{false};
    ZRLock m_loadLock;
};

}  // namespace ZroCommon
