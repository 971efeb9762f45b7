#include "tools/zro/OfficeParts.h"

#include "zro/foundation/ZRError.h"
#include "zro/uri/ZRUri.h"
#include "zro/xml/ZRXmlUtil.h"

#include "tools/zro/PackageInput.h"
#include "tools/zro/Position.h"
#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRError;
using ZroCommon::ZRLimits;
using ZroCommon::ZRName;
using ZroCommon::ZRPtr;
using ZroCommon::ZRUri;
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
    if (isSizeBehindData(part)) {
        return "its size is not in its header (see zro zip why)";
    }
    return readPart(part, [&rule](const ZRXmlParser& parser) {
        return parser.getEventType() == ZRXmlParser::START_TAG ? rule(parser) : "";
    });
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

UnicodeString withoutFragment(const UnicodeString& target) {
    const int32_t fragment = target.indexOf(u'#');
    return {target, 0, fragment < 0 ? target.length() : fragment};
}

// "#place" leads into the part itself, and comes with what stands before the part's name.
bool isPlace(const UnicodeString& target) {
    return target.indexOf(u"/#") >= 0;
}

}  // namespace

ZRZipFileEntry* partOf(const ZRZipFile& package, const UnicodeString& target) {
    if (ZRZipFileEntry* const part = package.getFileEntry(withoutFragment(target))) {
        return part;
    }
    const UnicodeString root(u"http://package/");
    const ZRUri uri(ZRUri(root, ZroCommon::URISTR_GUESS), withoutFragment(target),
                    ZroCommon::URISTR_GUESS);
    if (!uri.toString().startsWith(root)) {
        return nullptr;
    }
    const UnicodeString name(uri.toString(), root.length());
    ZRZipFileEntry* const part = package.getFileEntry(name);
    return part != nullptr ? part : package.getFileEntry(ZRUri::unescape(name));
}

std::string readPart(ZRZipFileEntry& part,
                     const std::function<std::string(const ZRXmlParser&)>& look) {
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    std::string fault;
    try {
        ZRLimits limits = ZRLimits::strict();
        limits.skipExternal = true;
        parser->setFeature(ZRXmlParser::FEATURE_SKIP_EXTERNAL_SUBSET, true);
        parser->setLimits(limits);
        parser->setInput(*part.getUncompressedStream(false), {}, {});
        while (fault.empty() && parser->next() != ZRXmlParser::END_DOCUMENT) {
            fault = look(*parser);
        }
    } catch (const ZRError& error) {
        UnicodeString message = error.getRawMessage();
        takePosition(message);
        fault = printable(message);
    }
    const int line = parser->getLineNumber();
    parser->closeStream();
    return fault.empty() || line < 1 ? fault : "line " + std::to_string(line) + ": " + fault;
}

void complainAboutPart(Session& session, const std::string& file, const UnicodeString& part,
                       const std::string& fault) {
    if (!fault.empty()) {
        session.fail(file, printable(part) + " cannot be read: " + fault);
    }
}

void complainAboutContentTypes(Session& session, const std::string& file,
                               const ZRZipFile& package) {
    ZRZipFileEntry* const part = package.getFileEntry(kContentTypes);
    complainAboutPart(session, file, kContentTypes,
                      part == nullptr ? "there is none that the walk reaches (see zro zip why)"
                                      : firstFault(*part, wrongType));
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
        if (row.mode == u"Internal") {
            row.part = partOf(package, row.target);
            row.isMissing = row.part == nullptr && !isPlace(row.target);
        }
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
