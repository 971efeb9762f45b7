#include "zro/foundation/internal/Raise.h"

#include "tests/support/Test.h"

namespace ZroCommon::internal {
namespace {

using testing::errorOf;

std::string libraryError(unsigned code, const UnicodeString& name, const UnicodeString& second) {
    return errorOf([&] {
        throwLibraryError(static_cast<LibraryError>(code), ErrorSite::SerializerDocdecl, name,
                          second);
    });
}

std::string ioError(unsigned code, unsigned site, const UnicodeString& name = u"x.tmp") {
    return errorOf(
        [&] { throwIOError(static_cast<IOError>(code), static_cast<ErrorSite>(site), name); });
}

TEST(Raise, ComposesTheTextsOfTheLibrary) {
    const std::string digits = "0123456789ABCDEF";
    for (const auto& [code, named, unnamed] : testing::Rows<unsigned, const char*, const char*>{
             {0x0803, "a is null.", "arg is null."},
             {0x0804, "ZRErrorCodeZROLIB", "ZRErrorCodeZROLIB"},
             {0x0805, "ZRErrorCodeZROLIB", "ZRErrorCodeZROLIB"},
             {0x0806, "aarg is created from a different document.",
              "argarg is created from a different document."},
             {0x0807, "a is not an ZRAttr object.", "arg is not an ZRAttr object."},
             {0x0808, "a is an ZRAttr that is already an attribute of another ZRElement object.",
              "arg is an ZRAttr that is already an attribute of another ZRElement object."},
             {0x0809, "a is not a child of this node.", "arg is not a child of this node."},
             {0x080A, "ZRErrorCodeZROLIB", "ZRErrorCodeZROLIB"},
             {0x080B, "Cannot set a value on node type: a", "Cannot set a value on node type."},
             {0x080C, "startDocument() must be called just after setOutput().",
              "startDocument() must be called just after setOutput()."},
             {0x080D, "attribute() must be called just after startTag().",
              "attribute() must be called just after startTag()."},
             {0x080E, "Unexpected endTag().", "Unexpected endTag()."},
             {0x080F, "End tag 'a' does not match the start tag 'b'.",
              "End tag '' does not match the start tag ''."},
             {0x0810, "Unexpected docdecl().", "Unexpected docdecl()."},
             {0x0811, "ZRErrorCodeZROLIB", "ZRErrorCodeZROLIB"},
             {0x0812, "Unsupported node type.", "Unsupported node type."},
             {0x0801, "ZRErrorCodeZROLIB", "ZRErrorCodeZROLIB"},
             {0x0813, "ZRErrorCodeZROLIB", "ZRErrorCodeZROLIB"},
             {0x1003, "ZRErrorCodeZROLIB", "ZRErrorCodeZROLIB"},
         }) {
        std::string start = "0x";
        for (const unsigned shift : {12U, 8U, 4U, 0U}) {
            start += digits[code >> shift & 15U];
        }
        start += " SYSTEM ERROR: ";
        EXPECT_EQ(libraryError(code, u"a", u"b"), start + named + " []");
        EXPECT_EQ(libraryError(code, u"", u""), start + unnamed + " []");
    }
}

TEST(Raise, ComposesTheTextsOfFilesAndStreams) {
    EXPECT_EQ(ioError(0x1003, 23), "0x1003 Cannot open file: x.tmp []");
    EXPECT_EQ(ioError(0x1003, 23, u""), "0x1003 Cannot open file:  []");
    EXPECT_EQ(ioError(0x1004, 23), "0x1004 Unexpected end of input stream. []");
    EXPECT_EQ(ioError(0x1005, 23), "0x1005 Output stream is not set. []");
    EXPECT_EQ(ioError(0x1006, 23), "0x1006 Input stream error. []");
    EXPECT_EQ(ioError(0x1007, 23), "0x1007 Output stream error. []");
    EXPECT_EQ(ioError(0x100D, 23), "0x100D Cannot remove temporary file: x.tmp []");
    EXPECT_EQ(ioError(0x100E, 23), "0x100E Cannot create temporary file: x.tmp []");
    EXPECT_EQ(ioError(0x1008, 23), "0x1008 ZRErrorCodeIO []");
    EXPECT_EQ(ioError(0x0803, 23), "0x0803 ZRErrorCodeIO []");
}

// On purpose: two places are misspelt, and two have no text.
TEST(Raise, NamesThePlace) {
    const char* const places[] = {
        "ZRDocument::loadNextNode",
        "ZRDocument::doSave",
        "AttrNodeMap::setNamedItem",
        "AttrNodeMap::setNamedItemNS",
        "ZRElement::removeAttributeNode",
        "ZRNode::setNodeValue",
        "ZRNode::insertBefore",
        "ZRNode::replaceChild",
        "ZRNode::removeChild",
        "ZRNode::appendChild",
        "XmlParserImpl::checkStream",
        "XmlParserImpl::pushStream",
        "XmlParserImpl::setInput",
        "XmlParserImpl::isWhitespace",
        "XmlParserImpl::isEmptyElementTag",
        "XmlParserImpl::getAttributeNamespace",
        "XmlParserImpl::getAttributeName",
        "XmlParserImpl::getAttributePrefix",
        "XmlParserImpl::getAttributeValue",
        "XmlSerializerImpl::setOutput",
        "XmlSerializerImpl::startDocumen",
        "XmlSerializerImpl::attributeSub",
        "XmlSerializerImpl::endTagt",
        "",
        "XmlSerializerImpl::checkStream",
        "",
        "ZRMemStream",
        "ZRTempFile",
        "",
    };
    for (unsigned site = 0; site < std::size(places); ++site) {
        const std::string place = *places[site] != '\0' ? "ZroCommon::" : "";
        EXPECT_EQ(ioError(0x1006, site),
                  "0x1006 Input stream error. [" + place + places[site] + "]")
            << "site " << site;
    }
    EXPECT_EQ(ioError(0x1006, 255), "0x1006 Input stream error. []");
}

TEST(Raise, ErrorsHaveNoPosition) {
    try {
        throwIOError(IOError::InputError, ErrorSite::MemStream);
    } catch (const ZRError& error) {
        EXPECT_EQ(error.getLineNumber(), -1);
        EXPECT_EQ(error.getColumnNumber(), -1);
        EXPECT_TRUE(error.getUri().isEmpty());
    }
}

}  // namespace
}  // namespace ZroCommon::internal
