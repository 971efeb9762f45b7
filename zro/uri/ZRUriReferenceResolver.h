#pragma once

#include <iosfwd>

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

/// Lets an application serve resources by itself; see `ZRUri::setUriReferenceResolver`.
class ZRO_API ZRUriReferenceResolver {
public:
    ZRUriReferenceResolver() = default;
    ZRUriReferenceResolver(const ZRUriReferenceResolver&) = default;
    ZRUriReferenceResolver& operator=(const ZRUriReferenceResolver&) = default;
    virtual ~ZRUriReferenceResolver();

    /// \param uri  the normalised text of a `ZRUri`, which may be relative
    /// \return a new stream that the caller deletes, or null when this URI is not served here
    virtual std::istream* getStream(const UnicodeString& uri) = 0;
};

}  // namespace ZroCommon
