// What a package by the Open Packaging Conventions says of its parts.
#include "zro/containers/zip/ZRZipFile.h"

#include "zro/containers/opc/internal/ContentTypes.h"
#include "zro/containers/opc/internal/RelationshipPart.h"
#include "zro/containers/zip/internal/PartFacts.h"

namespace ZroCommon {
namespace {

UnicodeString valueOf(const internal::Relationships::Map& map, const UnicodeString& key) {
    const auto found = map.find(key);
    return found == map.end() ? UnicodeString() : found->second;
}

}  // namespace

const UnicodeString& ZRZipFile::getContentType(ZRZipFileEntry* entry) {
    static const UnicodeString s_none;
    const ZRZipFileEntry* const types = getFileEntry(u"[Content_Types].xml");
    if (entry == nullptr || types == nullptr) {
        return s_none;
    }
    if (entry->getContentType().isEmpty() && !types->knownFacts().hasToldTypes) {
        setContentType();
    }
    return entry->getContentType();
}

void ZRZipFile::setContentType() {
    ZRZipFileEntry& types = *getFileEntry(u"[Content_Types].xml");
    internal::DefaultTypes defaults;
    std::size_t overrides = 0;
    const auto take = [this, &overrides](const UnicodeString& name, const UnicodeString& type) {
        if (ZRZipFileEntry* const entry = getFileEntry(name)) {
            entry->setContentType(type);
            ++overrides;
        }
    };
    const bool isWhole = internal::readContentTypes(types, defaults, take);
    types.facts().hasToldTypes = true;
    // On purpose: overrides are counted, not the parts that they are for, so repeated ones may
    // leave the others without their defaults.
    if (!isWhole || overrides >= m_entries.size()) {
        return;
    }
    for (const auto& entry : m_entries) {
        const UnicodeString& name = entry->getFileName();
        const int32_t dot = name.lastIndexOf(u'.');
        if (dot < 0 || !entry->getContentType().isEmpty()) {
            continue;
        }
        const auto found = defaults.find(name.tempSubString(dot));
        if (found != defaults.end()) {
            entry->setContentType(found->second);
        }
    }
}

void ZRZipFile::makeRelationships(ZRZipFileEntry* entry) const {
    if (entry == nullptr) {
        ZRZipFileEntry* const part = getFileEntry(internal::kPackageRelationships);
        if (m_relationships == nullptr && part != nullptr) {
            m_relationships = internal::readRelationships(*part);
        }
        return;
    }
    if (!internal::relationshipsOf(entry->knownFacts().relationships).isEmpty()) {
        return;
    }
    const UnicodeString& name = entry->getFileName();
    if (ZRZipFileEntry* const part = getFileEntry(internal::relationshipPartOf(name))) {
        internal::PartFacts& facts = part->facts();
        if (facts.told == nullptr) {
            facts.told = internal::readRelationships(*part, name);
        }
        entry->facts().relationships = facts.told;
    }
}

const internal::Relationships& ZRZipFile::relationshipsOf(ZRZipFileEntry* entry) const {
    makeRelationships(entry);
    return internal::relationshipsOf(entry == nullptr ? m_relationships
                                                      : entry->knownFacts().relationships);
}

UnicodeString ZRZipFile::getRelationshipTargetFromId(const UnicodeString& id,
                                                     ZRZipFileEntry* entry) const {
    return valueOf(relationshipsOf(entry).ids, id);
}

UnicodeString ZRZipFile::getRelationshipTargetFromType(const UnicodeString& type,
                                                       ZRZipFileEntry* entry) const {
    return valueOf(relationshipsOf(entry).types, type);
}

UnicodeString ZRZipFile::getRelationshipTargetMode(const UnicodeString& target,
                                                   ZRZipFileEntry* entry) const {
    const UnicodeString mode = valueOf(relationshipsOf(entry).modes, target);
    return mode.isEmpty() ? UnicodeString(u"Internal") : mode;
}

}  // namespace ZroCommon
