#pragma once

#include <functional>
#include <string_view>

#include "zro/containers/zip/ZRZipEntry.h"
#include "zro/vocabulary/internal/SharedNames.h"
#include "zro/xml/ZRXmlParser.h"

namespace ZroCommon::internal {

/// What a part that describes others is made of: a root with elements in it, all of one namespace.
class PartMarkup {
public:
    PartMarkup(std::u16string_view namespaceUri, std::u16string_view root)
        : m_namespace(internSharedName(namespaceUri)), m_root(internSharedName(root)) {}

    /// Whether a start tag belongs there, at depth 1 that of the root alone.
    bool owns(const ZRXmlParser& parser) const {
        return parser.getNamespace() == m_namespace
               && (parser.getDepth() != 1 || parser.getName() == m_root);
    }

    // On purpose: attributes are looked for in the namespace, so those of an element with a prefix,
    // which have none themselves, are not found.
    UnicodeString attribute(const ZRXmlParser& parser, ZRName name) const {
        return parser.getAttributeValue(m_namespace, name);
    }

private:
    ZRName m_namespace;
    ZRName m_root;
};

/// Looks at a start tag. \return whether to read on
using StartTagReader = std::function<bool(const ZRXmlParser& parser)>;

/// Shows the start tags of a part that describes others, one after the other.
///
/// Such a part has no business to refer to a DTD: nothing outside of it is opened, what is outside
/// counts as empty, and reading ends where entities or compression make too much of its bytes. No
/// fault of the part is an error.
/// \return whether the document was read to its end
bool readStartTags(ZRZipFileEntry& part, const StartTagReader& read);

}  // namespace ZroCommon::internal
