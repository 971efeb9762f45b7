#pragma once

#include <iosfwd>

#include "zro/foundation/ZRRCObject.h"
#include "zro/vocabulary/ZRName.h"
#include "zro/xml/ZRLimits.h"

namespace ZroCommon {

class ZRError;

/// A pull parser of XML: ask for the next event, then read its data through the accessors.
///
/// Made by `ZRXmlUtil::createXmlParser`, held by `ZRPtr`, used by one thread at a time. Namespaces
/// are always processed and nothing is validated. The order is: features, error callback,
/// `setInput`, entity definitions, then `next` or `nextToken` until `END_DOCUMENT`.
///
/// Errors of the document are thrown as `ZRError` of the category `ZRErrorCodeXML`, or go to the
/// error callback, after which parsing continues. Wrong calls give 0x0804 and 0x080B, stream
/// failures 0x1003, 0x1004 and 0x1006; these are always thrown.
class ZRO_API ZRXmlParser : public ZRRCObject {
public:
    enum EventType {
        START_DOCUMENT = 0,          ///< before the first call
        END_DOCUMENT = 1,            ///< stays until the next `setInput`
        START_TAG = 2,               ///< also of an empty element, whose end tag follows
        END_TAG = 3,                 ///< the element's names can still be asked for
        TEXT = 4,                    ///< from `next`, all text up to the next tag
        CDSECT = 5,                  ///< `nextToken` only, as all that follow
        ENTITY_REF = 6,              ///< a reference in content, a character reference included
        IGNORABLE_WHITESPACE = 7,    ///< blanks outside of the root element
        PROCESSING_INSTRUCTION = 8,  ///< the text is "target data"
        COMMENT = 9,
        DOCDECL = 10,
    };

    /// Switches, all off in a new parser. They stay over `setInput`.
    enum Feature {
        /// Neither fetch the document type's external subset nor add the MathML entities by root.
        FEATURE_SKIP_EXTERNAL_SUBSET = 0,
        /// A reference to an undeclared entity is the empty text instead of an error.
        FEATURE_EMPTY_UNDEFINED_ENTITY = 1,
        /// An undeclared attribute prefix is its own namespace instead of an error.
        FEATURE_KEEP_UNDECLARED_ATTRIBUTE_PREFIX = 2,
        /// Go on without the external subset when it cannot be fetched or scanned.
        FEATURE_IGNORE_EXTERNAL_SUBSET_ERRORS = 3,
        /// Read on as if no encoding had been declared when no conversion exists for it.
        FEATURE_IGNORE_UNKNOWN_ENCODING = 4,
        /// Refuse encodings other than the UTF, ASCII and Latin-1 families without asking the
        /// conversion library.
        FEATURE_BUILTIN_ENCODINGS_ONLY = 5,
    };

