// Documents that lie in packages, with what they bring in from there.

#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "tests/support/ZipBuilder.h"
#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRElement.h"

namespace ZroCommon::testing {
namespace {

constexpr const char* kLetter = R"(<!DOCTYPE fo:root SYSTEM "../dtd/letter.dtd" [
  <!ENTITY body SYSTEM "parts/body.xml">
]>
<fo:root xmlns:fo="http://www.w3.org/1999/XSL/Format"><fo:block>&salute; &body;</fo:block></fo:root>)";

std::string letters(const std::string& salute) {
    return ZipBuilder()
        .deflated("docs/letter.fo", kLetter)
        .stored("docs/parts/body.xml", "<fo:inline>deep &salute;</fo:inline>")
        .deflated("dtd/letter.dtd", "<!ENTITY salute '" + salute + "'>")
        .package();
}

std::string textOfDocument(const UnicodeString& uri) {
    const ZRPtr<ZRDocument> document(new ZRDocument);
    document->load(uri);
    return utf8(document->getDocumentElement()->getInnerText());
}

TEST(PackagedDocuments, BringInEntitiesAndSubsetsOfTheirPackage) {
    const TempFolder folder;
    const UnicodeString path = folder.write("p.zip", letters("Dear"));
    EXPECT_EQ(textOfDocument(u"jar:file://" + path + u"!/docs/letter.fo"), "Dear deep Dear");
    EXPECT_EQ(textOfDocument(u"jar:" + path + u"!/docs/letter.fo"), "Dear deep Dear");
    const UnicodeString outer =
        folder.write("outer.zip", ZipBuilder().deflated("in/p.zip", letters("Hello")).package());
    EXPECT_EQ(textOfDocument(u"jar:file://" + outer + u"!/in/p.zip!/docs/letter.fo"),
              "Hello deep Hello");
}

// As with an address, nothing but the document itself has to be there.
TEST(PackagedDocuments, AMissingDocumentIsAnErrorAndAMissingEntityIsEmpty) {
    const TempFolder folder;
    const std::string document = "<!DOCTYPE a [<!ENTITY b SYSTEM 'b.xml'>]><a>x&b;y</a>";
    const UnicodeString path =
        folder.write("p.zip", ZipBuilder().stored("a.xml", document).package());
    EXPECT_EQ(textOfDocument(u"jar:" + path + u"!/a.xml"), "xy");
    const std::string error = errorOf([&] { textOfDocument(u"jar:" + path + u"!/no.xml"); });
    EXPECT_EQ(error.substr(0, 6), "0x1003") << error;
}

}  // namespace
}  // namespace ZroCommon::testing
