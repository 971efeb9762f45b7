#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "zro/uri/ZRUri.h"

namespace zro {

using ZroCommon::UnicodeString;

/// Which resources a document may bring in: DTDs and external entities.
enum class External : std::uint8_t {
    None,
    Local,   ///< files, and entries of packages that are files
    Remote,  ///< anything that can be opened
};

/// What a document asked for and did not get.
struct MissingResource {
    UnicodeString uri;
    bool isDenied = false;  ///< nobody tried to open it
    UnicodeString failure;  ///< what the library said when it did not open; mostly nothing
};

/// Stands at the library's one door to resources: counts the bytes of the document, keeps the
/// document from fetching what it may not, and knows what could not be opened.
///
/// What is denied reads as an empty comment, so that parsing goes on without it. Installed for the
/// process while it lives.
class ResourceGate : public ZroCommon::ZRUriReferenceResolver {
public:
    explicit ResourceGate(External allowed);
    ResourceGate(const ResourceGate&) = delete;
    ResourceGate& operator=(const ResourceGate&) = delete;
    ~ResourceGate() override;

    /// Says that the next resource to be opened is the document itself, which is always allowed.
    /// \param count  gets the number of its bytes read so far
    void expectDocument(std::function<void(std::uint64_t)> count);
    /// Says that the document is open by other means.
    void expectNoDocument() { m_documentExpected = false; }

    /// Opens a resource by the library's own ways, without count or denial. Null when it cannot be.
    std::unique_ptr<std::istream> openFreely(const ZroCommon::ZRUri& uri);

    /// What the library said when it last opened nothing by `openFreely`, or for the document.
    const UnicodeString& failure() const { return m_failure; }

    /// What was missing since the last call, without repetition. Files are not among it unless
    /// they were denied: that one is not there is an error of the library's own.
    std::vector<MissingResource> takeMissing();
    /// Forgets the last one if it has this URI, as an error tells it. \return its `failure`
    UnicodeString takeFailure(const UnicodeString& uri);

    std::istream* getStream(const UnicodeString& uri) override;

private:
    bool isAllowed(const UnicodeString& uri) const;
    std::istream* openAllowed(const UnicodeString& uri);
    bool isPartOfLast(const UnicodeString& uri) const;
    void remember(MissingResource missing);

    External m_allowed;
    bool m_documentExpected = false;
    bool m_open = false;  // everything passes
    std::function<void(std::uint64_t)> m_count;
    std::vector<MissingResource> m_missing;
    std::set<UnicodeString> m_missingUris;
    UnicodeString m_failure;
    ZRUriReferenceResolver* m_previous;
};

}  // namespace zro
