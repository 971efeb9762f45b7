// Media types, relationships and kinds of packages by the Open Packaging Conventions.
#include <memory>
#include <sstream>

#include "tests/support/OpcBuilder.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"
#include "zro/containers/zip/ZRZipFile.h"

namespace ZroCommon::testing {
namespace {

std::unique_ptr<ZRZipFile> opened(const ZipBuilder& builder) {
    return std::make_unique<ZRZipFile>(new std::istringstream(builder.package()), true);
}

// "a.xml=type b=type" of the parts that have one.
std::string typesOf(ZRZipFile& package) {
    std::string all;
    for (unsigned i = 0; i < package.getFileEntryCount(); ++i) {
        ZRZipFileEntry* const entry = package.getFileEntry(i);
        const UnicodeString& type = package.getContentType(entry);
        if (!type.isEmpty()) {
            all += (all.empty() ? "" : " ") + utf8(entry->getFileName()) + "=" + utf8(type);
        }
    }
    return all;
}

std::string typesBy(const std::string& markup) {
    ZipBuilder builder;
    for (const char* name : {"a.xml", "b/c.png", "d.xml/e", "F.XML", "a.xml"}) {
        builder.stored(name, "");
    }
    return typesOf(*opened(builder.deflated("[Content_Types].xml", markup)));
}

TEST(ZRZipParts, MediaTypesComeFromOverridesAndDefaults) {
    const std::string xml = defaultType("xml", "X");
    const std::string part = overrideType("/a.xml", "A");
    const std::string all = "a.xml=X a.xml=X [Content_Types].xml=X";
    const Rows<const char*, std::string, std::string> cases = {
        {"defaults", contentTypes(xml + defaultType(".png", "P")),
         "a.xml=X b/c.png=P a.xml=X [Content_Types].xml=X"},
        {"the first of an extension", contentTypes(xml + defaultType(".xml", "Y")), all},
        {"the last of a name, with or without its slash",
         contentTypes(part + overrideType("a.xml", "B")), "a.xml=B"},
        {"an override goes before", contentTypes(part + xml),
         "a.xml=A a.xml=X [Content_Types].xml=X"},
        {"unknown parts", contentTypes(overrideType("/A.xml", "A") + overrideType("//a.xml", "B")),
         ""},
        {"a dot of the directory", contentTypes(defaultType("xml/e", "E")), "d.xml/e=E"},
        {"with case", contentTypes(defaultType("XML", "U")), "F.XML=U"},
        {"an element of another name", contentTypes(xml + part + "<Other ContentType='t'/>"),
         "a.xml=A"},
        {"an element too deep",
         contentTypes(part + "<Default Extension='xml' ContentType='X'><Types/></Default>"),
         "a.xml=A"},
        {"no media type", contentTypes(part + "<Default Extension='xml'/>" + xml), "a.xml=A"},
        {"no extension", contentTypes(part + defaultType("", "X") + xml), "a.xml=A"},
        {"no part", contentTypes(part + overrideType("", "X") + xml), "a.xml=A"},
        {"a foreign element", contentTypes(part + "<x:Default xmlns:x='u'/>" + xml), "a.xml=A"},
        {"not well-formed", contentTypes(part + xml + "<"), "a.xml=A"},
        {"another root", "<Typ" + contentTypes(xml).substr(6), ""},
        {"no namespace", "<Types>" + xml + "</Types>", ""},
        {"empty", "", ""},
    };
    for (const auto& [what, markup, types] : cases) {
        EXPECT_EQ(typesBy(markup), types) << "for: " << what;
    }
}

// On purpose: attributes without a prefix are looked for in the namespace of their element, which
// no prefix has then.
TEST(ZRZipParts, APrefixedElementEndsTheMediaTypes) {
    std::string markup = contentTypes(overrideType("/a.xml", "A"));
    EXPECT_EQ(typesBy(markup), "a.xml=A");
    for (const char* tag : {"Override", "Types", "/Types"}) {
        markup.insert(markup.find("<" + std::string(tag)) + (*tag == '/' ? 2 : 1), "c:");
    }
    EXPECT_EQ(typesBy(markup.insert(markup.find("xmlns") + 5, ":c")), "");
}

// On purpose: it is elements that are counted.
TEST(ZRZipParts, AsManyOverridesAsEntriesSwitchTheDefaultsOff) {
    std::string overrides;
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(typesBy(contentTypes(defaultType("png", "P") + overrides)),
                  i == 0 ? "b/c.png=P" : "a.xml=A b/c.png=P");
        overrides += overrideType("a.xml", "A");
    }
    EXPECT_EQ(typesBy(contentTypes(defaultType("png", "P") + overrides)), "a.xml=A");
}

std::string targetFrom(const char* part, const std::string& target, const char* mode = "") {
    const UnicodeString name(part);
    const int32_t slash = name.lastIndexOf(u'/') + 1;
    const UnicodeString rels =
        name.tempSubString(0, slash) + u"_rels/" + name.tempSubString(slash) + u".rels";
    const auto package = opened(ZipBuilder().stored(part, "").deflated(
        utf8(rels), relationships(relationship("i", "t", target, mode))));
    ZRZipFileEntry* const entry = package->getFileEntry(0U);
    const UnicodeString found = package->getRelationshipTargetFromId(u"i", entry);
    EXPECT_EQ(package->getRelationshipTargetFromType(u"t", entry), found);
    return utf8(found) + " " + utf8(package->getRelationshipTargetMode(found, entry));
}

TEST(ZRZipParts, TargetsOfPartsBecomeNamesOfEntries) {
    const Rows<const char*, const char*, const char*> cases = {
        {"word/document.xml", "media/x.png", "word/media/x.png"},
        {"word/document.xml", "../customXml/i.xml", "customXml/i.xml"},
        {"a/b/c.xml", "../../x", "x"},
        {"a/b/c.xml", "../x", "a/x"},
        {"a/b.xml", "./x", "a/x"},
        {"a.xml", "b.xml", "b.xml"},
        {"a/b.xml", "x y#z", "a/x y#z"},
        {"a/b.xml", "file:///C:/x", "file:///C:/x"},
        {"a/b.xml", "http://h/x", "http://h/x"},
        {"a/b.xml", "jar:x", "jar:a/x"},
        {"/a/b.xml", "x", "file:/a/x"},
    };
    for (const auto& [part, target, name] : cases) {
        EXPECT_EQ(targetFrom(part, target), name + std::string(" Internal"))
            << "for: " << part << " " << target;
    }
    EXPECT_EQ(targetFrom("a/b", "x", "Internal"), "a/x Internal");
    EXPECT_EQ(targetFrom("a/b", "http://h/x", "External"), "http://h/x External");
    EXPECT_EQ(targetFrom("a/b", "../x", "External"), "../x External");
}

// On purpose: names of entries have no slash in front.
TEST(ZRZipParts, TargetsAtOrBeyondTheRootGiveWhatStandsBehindIt) {
    for (const char* target : {"/x/y", "../x/y", "../../../x/y", "../../x/y"}) {
        EXPECT_EQ(targetFrom("a/b.xml", target), "x/y Internal") << target;
        EXPECT_EQ(targetFrom("b.xml", target), "x/y Internal") << target;
    }
}

// On purpose: a name is read as a path, and comes out as a URI.
TEST(ZRZipParts, TargetsBesideANameWithABlankAreEscaped) {
    EXPECT_EQ(targetFrom("my a/b.xml", "x y"), "my%20a/x y Internal");
}

TEST(ZRZipParts, RelationshipsAreReadByTheirRules) {
    const std::string first = relationship("1", "t", "one");
    const Rows<const char*, std::string, const char*> cases = {
        {"the first of a key",
         relationships(first + relationship("1", "u", "x") + relationship("2", "t", "two")),
         "one two one"},
        {"targets as they stand", relationships(relationship("1", "t", "/a/../b c")),
         "/a/../b c  /a/../b c"},
        {"what lacks something",
         relationships(relationship("1", "t", "") + relationship("1", "", "x")
                       + relationship("", "t", "x") + relationship("2", "t", "two")),
         " two two"},
        {"other elements at any depth",
         relationships("<Other><Relationship/>" + relationship("1", "t", "x") + "</Other>"
                       + relationship("2", "t", "two")),
         " two two"},
        {"a foreign element ends it",
         relationships(first + "<x xmlns='u'/>" + relationship("2", "t", "two")), "one  one"},
        {"a fault ends it", relationships(first + "<1>" + relationship("2", "t", "two")),
         "one  one"},
        {"another root", "<Relationship" + relationships(first).substr(14), "  "},
        {"nothing", "", "  "},
    };
    for (const auto& [what, markup, targets] : cases) {
        const auto package = opened(ZipBuilder().deflated("_rels/.rels", markup));
        EXPECT_EQ(utf8(package->getRelationshipTargetFromId(u"1", nullptr) + u" "
                       + package->getRelationshipTargetFromId(u"2", nullptr) + u" "
                       + package->getRelationshipTargetFromType(u"t", nullptr)),
                  targets)
            << "for: " << what;
        EXPECT_EQ(package->getRelationshipTargetMode(u"unknown", nullptr), u"Internal");
    }
}

TEST(ZRZipParts, OfficeDocumentsAreKnownByTheMediaTypeOfTheirMainPart) {
    const std::string docx =
        "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml";
    const std::string thmx = "application/vnd.openxmlformats-officedocument.themeManager+xml";
    const Rows<const char*, ZipBuilder, OOXDOCUMENT_TYPE> cases = {
        {"the first", officePackage("word/document.xml", docx), OOXDOCUMENT_DOCX},
        {"the ninth",
         officePackage("a.bin", "application/vnd.ms-excel.sheet.binary.macroEnabled.main"),
         OOXDOCUMENT_XLSB},
        {"the last", officePackage("theme", thmx), OOXDOCUMENT_THMX},
        {"other case", officePackage("a", "A" + docx.substr(1)), OOXDOCUMENT_NONE},
        {"any package", ZipBuilder().stored("a", ""), OOXDOCUMENT_NONE},
        {"nothing", ZipBuilder(), OOXDOCUMENT_NONE},
    };
    const TempFolder folder;
    for (const auto& [what, builder, type] : cases) {
        const UnicodeString path = folder.write("a.zip", builder.package());
        std::istringstream stream("junk" + builder.package());
        stream.seekg(4);
        EXPECT_EQ(ZRZipFile::detectOOXDocument(&stream), type) << what;
        EXPECT_EQ(stream.tellg(), std::streampos(4)) << what;
        EXPECT_EQ(ZRZipFile::detectOOXDocument(path), type) << what;
        EXPECT_EQ(ZRZipFile::detectOOXDocument(utf8(path).c_str()), type) << what;
    }
    EXPECT_EQ(ZRZipFile::detectOOXDocument(static_cast<std::istream*>(nullptr)), OOXDOCUMENT_NONE);
}

// On purpose: the targets of a package are names as they stand.
TEST(ZRZipParts, AMainPartWithALeadingSlashIsNotFound) {
    const auto package = opened(
        ZipBuilder().stored("a", "").deflated("_rels/.rels", relationships(officeDocument("/a"))));
    EXPECT_EQ(package->getOfficeDocument(), nullptr);
    EXPECT_EQ(package->detectOOXDocument(), OOXDOCUMENT_NONE);
}

}  // namespace
}  // namespace ZroCommon::testing
