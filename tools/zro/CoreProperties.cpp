#include "tools/zro/CoreProperties.h"

#include "tools/zro/OfficeParts.h"

namespace zro {
namespace {

using ZroCommon::ZRXmlParser;
using ZroCommon::ZRZipFileEntry;

constexpr const char16_t* kRelationship =
    u"http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
constexpr const char16_t* kDublinCore = u"http://purl.org/dc/elements/1.1/";
constexpr const char16_t* kCoreProperties =
    u"http://schemas.openxmlformats.org/package/2006/metadata/core-properties";

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

/// Takes the texts of properties out of the events of a parser.
class PropertyReader {
public:
    explicit PropertyReader(Introduction& introduction) : m_introduction(introduction) {}

    void take(const ZRXmlParser& parser) {
        const int event = parser.getEventType();
        if (event == ZRXmlParser::TEXT && m_field != nullptr) {
            *m_field += parser.getText();
        } else if (event == ZRXmlParser::START_TAG && parser.getDepth() == 2) {
            m_field = fieldOf(m_introduction, parser);
        } else if (event == ZRXmlParser::END_TAG && parser.getDepth() == 2) {
            m_field = nullptr;
        }
    }

private:
    Introduction& m_introduction;
    UnicodeString* m_field = nullptr;  // of the element that is open
};

}  // namespace

Introduction corePropertiesOf(Session& session, const std::string& file,
                              const ZroCommon::ZRZipFile& package) {
    Introduction introduction;
    const UnicodeString name = package.getRelationshipTargetFromType(kRelationship, nullptr);
    ZRZipFileEntry* const part = name.isEmpty() ? nullptr : partOf(package, name);
    if (part != nullptr) {
        PropertyReader reader(introduction);
        complainAboutPart(session, file, name, readPart(*part, [&reader](const auto& parser) {
                              reader.take(parser);
                              return std::string();
                          }));
    }
    return introduction;
}

}  // namespace zro
