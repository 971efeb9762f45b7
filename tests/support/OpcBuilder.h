#pragma once

#include <string>
#include <string_view>

#include "tests/support/ZipBuilder.h"

namespace ZroCommon::testing {

/// "[Content_Types].xml" with these elements.
inline std::string contentTypes(std::string_view elements) {
    return "<Types xmlns='http://schemas.openxmlformats.org/package/2006/content-types'>"
           + std::string(elements) + "</Types>";
}

inline std::string defaultType(const std::string& extension, const std::string& type) {
    return "<Default Extension='" + extension + "' ContentType='" + type + "'/>";
}

inline std::string overrideType(const std::string& part, const std::string& type) {
    return "<Override PartName='" + part + "' ContentType='" + type + "'/>";
}

/// A part of relationships with these elements.
inline std::string relationships(std::string_view elements) {
    return "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>"
           + std::string(elements) + "</Relationships>";
}

inline std::string relationship(const std::string& id, const std::string& type,
                                const std::string& target, const std::string& mode = {}) {
    return "<Relationship Id='" + id + "' Type='" + type + "' Target='" + target
           + (mode.empty() ? "'/>" : "' TargetMode='" + mode + "'/>");
}

/// The relationship of a package to its main part.
inline std::string officeDocument(const std::string& target) {
    return relationship(
        "rId1",
        "http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument",
        target);
}

/// An office document whose main part has that name and media type.
inline ZipBuilder officePackage(const std::string& part, const std::string& mediaType) {
    return ZipBuilder()
        .deflated("[Content_Types].xml", contentTypes(overrideType("/" + part, mediaType)))
        .deflated("_rels/.rels", relationships(officeDocument(part)))
        .deflated(part, "<document/>");
}

}  // namespace ZroCommon::testing
