#include "zro/containers/opc/internal/ContentTypes.h"

#include "zro/containers/opc/internal/PartReader.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon::internal {
namespace {

class ContentTypesReader {
public:
    ContentTypesReader(DefaultTypes& defaults, const OverrideTaker& take)
        : m_defaults(defaults), m_take(take) {}

    bool read(const ZRXmlParser& parser) const {
        const int depth = parser.getDepth();
        return m_markup.owns(parser) && (depth == 1 || (depth == 2 && readType(parser)));
    }

private:
    bool readType(const ZRXmlParser& parser) const {
        const UnicodeString type = m_markup.attribute(parser, m_contentType);
        if (type.isEmpty()) {
            return false;
        }
        const ZRName name = parser.getName();
        return (name == m_default && readDefault(parser, type))
               || (name == m_override && readOverride(parser, type));
    }

    bool readDefault(const ZRXmlParser& parser, const UnicodeString& type) const {
        UnicodeString extension = m_markup.attribute(parser, m_extension);
        if (extension.isEmpty()) {
            return false;
        }
        if (extension[0] != u'.') {
            extension.insert(0, u'.');
        }
        m_defaults.emplace(extension, type);
        return true;
    }

    bool readOverride(const ZRXmlParser& parser, const UnicodeString& type) const {
        const UnicodeString name = m_markup.attribute(parser, m_partName);
        if (name.isEmpty()) {
            return false;
        }
        m_take(name[0] == u'/' ? name.tempSubString(1) : name, type);
        return true;
    }

    DefaultTypes& m_defaults;
    const OverrideTaker& m_take;
    const PartMarkup m_markup{u"http://schemas.openxmlformats.org/package/2006/content-types",
                              u"Types"};
    const ZRName m_default = internSharedName(u"Default");
    const ZRName m_override = internSharedName(u"Override");
    const ZRName m_contentType = internSharedName(u"ContentType");
    const ZRName m_extension = internSharedName(u"Extension");
    const ZRName m_partName = internSharedName(u"PartName");
};

}  // namespace

bool readContentTypes(ZRZipFileEntry& part, DefaultTypes& defaults, const OverrideTaker& take) {
    const ContentTypesReader reader(defaults, take);
    return readStartTags(part,
                         [&reader](const ZRXmlParser& parser) { return reader.read(parser); });
}

}  // namespace ZroCommon::internal
