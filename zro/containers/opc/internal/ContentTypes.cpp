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
        if (parser.getNamespace() != m_namespace) {
            return false;
        }
        switch (parser.getDepth()) {
        case 1: return parser.getName() == m_types;
        case 2: return readType(parser);
        default: return false;
        }
    }

private:
    // On purpose: attributes are looked for in the namespace, so those of an element with a prefix,
    // which have none themselves, are not found.
    bool readType(const ZRXmlParser& parser) const {
        const UnicodeString type = parser.getAttributeValue(m_namespace, m_contentType);
        if (type.isEmpty()) {
            return false;
        }
        const ZRName name = parser.getName();
        return (name == m_default && readDefault(parser, type))
               || (name == m_override && readOverride(parser, type));
    }

    bool readDefault(const ZRXmlParser& parser, const UnicodeString& type) const {
        UnicodeString extension = parser.getAttributeValue(m_namespace, m_extension);
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
        UnicodeString name = parser.getAttributeValue(m_namespace, m_partName);
        if (name.isEmpty()) {
            return false;
        }
        if (name[0] == u'/') {
            name.remove(0, 1);
        }
        m_take(name, type);
        return true;
    }

    DefaultTypes& m_defaults;
    const OverrideTaker& m_take;
    const ZRName m_namespace =
        UnicodeString(u"http://schemas.openxmlformats.org/package/2006/content-types");
    const ZRName m_types = UnicodeString(u"Types");
    const ZRName m_default = UnicodeString(u"Default");
    const ZRName m_override = UnicodeString(u"Override");
    const ZRName m_contentType = UnicodeString(u"ContentType");
    const ZRName m_extension = UnicodeString(u"Extension");
    const ZRName m_partName = UnicodeString(u"PartName");
};

}  // namespace

bool readContentTypes(ZRZipFileEntry& part, DefaultTypes& defaults, const OverrideTaker& take) {
    const ContentTypesReader reader(defaults, take);
    return readStartTags(part,
                         [&reader](const ZRXmlParser& parser) { return reader.read(parser); });
}

}  // namespace ZroCommon::internal
