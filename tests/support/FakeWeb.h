#pragma once

#include <istream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Text.h"
#include "zro/uri/ZRUri.h"

namespace ZroCommon::testing {

/// Serves URIs from a table while it lives; all others are left to the library.
class FakeWeb : public ZRUriReferenceResolver {
public:
    using Resources = std::map<std::string, std::string>;

    explicit FakeWeb(Resources resources)
        : m_resources(std::move(resources)), m_before(ZRUri::setUriReferenceResolver(this)) {}
    FakeWeb(const FakeWeb&) = delete;
    FakeWeb& operator=(const FakeWeb&) = delete;
    ~FakeWeb() override { ZRUri::setUriReferenceResolver(m_before); }

    std::istream* getStream(const UnicodeString& uri) override {
        m_asked.push_back(utf8(uri));
        const auto found = m_resources.find(utf8(uri));
        return found == m_resources.end() ? nullptr : open(found->second);
    }

    const std::vector<std::string>& asked() const { return m_asked; }

protected:
    virtual std::istream* open(const std::string& bytes) { return new std::istringstream(bytes); }

private:
    Resources m_resources;
    ZRUriReferenceResolver* m_before;
    std::vector<std::string> m_asked;
};

}  // namespace ZroCommon::testing
