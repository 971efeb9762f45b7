// Serves a document and all that belongs to it out of memory: a resolver answers for the names that
// begin with "memory:", and whatever else is named opens as ever.
//
//     serve_from_memory
#include <iostream>
#include <istream>
#include <map>
#include <string>

#include <zro/ZroCommon.h>

namespace zro = ZroCommon;

namespace {

std::string utf8(const zro::UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

class MemoryResolver : public zro::ZRUriReferenceResolver {
public:
    MemoryResolver() : m_previous(zro::ZRUri::setUriReferenceResolver(this)) {}
    MemoryResolver(const MemoryResolver&) = delete;
    MemoryResolver& operator=(const MemoryResolver&) = delete;
    ~MemoryResolver() override { zro::ZRUri::setUriReferenceResolver(m_previous); }

    void add(const std::string& uri, const std::string& bytes) { m_resources[uri] = bytes; }

    /// Null sends the library on its own way; a stream becomes the caller's, who deletes it.
    std::istream* getStream(const zro::UnicodeString& uri) override {
        const auto found = m_resources.find(utf8(uri));
        if (found == m_resources.end()) {
            return nullptr;
        }
        return new zro::ZRStrStream(found->second.data(), found->second.size());
    }

private:
    std::map<std::string, std::string> m_resources;
    zro::ZRUriReferenceResolver* m_previous;
};

}  // namespace

int main() {
    MemoryResolver resolver;
    resolver.add("memory:/docs/letter.xml",
                 "<!DOCTYPE letter SYSTEM '../dtd/letter.dtd' [<!ENTITY body SYSTEM 'body.xml'>]>"
                 "<letter>&greeting; &body;</letter>");
    resolver.add("memory:/docs/body.xml", "<p>All of this was in memory.</p>");
    resolver.add("memory:/dtd/letter.dtd", "<!ENTITY greeting 'Dear reader,'>");
    try {
        const zro::ZRPtr<zro::ZRDocument> document = new zro::ZRDocument;
        document->load(u"memory:/docs/letter.xml");
        std::cout << utf8(document->getDocumentElement()->getInnerText()) << "\n";
    } catch (const zro::ZRError& error) {
        std::cerr << utf8(error.getMessage()) << "\n";
        return 1;
    }
    return 0;
}
