#pragma once

#include <iosfwd>

#include "zro/foundation/ZRRCObject.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

/// Writes XML as a row of calls that mirror a parser's events.
///
/// Made by `ZRXmlUtil::createXmlSerializer`, held by `ZRPtr`, used by one thread at a time. The
/// order is: `setOutput`, `startDocument`, perhaps `docdecl`, then tags, text and the rest, then
/// `endDocument`. Texts are escaped where they have to be; otherwise all is written as it is given,
/// so a comment with "--" in it goes out like that. Namespace declarations are written with the
/// start tag that needs them, behind its attributes.
///
/// Every operation that writes or makes a prefix tests the stream first: 0x1005 without one, 0x1007
/// when it has failed, so a failure shows at the next operation. `endDocument` tests once more,
/// behind its last flush. Wrong calls give the codes told below; after an error only `setOutput`
/// makes sense.
class ZRO_API ZRXmlSerializer : public ZRRCObject {
public:
    static unsigned int getStaticTypeID() { return 0xB2E73DE2U; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    /// Creates or empties a file. Ends what was written to before.
    /// \param uri       a path or a `file:` URI
    /// \param encoding  "UTF-8" or "Shift_JIS" in any case; everything else means UTF-8
    /// \throws ZRError  0x1003 when the file cannot be opened
    virtual void setOutput(const UnicodeString& uri, const UnicodeString& encoding) = 0;
    /// The same on a stream of the caller's, which has to live until `endDocument`, the next
    /// `setOutput` or the end of the serializer. Its exception mask is respected.
    virtual void setOutput(std::ostream& stream, const UnicodeString& encoding) = 0;

    /// Writes the XML declaration and the generator's comment.
    /// \param encoding    takes the place of the one given to `setOutput`, unless it is empty
    /// \param standalone  "yes", "no" or empty
    /// \throws ZRError  0x080C when it is not the first call behind `setOutput`
    virtual void startDocument(const UnicodeString& encoding, const UnicodeString& standalone) = 0;
    /// Ends all open elements, flushes, and lets go of the stream; a file is closed.
    /// \throws ZRError  0x1007 when the last bytes could not be written; the stream is gone by then
    virtual void endDocument() = 0;

    /// Declares a prefix on the start tag that comes next.
    virtual void setPrefix(ZRName prefix, ZRName namespaceUri) = 0;
    /// A prefix that means the namespace at this place, or the empty one.
    /// \param generate  when there is none and the namespace is not the default one, make a prefix
    ///                  and bind it in the innermost scope
    virtual ZRName getPrefix(ZRName namespaceUri, bool generate) = 0;

    /// Number of open elements.
    virtual int getDepth() const = 0;
    /// Namespace and local name of the innermost open element, or empty.
    virtual ZRName getNamespace() const = 0;
    virtual ZRName getName() const = 0;

    virtual void startTag(ZRName namespaceUri, ZRName prefix, ZRName localName) = 0;
    /// The same with a prefix that is found or made.
    virtual void startTag(ZRName namespaceUri, ZRName localName) = 0;
    /// Adds an attribute to the start tag; one that declares a namespace declares it.
    /// \throws ZRError  0x080D when the start tag is not open any more
    virtual void attribute(ZRName namespaceUri, ZRName prefix, ZRName localName,
                           const UnicodeString& value) = 0;
    /// The same with a prefix that is found or made.
    virtual void attribute(ZRName namespaceUri, ZRName localName, const UnicodeString& value) = 0;
    /// Ends the innermost element, as "<a/>" when it has no content.
    /// \throws ZRError  0x080E when none is open, 0x080F when the names differ
    virtual void endTag(ZRName namespaceUri, ZRName localName) = 0;

    /// Text with "&", "<" and ">" escaped. A line feed is written as it is.
    /// \param buffer         start and length count UTF-16 units in it
    virtual void text(const char16_t* buffer, int start, int length) = 0;
    virtual void text(const UnicodeString& text) = 0;
    /// The following write their text as it is, between the delimiters that go with it.
    virtual void cdsect(const UnicodeString& text) = 0;
    virtual void entityRef(const UnicodeString& name) = 0;
    /// \param text  target, blank and data
    virtual void processingInstruction(const UnicodeString& text) = 0;
    virtual void comment(const UnicodeString& text) = 0;
    /// \param text  what stands between "<!DOCTYPE" and ">"
    /// \throws ZRError  0x0810 when the document has begun already, or not yet
    virtual void docdecl(const UnicodeString& text) = 0;
    virtual void ignorableWhitespace(const UnicodeString& text) = 0;

    /// Closes an open start tag with ">" and flushes the stream.
    virtual void flush() = 0;

    /// The text of the comment that `startDocument` writes; empty for none.
    virtual void setGenerator(const UnicodeString& generator) = 0;

protected:
    ~ZRXmlSerializer() override;
};

}  // namespace ZroCommon
