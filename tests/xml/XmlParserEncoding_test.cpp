#include <algorithm>
#include <memory>
#include <sstream>
#include <string_view>

#include "tests/support/XmlEvents.h"
#include "zro/streams/transcoding/ZRTCVStream.h"
#include "zro/xml/internal/Transcoder.h"

namespace ZroCommon::testing {
namespace {

using namespace std::string_view_literals;

// "name, events"
std::string encodingAndEvents(std::string_view document, const XmlReading& reading = {}) {
    std::istringstream stream{std::string(document)};
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    XmlEventLog log(*parser, reading);
    parser->setInput(stream, reading.encoding, u"");
    const std::string events = log.read();
    return utf8(parser->getInputEncoding()) + ", " + events;
}

// ASCII as units of two bytes.
std::string wide(std::string_view text, bool bigEndian) {
    std::string bytes;
    for (const char c : text) {
        bytes += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return bytes;
}

std::string declared(std::string_view name) {
    return "<?xml version='1.0' encoding='" + std::string(name) + "'?>";
}

TEST(XmlParserEncoding, TheDeclarationCountsWhereTheBytesLeaveAChoice) {
    const std::string utf16 = declared("UTF-16") + "<a/>";
    const std::string utf8 = declared("UTF-8") + "<a/>";
    const auto plain = [](const std::string& document) {
        return encodingAndEvents(document);
    };
    expectRows<std::string, const char*>(
        plain,
        {
            {"<a>\xC3\xA9</a>", "UTF-8, <a>  '\xC3\xA9'  </a>  ."},
            {declared("ISO-8859-1") + "<a>\xE9</a>", "ISO-8859-1, <a>  '\xC3\xA9'  </a>  ."},
            {declared(" latin1 ") + "<a>\xE9</a>", "latin1, <a>  '\xC3\xA9'  </a>  ."},
            {declared("US-ASCII") + "<a>\xE9</a>", "US-ASCII, <a>  '\xC3\xA9'  </a>  ."},
            {declared("") + "<a/>", ", <a/>  </a>  ."},
            {"\xEF\xBB\xBF" + declared("utf-8") + "<a/>", "utf-8, <a/>  </a>  ."},
            {"\xEF\xBB\xBF" + declared("ISO-8859-1") + "<a/>",
             "ISO-8859-1, throws 6201 Conflict encoding: ISO-8859-1. @START_DOCUMENT 1:41"},
            {"\xFF\xFE" + wide(utf8, false),
             "UTF-8, throws 6201 Conflict encoding: UTF-8. @START_DOCUMENT 1:35"},
            {"\xFF\xFE" + wide(utf16, false), "UTF-16, <a/>  </a>  ."},
            {"\xFE\xFF" + wide(declared("unicode") + "<a/>", true), "unicode, <a/>  </a>  ."},
            {wide(utf8, false), "UTF-16LE, <a/>  </a>  ."},
            {wide(utf16, false), "UTF-16, <a/>  </a>  ."},
            {wide(declared("UTF-32LE") + "<a/>", true), "UTF-16BE, <a/>  </a>  ."},
            // An order that is not known reads bytes.
            {declared("UTF-16") + "<a>\xE9</a>", "UTF-16, <a>  '\xC3\xA9'  </a>  ."},
        });
}

// On purpose: without "<" or a byte order mark at the very start bytes are characters.
TEST(XmlParserEncoding, ALeadingBlankKeepsBytesAsCharacters) {
    EXPECT_EQ(encodingAndEvents("\n<a>\xC3\xA9</a>"), ", <a>  '\xC3\x83\xC2\xA9'  </a>  .");
}

TEST(XmlParserEncoding, PresetsStandAgainstALessThanSignOnly) {
    EXPECT_EQ(encodingAndEvents("<a>\xE9</a>", {.encoding = u" Latin1"}),
              "Latin1, <a>  '\xC3\xA9'  </a>  .");
    EXPECT_EQ(encodingAndEvents("<a>\xC3\xA9</a>", {.encoding = u"UTF-16"}),
              "UTF-8, <a>  '\xC3\xA9'  </a>  .");
    EXPECT_EQ(encodingAndEvents("\xEF\xBB\xBF<a>\xC3\xA9</a>", {.encoding = u"Latin1"}),
              "UTF-8, <a>  '\xC3\xA9'  </a>  .");
    EXPECT_EQ(xmlEvents(wide("\n<a/>", false), {.encoding = u"UTF-16LE"}), "<a/>  </a>  .");
}

TEST(XmlParserEncoding, AFalseByteOrderMarkIsAnInvalidCharacter) {
    EXPECT_EQ(xmlEvents("\xEF\xBB\0<a/>"sv), "throws 6196 Invalid character. @START_DOCUMENT 1:0");
    EXPECT_EQ(xmlEvents("\xEF\xBB\0<a/>"sv, {.tolerant = true}),
              "[6196 Invalid character.]  <a/>  </a>  .");
}

TEST(XmlParserEncoding, UnknownEncodings) {
    const std::string document = declared(" klingon ") + "<a/>";
    const std::string error = "6197 Unknown or unsupported encoding: klingon.";
    const auto ignore = ZRXmlParser::FEATURE_IGNORE_UNKNOWN_ENCODING;
    EXPECT_EQ(encodingAndEvents(document), "klingon, throws " + error + " @START_DOCUMENT 1:39");
    EXPECT_EQ(encodingAndEvents(document, {.tolerant = true}),
              "klingon, [" + error + "]  <a/>  </a>  .");
    EXPECT_EQ(encodingAndEvents(document, {.features = {ignore}}), "klingon, <a/>  </a>  .");
    // The name as written, when nobody was asked for it.
    EXPECT_EQ(
        xmlEvents(document, {.features = {ZRXmlParser::FEATURE_BUILTIN_ENCODINGS_ONLY, ignore}}),
        "throws 6197 Unknown or unsupported encoding:  klingon . @START_DOCUMENT 1:39");
    EXPECT_EQ(xmlEvents("<a/>", {.encoding = u"klingon"}),
              "throws " + error + "\\nSTART_DOCUMENT.");
}

TEST(XmlParserEncoding, EncodingsOfTheConversionLibrary) {
    for (const auto& [name, bytes, text] : Rows<const char*, const char*, const char*>{
             {"Shift_JIS", "\x82\xA0\x87\x40", "あ①"},
             {" iso-2022-jp ", "\x1B$B$\"\x1B(B", "あ"},
             {"GBK", "\x81\x40", "丂"},
             {"KOI8-R", "\xF0\xD2", "Пр"},
             {"windows-1252", "\x80\xFF", "€ÿ"},
             {"Shift_JIS", "\x82", "\uFFFD"},  // and the "<" behind it is not lost
         }) {
        const std::string expected = "<a>  '" + std::string(text) + "'  </a>  .";
        EXPECT_EQ(xmlEvents(declared(name) + "<a>" + bytes + "</a>"), expected) << name;
        const FakeWeb web(FakeWeb::Resources{{"http://h/e", declared(name) + bytes}});
        EXPECT_EQ(xmlEvents("<!DOCTYPE a [<!ENTITY e SYSTEM 'http://h/e'>]><a>&e;</a>"), expected)
            << "in an entity: " << name;
    }
    std::istringstream bytes("<a>\xF0</a>");
    ZRTCVStream text(&bytes, "KOI8-R");
    EXPECT_EQ(xmlEvents(text), "<a>  'П'  </a>  .");
}

// What the document's own bytes mean in an encoding in which each letter is the next one.
std::unique_ptr<std::istream> openShifted(std::istream* bytes, const UnicodeString& name) {
    if (name != u"x-shifted") {
        return nullptr;
    }
    std::string units;
    for (int c = bytes == nullptr ? -1 : bytes->get(); c != -1; c = bytes->get()) {
        units += static_cast<char>(c >= 'a' && c < 'z' ? c + 1 : c);
        units += '\0';
    }
    return std::make_unique<std::istringstream>(units);
}

class WithTranscoder : public ::testing::Test {
protected:
    WithTranscoder() : m_before(internal::setTranscoderFactory(&openShifted)) {}
    ~WithTranscoder() override { internal::setTranscoderFactory(m_before); }

private:
    internal::TranscoderFactory m_before;
};

TEST_F(WithTranscoder, TakesOverBehindTheDeclaredName) {
    EXPECT_EQ(encodingAndEvents(declared("x-shifted") + "<a>\nbc</a>", {.positions = true}),
              "x-shifted, <b>@1:44  '\\ncd'@2:4  </b>@2:6  .@2:6");
    EXPECT_EQ(encodingAndEvents(wide(declared("x-shifted") + "<a/>", false)).substr(0, 11),
              "x-shifted, ");
    // What was read ahead, and what is still in the stream.
    const std::string text(100'000, 'm');
    const std::string events = xmlEvents(declared("x-shifted") + "<a>" + text + "</a>");
    EXPECT_EQ(std::count(events.begin(), events.end(), 'n'), 100'000);
}

// On purpose: a preset that needs a transcoder leaves no more than the mode of its output.
TEST_F(WithTranscoder, APresetOnlySetsTheModeOfItsOutput) {
    EXPECT_EQ(encodingAndEvents(wide("\n<a>b</a>", false), {.encoding = u"x-shifted"}),
              "x-shifted, <a>  'b'  </a>  .");
}

TEST_F(WithTranscoder, RewindingKeepsTheModeOfItsOutput) {
    const OwnParser parser(declared("x-shifted") + "<a/>");
    parser->next();
    parser->rewind();
    EXPECT_EQ(utf8(parser->getInputEncoding()), "x-shifted");
    EXPECT_THROW(parser->next(), ZRError);
}

}  // namespace
}  // namespace ZroCommon::testing
