#include "zro/containers/opc/internal/RelationshipPart.h"

#include "zro/containers/opc/internal/PartReader.h"
#include "zro/uri/ZRUri.h"
#include "zro/uri/internal/UriResolve.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon::internal {
namespace {

// Where targets inside the package lead to from a part.
class PartBase {
public:
    explicit PartBase(const UnicodeString& partName)
        : m_part(partName, URISTR_PATH_OR_URI_CSS), m_rooted(m_part.toString()) {
        m_rooted.insert(0, u'/');
    }

    // On purpose: part names have no leading slash, so a target that has one, or climbs beyond the
    // root, gives what stands behind that. On purpose: what is not allowed in a URI is escaped in
    // the part's name and not in the target.
    UnicodeString resolve(const UnicodeString& target) const {
        if (!m_part.isAbsolute()) {
            const ClassifiedUri reference = classifyUri(target, URISTR_PATH_OR_URI_CSS);
            UnicodeString found = resolveUri(m_rooted, reference.text, reference.kind);
            if (found.startsWith(u"/", 1)) {
                return found.remove(0, 1);
            }
        }
        return ZRUri(m_part, target, URISTR_PATH_OR_URI_CSS).toString();
    }

private:
    ZRUri m_part;
    UnicodeString m_rooted;
};

class RelationshipReader {
public:
    RelationshipReader(Relationships& found, const PartBase* base) : m_found(found), m_base(base) {}

    bool read(const ZRXmlParser& parser) const {
        if (!m_markup.owns(parser)) {
            return false;
        }
        if (parser.getDepth() == 2 && parser.getName() == m_relationship) {
            readRelationship(parser);
        }
        return true;
    }

private:
    void readRelationship(const ZRXmlParser& parser) const {
        const UnicodeString id = m_markup.attribute(parser, m_id);
        const UnicodeString type = m_markup.attribute(parser, m_type);
        UnicodeString target = m_markup.attribute(parser, m_target);
        const UnicodeString mode = m_markup.attribute(parser, m_targetMode);
        if (id.isEmpty() || type.isEmpty() || target.isEmpty()) {
            return;
        }
        if (m_base != nullptr && (mode.isEmpty() || mode == u"Internal")) {
            target = m_base->resolve(target);
        }
        m_found.ids.emplace(id, target);
        m_found.types.emplace(type, target);
        if (!mode.isEmpty()) {
            m_found.modes.emplace(target, mode);
        }
    }

    Relationships& m_found;
    const PartBase* m_base;  // null for the package
    const PartMarkup m_markup{u"http://schemas.openxmlformats.org/package/2006/relationships",
                              u"Relationships"};
    const ZRName m_relationship = internSharedName(u"Relationship");
    const ZRName m_id = internSharedName(u"Id");
    const ZRName m_type = internSharedName(u"Type");
    const ZRName m_target = internSharedName(u"Target");
    const ZRName m_targetMode = internSharedName(u"TargetMode");
};

SharedRelationships read(ZRZipFileEntry& part, const PartBase* base) {
    auto found = std::make_shared<Relationships>();
    const RelationshipReader reader(*found, base);
    readStartTags(part, [&reader](const ZRXmlParser& parser) { return reader.read(parser); });
    return found;
}

}  // namespace

UnicodeString relationshipPartOf(const UnicodeString& partName) {
    const int32_t slash = partName.lastIndexOf(u'/');
    UnicodeString name(partName);
    name.insert(slash < 0 ? 0 : slash, slash < 0 ? u"_rels/" : u"/_rels", 6);
    return name.append(u".rels", 5);
}

SharedRelationships readRelationships(ZRZipFileEntry& part) {
    return read(part, nullptr);
}

SharedRelationships readRelationships(ZRZipFileEntry& part, const UnicodeString& ofPartName) {
    const PartBase base(ofPartName);
    return read(part, &base);
}

}  // namespace ZroCommon::internal
