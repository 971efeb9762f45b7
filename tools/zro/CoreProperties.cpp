#include "tools/zro/CoreProperties.h"

#include "zro/foundation/ZRError.h"
#include "zro/xml/ZRLimits.h"
#include "zro/xml/ZRXmlUtil.h"

#include "tools/zro/Text.h"

namespace zro {
namespace {

using ZroCommon::ZRLimits;
using ZroCommon::ZRPtr;
using ZroCommon::ZRXmlParser;
using ZroCommon::ZRXmlUtil;
using ZroCommon::ZRZipFileEntry;

constexpr const char16_t* kRelationship =
    u"http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
constexpr const char16_t* kDublinCore = u"http://purl.org/dc/elements/1.1/";
constexpr const char16_t* kCoreProperties =
    u"http://schemas.openxmlformats.org/package/2006/metadata/core-properties";

ZRPtr<ZRXmlParser> parserOf(ZRZipFileEntry& part) {
    ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    ZRLimits limits = ZRLimits::strict();
    limits.skipExternal = true;
    parser->setFeature(ZRXmlParser::FEATURE_SKIP_EXTERNAL_SUBSET, true);
    parser->setLimits(limits);
    parser->setInput(*part.getUncompressedStream(false), u"", u"");
    return parser;
}

UnicodeString* fieldOf(Introduction& introduction, const ZRXmlParser& parser) {
    const UnicodeString space = parser.getNamespace().toString();
    const UnicodeString name = parser.getName().toString();
    if (space == kCoreProperties) {
        return name == u"keywords" ? &introduction.keywords : nullptr;
    }
    if (space != kDublinCore) {
        return nullptr;
    }
    return name == u"title"     ? &introduction.title
           : name == u"subject" ? &introduction.subject
           : name == u"creator" ? &introduction.author
                                : nullptr;
}

void read(ZRXmlParser& parser, Introduction& introduction) {
    UnicodeString* field = nullptr;
    for (;;) {
        switch (parser.next()) {
        case ZRXmlParser::END_DOCUMENT: return;
        case ZRXmlParser::START_TAG:
            field = parser.getDepth() == 2 ? fieldOf(introduction, parser) : field;
            break;
        case ZRXmlParser::END_TAG: field = parser.getDepth() == 2 ? nullptr : field; break;
        case ZRXmlParser::TEXT:
            if (field != nullptr) {
                *field += parser.getText();
            }
            break;
        default: break;
        }
    }
}

}  // namespace

Introduction corePropertiesOf(const ZroCommon::ZRZipFile& package, std::string& damage) {
    Introduction introduction;
    const UnicodeString name = package.getRelationshipTargetFromType(kRelationship, nullptr);
    ZRZipFileEntry* const part = name.isEmpty() ? nullptr : package.getFileEntry(name);
    if (part == nullptr) {
        return introduction;
    }
    try {
        read(*parserOf(*part), introduction);
    } catch (const ZroCommon::ZRError& error) {
        damage = "in \"" + printable(name) + "\": " + toUtf8(error.getMessage());
    }
    return introduction;
}

}  // namespace zro
