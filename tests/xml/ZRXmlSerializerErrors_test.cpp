#include <algorithm>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <vector>

#include "tests/support/NamesStay.h"
#include "tests/support/Skips.h"
#include "tests/xml/SerializerCalls.h"

namespace ZroCommon::testing {
namespace {

using Serializer = ZRXmlSerializer;
using Calls = std::function<void()>;

TEST(ZRXmlSerializerErrors, RefusesWrongCalls) {
    const NamesStay names;
    const ZRName uri = name("urn:1");
    const ZRName p = name("p");
    const std::string place = " [ZroCommon::XmlSerializerImpl::";
    for (const auto& [calls, error] : Rows<Calls, std::string>{
             {[] { Writing().document().document(); },
              "0x080C SYSTEM ERROR: startDocument() must be called just after setOutput()." + place
                  + "startDocumen]"},
             {[] { Writing().start(ZRN_block).text(u"x").attribute(ZRN_id, u"x"); },
              "0x080D SYSTEM ERROR: attribute() must be called just after startTag()." + place
                  + "attributeSub]"},
             {[] { Writing().text(u"x").attribute(ZRN_ns_xmlns, ZRN_xmlns, ZRN_id, u"x"); },
              "0x080D SYSTEM ERROR: attribute() must be called just after startTag()." + place
                  + "attributeSub]"},
             {[] { Writing().end(ZRN_block); },
              "0x080E SYSTEM ERROR: Unexpected endTag()." + place + "endTagt]"},
             {[&] { Writing().call(&Serializer::setPrefix, p, uri).end(kNone); },
              "0x080E SYSTEM ERROR: Unexpected endTag()." + place + "endTagt]"},
             {[&] { Writing().start(uri, p, ZRN_block).end(uri, ZRN_flow); },
              "0x080F SYSTEM ERROR: End tag 'p:flow' does not match the start tag 'p:block'."
                  + place + "endTagt]"},
             {[&] { Writing().start(ZRN_block).end(uri, ZRN_block); },
              "0x080F SYSTEM ERROR: End tag '{urn:1}:block' does not match the start tag 'block'."
                  + place + "endTagt]"},
             {[] { Writing().call(&Serializer::docdecl, u"a"); },
              "0x0810 SYSTEM ERROR: Unexpected docdecl(). []"},
             {[] { Writing().document().start(ZRN_block).call(&Serializer::docdecl, u"a"); },
              "0x0810 SYSTEM ERROR: Unexpected docdecl(). []"},
         }) {
        EXPECT_EQ(errorOf(calls), error);
    }
}

TEST(ZRXmlSerializerErrors, WorksOnlyBetweenSetOutputAndEndDocument) {
    const std::string noStream =
        "0x1005 Output stream is not set. [ZroCommon::XmlSerializerImpl::checkStream]";
    const std::vector<std::function<void(ZRXmlSerializer&)>> operations = {
        [](auto& s) { s.startDocument(u"", u""); },
        [](auto& s) { s.endDocument(); },
        [](auto& s) { s.setPrefix(ZRN_fo, ZRN_ns_fo); },
        [](auto& s) { s.getPrefix(ZRN_ns_fo, true); },
        [](auto& s) { s.startTag(kNone, ZRN_block); },
        [](auto& s) { s.startTag(kNone, kNone, ZRN_block); },
        [](auto& s) { s.attribute(kNone, ZRN_id, u""); },
        [](auto& s) { s.attribute(kNone, kNone, ZRN_id, u""); },
        [](auto& s) { s.endTag(kNone, ZRN_block); },
        [](auto& s) { s.text(u""); },
        [](auto& s) { s.cdsect(u""); },
        [](auto& s) { s.entityRef(u""); },
        [](auto& s) { s.processingInstruction(u""); },
        [](auto& s) { s.comment(u""); },
        [](auto& s) { s.docdecl(u""); },
        [](auto& s) { s.ignorableWhitespace(u""); },
        [](auto& s) { s.flush(); },
    };
    int index = 0;
    for (const auto& operation : operations) {
        const ZRPtr<ZRXmlSerializer> fresh(new internal::XmlSerializerImpl);
        EXPECT_EQ(errorOf([&] { operation(*fresh); }), noStream) << "of a new one: " << index;
        Writing ended;
        ended->endDocument();
        EXPECT_EQ(errorOf([&] { operation(*ended); }), noStream) << "at the end: " << index;
        ++index;
    }
}

TEST(ZRXmlSerializerErrors, SaysWhichFileCannotBeOpened) {
    const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
    for (const auto& [uri, told] : Rows<const char*, const char*>{
             {"/no/such/directory/a.xml", "file:/no/such/directory/a.xml"},
             {"http://localhost/a.xml", "http://localhost/a.xml"},
             {"data:,a", "data:,a"},
         }) {
        EXPECT_EQ(errorOf([&, &name = uri] { serializer->setOutput(text(name), u""); }),
                  "0x1003 Cannot open file: " + std::string(told)
                      + " [ZroCommon::XmlSerializerImpl::setOutput]");
    }
}

// Takes so many bytes and no more.
class ShortBuf : public std::streambuf {
public:
    explicit ShortBuf(std::size_t room, bool throws) : m_room(room), m_throws(throws) {}
    const std::string& bytes() const { return m_bytes; }

protected:
    std::streamsize xsputn(const char* from, std::streamsize count) override {
        const auto taken = std::min(static_cast<std::size_t>(count), m_room - m_bytes.size());
        m_bytes.append(from, taken);
        if (static_cast<std::streamsize>(taken) < count && m_throws) {
            throw std::runtime_error("full");
        }
        return static_cast<std::streamsize>(taken);
    }
    int_type overflow(int_type /*byte*/) override { return traits_type::eof(); }

private:
    std::string m_bytes;
    std::size_t m_room;
    bool m_throws;
};

void writeSample(ZRXmlSerializer& s) {
    s.startDocument(u"UTF-8", u"");
    s.startTag(name("urn:1"), name("p"), ZRN_flow);
    s.attribute(kNone, ZRN_id, u"a&b");
    s.text(u"text \u3042");
    s.startTag(kNone, ZRN_block);
    s.endDocument();
}

TEST(ZRXmlSerializerErrors, AStreamThatFailsAtAnyByteEndsInAnError) {
    const Writing sample;
    writeSample(*sample);
    const std::string whole = sample;
    for (const bool throws : {false, true}) {
        for (std::size_t room = 0; room < whole.size(); ++room) {
            ShortBuf buffer(room, throws);
            std::ostream stream(&buffer);
            const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
            serializer->setGenerator({});
            serializer->setOutput(stream, u"");
            EXPECT_EQ(errorOf([&] { writeSample(*serializer); }),
                      "0x1007 Output stream error. [ZroCommon::XmlSerializerImpl::checkStream]")
                << "at byte " << room;
            EXPECT_EQ(buffer.bytes(), whole.substr(0, room));
        }
    }
}

TEST(ZRXmlSerializerErrors, AFailureShowsAtTheNextOperation) {
    ShortBuf buffer(3, false);
    std::ostream stream(&buffer);
    const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
    serializer->setOutput(stream, u"");
    EXPECT_EQ(errorOf([&] { serializer->text(u"abcd"); }), "nothing");
    EXPECT_TRUE(stream.bad());
    EXPECT_NE(errorOf([&] { serializer->text(u""); }), "nothing");
}

TEST(ZRXmlSerializerErrors, RespectsTheExceptionMaskOfTheStream) {
    ShortBuf buffer(3, false);
    std::ostream stream(&buffer);
    stream.exceptions(std::ios_base::badbit);
    const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
    serializer->setOutput(stream, u"");
    EXPECT_THROW(serializer->text(u"abcd"), std::ios_base::failure);
}

TEST(ZRXmlSerializerErrors, AFullDeviceIsNotTakenForSuccess) {
    if (!std::ofstream("/dev/full")) {
        GTEST_SKIP() << missing("the device /dev/full", "Linux has it");
    }
    for (const int32_t length : {10, 10000000}) {
        const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
        serializer->setOutput(u"/dev/full", u"");
        const auto save = [&] {
            serializer->startTag(kNone, ZRN_block);
            serializer->text(UnicodeString(length, u'a', length));
            serializer->endDocument();
        };
        EXPECT_EQ(errorOf(save),
                  "0x1007 Output stream error. [ZroCommon::XmlSerializerImpl::checkStream]")
            << length;
    }
}

TEST(ZRXmlSerializerErrors, ADestroyedStreamIsNotTouchedByADyingSerializer) {
    const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
    {
        std::ostringstream stream;
        serializer->setOutput(stream, u"");
        serializer->startTag(kNone, ZRN_block);
    }
}

}  // namespace
}  // namespace ZroCommon::testing