    static unsigned int getStaticTypeID() { return 0x07416767U; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    /// Unknown features are ignored.
    virtual void setFeature(Feature feature, bool on) = 0;
    /// False for unknown features.
    virtual bool getFeature(Feature feature) const = 0;

    /// Hints for a parser that chooses by type: content type and file extension.
    virtual void setStreamType(const UnicodeString& contentType, const UnicodeString& extension);

    /// Sends document errors to `callback` instead of throwing them; null throws again. The error
    /// has its code, recoverable ones with bit 0x0400, and no position: ask the parser for that.
    /// The callback may throw to end the parse. It must not move the parser: `setInput`, `rewind`,
    /// `closeStream`, `next` and `nextToken` throw 0x080B meanwhile.
    virtual void setCallbackError(void (*callback)(const ZRError&, void*), void* userData);

    /// Opens a document.
    /// \param uri       a path or URI
    /// \param encoding  a preset for the detection, or empty
    /// \param baseUri   what relative references resolve against; empty takes it from `uri` if that
    ///                  is an absolute URI or path: a relative one has no base, and neither have
    ///                  the references in the document, which are opened from the working directory
    /// \throws ZRError  0x1003 when it cannot be opened, 0x1004 when it is empty
    virtual void setInput(const UnicodeString& uri, const UnicodeString& encoding,
                          const UnicodeString& baseUri) = 0;
    /// The same on a stream of the caller's, which has to live until the end of the parse. It is
    /// read through its buffer, in blocks once the encoding is known.
    virtual void setInput(std::istream& stream, const UnicodeString& encoding,
                          const UnicodeString& baseUri) = 0;
    /// Lets go of all inputs. What the parser knows of the current event stays.
    virtual void closeStream() = 0;
    /// Name of the encoding in use: as given, detected or declared.
    virtual UnicodeString getInputEncoding() const = 0;
    /// Sets or overwrites a general entity. `setInput` forgets it.
    virtual void defineEntityReplacementText(ZRName name, const UnicodeString& value) = 0;

    /// Number of namespace declarations recorded on the element at that depth alone; 0 outside of
    /// the open depths. Depth 0 has the two fixed bindings.
    virtual int getNamespaceCount(int depth) const = 0;
    /// Prefix of the index-th declaration of the current element, in ascending order of the
    /// prefixes' numbers; empty when out of range.
    virtual ZRName getNamespacePrefix(int index) const = 0;
    virtual ZRName getNamespaceUri(int index) const = 0;
    /// Namespace of the element at its start and end tag, else empty.
    virtual ZRName getNamespace() const = 0;
    /// The binding in force for a prefix, empty when there is none.
    virtual ZRName getNamespace(ZRName prefix) const = 0;

    /// Number of open elements; an element counts at its end tag too.
    virtual int getDepth() const = 0;
    /// "START_TAG, 'file.xml', Line 3, Col 7."
    virtual UnicodeString getPositionDescription() const = 0;
    /// From 1; -1 before the first event.
    virtual int getLineNumber() const = 0;
    /// Characters read on the line, look-ahead included; -1 before the first event.
    virtual int getColumnNumber() const = 0;

    /// Whether the text is blank. \throws ZRError 0x080B where there is no text.
    virtual bool isWhitespace() const = 0;
    /// Text of the event. At an entity reference its replacement text, bogus when undefined.
    virtual UnicodeString getText() const = 0;
    /// Local name at a start or end tag, entity name at a reference, else empty.
    virtual ZRName getName() const = 0;
    virtual ZRName getPrefix() const = 0;
    /// Whether the start tag was `<a/>`. \throws ZRError 0x080B at any other event.
    virtual bool isEmptyElementTag() const = 0;

    /// Attributes of the start tag, namespace declarations included; -1 at any other event. The
    /// accessors by index throw 0x0804 when out of range.
    virtual int getAttributeCount() const = 0;
    virtual ZRName getAttributeNamespace(int index) const = 0;
    virtual ZRName getAttributeName(int index) const = 0;
    virtual ZRName getAttributePrefix(int index) const = 0;
    /// The value of the first attribute of that local name whose prefix is bound to the namespace,
    /// the empty prefix included; bogus when there is none.
    virtual UnicodeString getAttributeValue(ZRName namespaceUri, ZRName name) const = 0;
    virtual UnicodeString getAttributeValue(int index) const = 0;

    virtual EventType getEventType() const = 0;
    /// The next tag, merged text or end of document.
    virtual EventType next() = 0;
    /// The next token of any kind, with text in pieces and references unresolved.
    virtual EventType nextToken() = 0;

    /// The base of relative references, which changes inside an external entity.
    virtual UnicodeString getBaseUri() const;
    /// Defines the MathML 2 entities that are not yet defined otherwise.
    virtual void addMathMLEntityMap();
    /// Starts again at the beginning of the caller's stream. \throws ZRError when there is none.
    virtual void rewind();

    /// Guards for documents from strangers; none in a new parser.
    virtual void setLimits(const ZRLimits& limits);

    /// The MathML 2 value of an entity name, empty for others. Lives as long as the process.
    static const UnicodeString& getMathMLEntity(ZRName name);

protected:
    ~ZRXmlParser() override;
};

}  // namespace ZroCommon
