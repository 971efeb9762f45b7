#include "tools/zro/OfficeParts.h"

#include <functional>

#include "zro/foundation/ZRError.h"
#include "zro/xml/ZRXmlUtil.h"

#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRError;
using ZroCommon::ZRLimits;
using ZroCommon::ZRName;
using ZroCommon::ZRPtr;
using ZroCommon::ZRXmlParser;
using ZroCommon::ZRXmlUtil;
using ZroCommon::ZRZipFile;
using ZroCommon::ZRZipFileEntry;

constexpr const char16_t* kContentTypes = u"[Content_Types].xml";
constexpr const char16_t* kTypesNamespace =
    u"http://schemas.openxmlformats.org/package/2006/content-types";
constexpr const char16_t* kRelationshipsNamespace =
    u"http://schemas.openxmlformats.org/package/2006/relationships";

/// Looks at a start tag. \return what is wrong with it, or empty
using Rule = std::function<std::string(const ZRXmlParser& parser)>;

// The first fault of a part, with its line.
std::string firstFault(ZRZipFileEntry& part, const Rule& rule) {
    if (part.getCompressedSize() == 0 && (part.getFlags() & 8U) != 0) {
        return "its size is not in its header (see zro zip why)";
    }
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    std::string fault;
    try {
        ZRLimits limits = ZRLimits::strict();
        limits.skipExternal = true;
        parser->setLimits(limits);
        parser->setInput(*part.getUncompressedStream(false), {}, {});
        while (fault.empty() && parser->next() != ZRXmlParser::END_DOCUMENT) {
            if (parser->getEventType() == ZRXmlParser::START_TAG) {
                fault = rule(*parser);
            }
        }
    } catch (const ZRError& error) {
        fault = toUtf8(error.getMessage());
    }
    const int line = parser->getLineNumber();
    parser->closeStream();
    return fault.empty() || line < 1 ? fault : "line " + std::to_string(line) + ": " + fault;
}

std::string quoted(const UnicodeString& text) {
    return "\"" + printable(text) + "\"";
}

std::string wrongElement(const ZRXmlParser& parser, const char16_t* namespaceUri,
                         const char16_t* rootName) {
    const UnicodeString& name = parser.getName().toString();
    if (parser.getNamespace().toString() != namespaceUri) {
        return quoted(name) + " is of another namespace";
    }
    return parser.getDepth() == 1 && name != rootName ? quoted(name) + " is no root for this part"
                                                      : "";
}

UnicodeString attribute(const ZRXmlParser& parser, const char16_t* name) {
    return parser.getAttributeValue(parser.getNamespace(), ZRName(UnicodeString(name)));
}

std::string wrongType(const ZRXmlParser& parser) {
    std::string fault = wrongElement(parser, kTypesNamespace, u"Types");
    if (!fault.empty() || parser.getDepth() == 1) {
        return fault;
    }
    const UnicodeString& name = parser.getName().toString();
    if (parser.getDepth() > 2) {
        return quoted(name) + " stands inside another type";
    }
    const char16_t* const key = name == u"Default" ? u"Extension" : u"PartName";
    if (name != u"Default" && name != u"Override") {
        return quoted(name) + " is neither Default nor Override";
    }
    for (const char16_t* needed : {u"ContentType", key}) {
        if (attribute(parser, needed).isEmpty()) {
            return quoted(name) + " has no " + toUtf8(needed);
        }
    }
    return "";
}

// "a/_rels/b.xml.rels" for "a/b.xml"
UnicodeString relationshipPartOf(const UnicodeString& name) {
    const int32_t behindSlash = name.lastIndexOf(u'/') + 1;
    return UnicodeString(name, 0, behindSlash) + u"_rels/" + UnicodeString(name, behindSlash)
           + u".rels";
}

// A place in a document counts as the document, and "#place" in the part itself as there.
bool isThere(const ZRZipFile& package, const UnicodeString& target) {
    const int32_t fragment = target.indexOf(u'#');
    const UnicodeString name(target, 0, fragment < 0 ? target.length() : fragment);
    return package.getFileEntry(name) != nullptr || (fragment >= 0 && name.endsWith(u"/", 1));
}

}  // namespace

std::string faultOfContentTypes(const ZRZipFile& package) {
    ZRZipFileEntry* const part = package.getFileEntry(kContentTypes);
    return part == nullptr ? "there is none that the walk reaches (see zro zip why)"
                           : firstFault(*part, wrongType);
}

Relationships relationshipsOf(const ZRZipFile& package, ZRZipFileEntry* entry) {
    Relationships found;
    found.part = relationshipPartOf(entry == nullptr ? UnicodeString() : entry->getFileName());
    ZRZipFileEntry* const part = package.getFileEntry(found.part);
    found.isThere = part != nullptr;
    if (part == nullptr) {
        return found;
    }
    found.fault = firstFault(*part, [&](const ZRXmlParser& parser) {
        std::string fault = wrongElement(parser, kRelationshipsNamespace, u"Relationships");
        if (fault.empty() && parser.getDepth() == 2
            && parser.getName().toString() == u"Relationship") {
            found.all.push_back({attribute(parser, u"Id"), attribute(parser, u"Type"), {}, {}});
        }
        return fault;
    });
    for (Relationship& row : found.all) {
        row.target = package.getRelationshipTargetFromId(row.id, entry);
        row.mode = package.getRelationshipTargetMode(row.target, entry);
        row.isMissing = row.mode == u"Internal" && !isThere(package, row.target);
    }
    return found;
}

UnicodeString shortType(const UnicodeString& type) {
    return {type, type.lastIndexOf(u'/') + 1};
}

bool isDescription(const UnicodeString& name) {
    return name == kContentTypes
           || (name.endsWith(u".rels", 5)
               && (name.startsWith(u"_rels/", 6) || name.indexOf(u"/_rels/", 7, 0) >= 0));
}

}  // namespace zro
