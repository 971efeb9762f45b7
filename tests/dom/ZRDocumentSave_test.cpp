#include <sstream>

#include "tests/dom/Trees.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Values.h"
#include "zro/foundation/ZRError.h"
#include "zro/values/ZRColor.h"

namespace ZroCommon::testing {
namespace {

/// A document that does not name who wrote it.
Document anonymous(const std::string& xml) {
    Document document = loaded(xml);
    document->getSerializer()->setGenerator(UnicodeString());
    return document;
}

TEST(ZRDocument, SavesWhatItLoaded) {
    for (const char* xml : {"<a x=\"1\">t<b/>&lt;&amp;</a>",
                            "<p:a p:x=\"&quot;\" xmlns:p=\"urn:u\"><b xmlns=\"urn:d\"/></p:a>"}) {
        const Document document = loaded(xml);
        EXPECT_EQ(utf8(document->saveXml(document->getDocumentElement())), xml);
    }
}

TEST(ZRDocument, WholeDocumentsGetADeclaration) {
    const Document document = anonymous("<a/>");
    EXPECT_EQ(utf8(document->saveXml()), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>");
    EXPECT_EQ(document->saveXml(document), document->saveXml());
    std::ostringstream stream;
    document->save(stream, nullptr, UnicodeString(), u"a SYSTEM \"a.dtd\"");
    EXPECT_EQ(stream.str(), "<?xml version=\"1.0\"?><!DOCTYPE a SYSTEM \"a.dtd\"><a/>");
    stream.str("");
    document->save(u"Shift_JIS", UnicodeString(), stream);
    EXPECT_EQ(stream.str(), "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?><a/>");
}

TEST(ZRDocument, SavesToAFile) {
    const TempFolder folder;
    const Document document = anonymous("<a>\u3042</a>");
    document->save(folder.file("a.xml"), document->getDocumentElement(), u"UTF-8");
    EXPECT_EQ(folder.read("a.xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>\xE3\x81\x82</a>");
    const Document again = newDocument();
    again->load(folder.file("a.xml"));
    EXPECT_EQ(dump(again), dump(document));
}

TEST(ZRDocument, WritesValuesByTheirKind) {
    const Document document = newDocument();
    const ZRPtr<ZRElement> e = element(document, u"e");
    document->appendChild(e);
    ZRValue compound = mapOf(ZRName(), ZRValue(12.0F, ZRValueUnitPt));
    compound.setNamedItem(ZRN_minimum, ZRValue(3));
    compound.setNamedItem(ZRN_maximum, ZRValue());
    e->setAttribute(u"name"_name, ZRValue(ZRName(ZRN_auto)));
    e->setAttribute(u"empty"_name, ZRValue(UnicodeString()));
    e->setAttribute(u"null"_name, ZRValue());
    e->setAttribute(u"space"_name, compound);
    e->setAttribute(u"text"_name, ZRValue(UnicodeString(u"a b")));
    e->setAttribute(u"red"_name, ZRValue(ZRColor(0xFF0000)));
    e->setAttribute(u"ink"_name, ZRValue(ZRColor(1.0F, 0, 0, 0)));
    EXPECT_EQ(utf8(document->saveXml(e)),
              "<e name=\"auto\" space=\"12pt\" space.minimum=\"3\" text=\"a b\""
              " red=\"#FF0000\" ink=\"#00FFFF icc-color(#CMYK,1,0,0,0)\"/>");
}

TEST(ZRDocument, FragmentsAreWrittenAsTheirChildren) {
    const Document document = newDocument();
    const ZRPtr<ZRDocumentFragment> fragment = document->createDocumentFragment();
    addElement(document, fragment, u"a");
    fragment->appendChild(document->createProcessingInstruction(u"p q"));
    addText(document, fragment, u"<t>");
    EXPECT_EQ(utf8(document->saveXml(fragment)), "<a/><?p q?>&lt;t&gt;");
}

/// An element that stands for text.
class TextElement : public ZRElement {
public:
    TextElement(ZRDocument* document, const UnicodeString& text)
        : ZRElement(document), m_text(text) {}
    ZRName getLocalName() const override { return ZRN_hash_text; }
    bool isText() const override { return true; }
    UnicodeString getText() const override { return m_text; }

private:
    UnicodeString m_text;
};

TEST(ZRDocument, ElementsThatAreTextAreWrittenAsText) {
    const Document document = newDocument();
    ZRElement* e = addElement(document, document, u"e");
    e->appendChild(new TextElement(document, u"<t>"));
    EXPECT_EQ(utf8(document->saveXml(e)), "<e>&lt;t&gt;</e>");
    EXPECT_EQ(utf8(e->getInnerText()), "");
    document->replaceChild(new TextElement(document, u"t"), e);
    document->getSerializer()->setGenerator(UnicodeString());
    std::ostringstream stream;
    document->saveDocumentElement(stream);
    document->closeDocumentElement();
    EXPECT_EQ(stream.str(), "<?xml version=\"1.0\"?>t");
}

/// Makes an attribute only when it is about to be written.
class LateElement : public ZRElement {
public:
    explicit LateElement(ZRDocument* document) : ZRElement(document) {}
    ZRName getLocalName() const override { return u"late"_name; }
    void finishAttributes() override { setAttribute(u"x"_name, ZRValue(1)); }
};

TEST(ZRDocument, ElementsMayFinishTheirAttributesBeforeTheyAreWritten) {
    const Document document = newDocument();
    document->appendChild(new LateElement(document));
    EXPECT_EQ(utf8(document->saveXml(document->getDocumentElement())), "<late x=\"1\"/>");
}

TEST(ZRDocument, CanBeWrittenChildByChild) {
    const Document document = anonymous("<a x='1'><skipped/></a>");
    std::ostringstream stream;
    document->saveDocumentElement(stream);
    for (const char16_t* name : {u"b", u"c"}) {
        const ZRPtr<ZRElement> child = element(document, name);
        addText(document, child, u"t");
        document->saveChildElement(child);
    }
    document->saveChildElement(nullptr);
    document->closeDocumentElement();
    EXPECT_EQ(stream.str(), "<?xml version=\"1.0\"?><a x=\"1\"><b>t</b><c>t</c></a>");
}

TEST(ZRDocument, WhatHasNoPlaceInADocumentIsNotWritten) {
    const Document document = newDocument();
    ZRElement* e = addElement(document, document, u"e");
    e->appendChild(document->createAttribute(u"x"_name));
    const ZRPtr<ZRXmlSerializer> before(document->getSerializer());
    EXPECT_EQ(errorOf([&] { document->saveXml(); }),
              "0x0812 SYSTEM ERROR: Unsupported node type. [ZroCommon::ZRDocument::doSave]");
    EXPECT_NE(document->getSerializer(), before.get());
    EXPECT_EQ(errorOf([&] { before->text(u"to the text that is gone"); }).substr(0, 6), "0x1005");
    e->removeAllChildNodes();
    EXPECT_EQ(utf8(document->saveXml(e)), "<e/>");
}

TEST(ZRDocument, AFailedSaveDetachesTheSerializer) {
    const Document document = anonymous("<a/>");
    std::ostringstream broken;
    broken.setstate(std::ios::badbit);
    const TempFolder folder;
    for (const bool isFile : {false, true}) {
        const ZRPtr<ZRXmlSerializer> before(document->getSerializer());
        EXPECT_THROW(isFile ? document->save(folder.file("none/a.xml")) : document->save(broken),
                     ZRError);
        EXPECT_NE(document->getSerializer(), before.get());
    }
    document->save(folder.file("a.xml"));
    EXPECT_NE(folder.read("a.xml").find("<a/>"), std::string::npos);
}

}  // namespace
}  // namespace ZroCommon::testing
