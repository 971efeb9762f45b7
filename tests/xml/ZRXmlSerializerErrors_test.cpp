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

TEST(ZRXmlSerializerErrors, RefusesWrongCalls) {
    const NamesStay names;
    const ZRName uri = name("urn:1");
    const ZRName p = name("p");
    const std::string late = "0D attribute() must be called just after startTag(). attributeSub";
    for (const auto& [calls, error] : Rows<std::function<void()>, std::string>{
             {[] { Writing().document().document(); },
              "0C startDocument() must be called just after setOutput(). startDocumen"},
             {[] { Writing().start(ZRN_block).text(u"x").attribute(ZRN_id, u"x"); }, late},
             {[] { Writing().text(u"x").attribute(ZRN_ns_xmlns, ZRN_xmlns, ZRN_id, u"x"); }, late},
             {[] { Writing().end(ZRN_block); }, "0E Unexpected endTag(). endTagt"},
             {[&] { Writing().call(&Serializer::setPrefix, p, uri).end(kNone); },
              "0E Unexpected endTag(). endTagt"},
             {[&] { Writing().start(uri, p, ZRN_block).end(uri, ZRN_flow); },
              "0F End tag 'p:flow' does not match the start tag 'p:block'. endTagt"},
             {[&] { Writing().start(ZRN_block).end(uri, ZRN_block); },
              "0F End tag '{urn:1}:block' does not match the start tag 'block'. endTagt"},
         }) {
        const std::size_t place = error.rfind(' ');
        EXPECT_EQ(errorOf(calls),
                  "0x08" + error.substr(0, 2) + " SYSTEM ERROR:" + error.substr(2, place - 2)
                      + " [ZroCommon::XmlSerializerImpl::" + error.substr(place + 1) + "]");
    }
    for (const bool isInElement : {false, true}) {
        Writing s;
        isInElement ? s.document().start(ZRN_block) : s;
        EXPECT_EQ(errorOf([&] { s.call(&Serializer::docdecl, u"a"); }),
                  "0x0810 SYSTEM ERROR: Unexpected docdecl(). []");
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
    for (std::size_t i = 0; i < operations.size(); ++i) {
        const ZRPtr<ZRXmlSerializer> fresh(new internal::XmlSerializerImpl);
        EXPECT_EQ(errorOf([&] { operations[i](*fresh); }), noStream) << "of a new one: " << i;
        const Writing ended;
        ended->endDocument();
        EXPECT_EQ(errorOf([&] { operations[i](*ended); }), noStream) << "at the end: " << i;
    }
}

TEST(ZRXmlSerializerErrors, SaysWhichFileCannotBeOpened) {
    const auto opened = [](const std::string& uri) {
        const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
        return errorOf([&] { serializer->setOutput(text(uri), u""); });
    };
    const std::string place = " [ZroCommon::XmlSerializerImpl::setOutput]";
    EXPECT_EQ(opened("/no/such/a.xml"), "0x1003 Cannot open file: file:/no/such/a.xml" + place);
    EXPECT_EQ(opened("http://localhost/a"), "0x1003 Cannot open file: http://localhost/a" + place);
    EXPECT_EQ(opened("data:,a"), "0x1003 Cannot open file: data:,a" + place);
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

TEST(ZRXmlSerializerErrors, AFailureShowsAtTheNextOperationOrAtOnceAsTheStreamHasIt) {
    ShortBuf buffer(3, false);
    std::ostream stream(&buffer);
    const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
    serializer->setOutput(stream, u"");
    EXPECT_EQ(errorOf([&] { serializer->text(u"abcd"); }), "nothing");
    EXPECT_TRUE(stream.bad());
    EXPECT_NE(errorOf([&] { serializer->text(u""); }), "nothing");
    stream.clear();
    stream.exceptions(std::ios_base::badbit);
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
