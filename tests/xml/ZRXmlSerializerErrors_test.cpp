#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <streambuf>

#include "tests/support/NamesStay.h"
#include "tests/support/Skips.h"
#include "tests/xml/SerializerCalls.h"

namespace ZroCommon::testing {
namespace {

TEST(ZRXmlSerializerErrors, RefusesWrongCalls) {
    const auto refusal = [](const std::string& calls) {
        return errorOf([&] { Writing().run(calls); });
    };
    expectLines(refusal, R"(
*  * -> 0x080C SYSTEM ERROR: startDocument() must be called just after setOutput().
 [ZroCommon::XmlSerializerImpl::startDocumen]
<block  'x  @id=x -> 0x080D SYSTEM ERROR: attribute() must be called just after startTag().
 [ZroCommon::XmlSerializerImpl::attributeSub]
'x  @{http://www.w3.org/2000/xmlns/}xmlns:id=x -> 0x080D SYSTEM ERROR: attribute() must be called just after startTag().
 [ZroCommon::XmlSerializerImpl::attributeSub]
/block -> 0x080E SYSTEM ERROR: Unexpected endTag(). [ZroCommon::XmlSerializerImpl::endTagt]
^p=urn:1  / -> 0x080E SYSTEM ERROR: Unexpected endTag(). [ZroCommon::XmlSerializerImpl::endTagt]
<{urn:1}p:block  /{urn:1}flow -> 0x080F SYSTEM ERROR: End tag 'p:flow' does not match the start
 tag 'p:block'. [ZroCommon::XmlSerializerImpl::endTagt]
<block  /{urn:1}block -> 0x080F SYSTEM ERROR: End tag '{urn:1}:block' does not match the start
 tag 'block'. [ZroCommon::XmlSerializerImpl::endTagt]
#a -> 0x0810 SYSTEM ERROR: Unexpected docdecl(). []
*  <block  #a -> 0x0810 SYSTEM ERROR: Unexpected docdecl(). [])");
}

TEST(ZRXmlSerializerErrors, WorksOnlyBetweenSetOutputAndEndDocument) {
    const std::string noStream =
        "0x1005 Output stream is not set. [ZroCommon::XmlSerializerImpl::checkStream]";
    for (const char* call : {"*", ".", "^fo=urn:1", "<block", "<:block", "@id=", "@:id=", "/block",
                             "'", "[", "&", "?", "!", "#", " "}) {
        Writing fresh(nullptr);
        Writing ended;
        for (Writing* s : {&fresh, &ended.run(".")}) {
            EXPECT_EQ(errorOf([&] { s->run(call); }), noStream) << call;
            EXPECT_EQ(errorOf([&] { (*s)->getPrefix(ZRN_ns_fo, true); }), noStream);
            EXPECT_EQ(errorOf([&] { (*s)->flush(); }), noStream);
        }
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
