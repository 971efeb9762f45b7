#include "zro/foundation/internal/Raise.h"

#include "tests/support/Test.h"

namespace ZroCommon::internal {
namespace {

using testing::errorOf;

// What stands between "SYSTEM ERROR: " and the place, with the arguments "a" and "b"; and without
// arguments where that is another text.
std::string libraryError(unsigned code) {
    const auto with = [code](const UnicodeString& name, const UnicodeString& second) {
        const auto error = static_cast<LibraryError>(code);
        const std::string whole =
            errorOf([&] { throwLibraryError(error, ErrorSite::SerializerDocdecl, name, second); });
        EXPECT_EQ(std::stoul(whole, nullptr, 16), code);
        EXPECT_EQ(whole.substr(6, 15), " SYSTEM ERROR: ");
        EXPECT_TRUE(whole.ends_with(" []"));
        return whole.substr(21, whole.size() - 24);
    };
    const std::string named = with(u"a", u"b");
    const std::string unnamed = with(u"", u"");
    return named == unnamed ? named : named + " / " + unnamed;
}

std::string ioError(unsigned code, unsigned site, const UnicodeString& name = u"x.tmp") {
    return errorOf(
        [&] { throwIOError(static_cast<IOError>(code), static_cast<ErrorSite>(site), name); });
}

TEST(Raise, ComposesTheTextsOfTheLibrary) {
    testing::expectRows<unsigned, const char*>(
        libraryError,
        {{0x0803, "a is null. / arg is null."},
         {0x0806, "aarg is created from a different document. / argarg is created from a different "
                  "document."},
         {0x0807, "a is not an ZRAttr object. / arg is not an ZRAttr object."},
         {0x0808, "a is an ZRAttr that is already an attribute of another ZRElement object. / "
                  "arg is an ZRAttr that is already an attribute of another ZRElement object."},
         {0x0809, "a is not a child of this node. / arg is not a child of this node."},
         {0x080B, "Cannot set a value on node type: a / Cannot set a value on node type."},
         {0x080C, "startDocument() must be called just after setOutput()."},
         {0x080D, "attribute() must be called just after startTag()."},
         {0x080E, "Unexpected endTag()."},
         {0x080F, "End tag 'a' does not match the start tag 'b'. / End tag '' does not match the "
                  "start tag ''."},
         {0x0810, "Unexpected docdecl()."},
         {0x0812, "Unsupported node type."},
         {0x0804, "ZRErrorCodeZROLIB"},
         {0x080A, "ZRErrorCodeZROLIB"},
         {0x0813, "ZRErrorCodeZROLIB"},
         {0x0801, "ZRErrorCodeZROLIB"},
         {0x1003, "ZRErrorCodeZROLIB"}});
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
    std::string places;
    for (unsigned site = 0; site < 29; ++site) {
        const std::string error = ioError(0x1006, site);
        const bool isNamed = error.starts_with("0x1006 Input stream error. [ZroCommon::");
        EXPECT_TRUE(isNamed || error == "0x1006 Input stream error. []") << error;
        places += isNamed ? error.substr(39) : "]";
    }
    EXPECT_EQ(places, "ZRDocument::loadNextNode]ZRDocument::doSave]AttrNodeMap::setNamedItem]"
                      "AttrNodeMap::setNamedItemNS]ZRElement::removeAttributeNode]"
                      "ZRNode::setNodeValue]ZRNode::insertBefore]ZRNode::replaceChild]"
                      "ZRNode::removeChild]ZRNode::appendChild]XmlParserImpl::checkStream]"
                      "XmlParserImpl::pushStream]XmlParserImpl::setInput]"
                      "XmlParserImpl::isWhitespace]XmlParserImpl::isEmptyElementTag]"
                      "XmlParserImpl::getAttributeNamespace]XmlParserImpl::getAttributeName]"
                      "XmlParserImpl::getAttributePrefix]XmlParserImpl::getAttributeValue]"
                      "XmlSerializerImpl::setOutput]XmlSerializerImpl::startDocumen]"
                      "XmlSerializerImpl::attributeSub]XmlSerializerImpl::endTagt]]"
                      "XmlSerializerImpl::checkStream]]ZRMemStream]ZRTempFile]]");
    EXPECT_EQ(ioError(0x1006, 255), "0x1006 Input stream error. []");
}

}  // namespace
}  // namespace ZroCommon::internal
