// Any text as a URI, opened through a resolver that serves the rest of the input under every name
// but those of entries: nothing of it reaches a file or the network. What is found in packages has
// to be what a walk by the classes for packages finds.
#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "tests/support/Streams.h"
#include "zro/containers/zip/ZRZipFile.h"
#include "zro/streams/ZRMemStream.h"
#include "zro/uri/ZRUri.h"
#include "zro/uri/ZRUriReferenceResolver.h"

#include "fuzz/Input.h"

namespace {

using namespace ZroCommon;
using fuzzing::require;
using testing::ShortReadBuf;
using testing::ThrowAtBuf;

constexpr std::size_t kEnough = 1U << 18U;  // of what an entry expands to

/// A stream with a buffer of its own.
template <class Buffer>
class Served : public std::istream {
public:
    template <class... Arguments>
    explicit Served(Arguments&&... arguments) : std::istream(nullptr), m_buffer(arguments...) {
        rdbuf(&m_buffer);
    }

private:
    Buffer m_buffer;
};

/// Serves one text under every name; entries are left to the library.
class FakeResolver : public ZRUriReferenceResolver {
public:
    enum class Way : std::uint8_t { Whole, Pieces, Throwing, Entries };

    FakeResolver(std::string bytes, Way way, std::size_t throwAt)
        : m_bytes(std::move(bytes)), m_way(way), m_throwAt(throwAt) {
        ZRUri::setUriReferenceResolver(this);
    }
    FakeResolver(const FakeResolver&) = delete;
    FakeResolver& operator=(const FakeResolver&) = delete;
    ~FakeResolver() override { ZRUri::setUriReferenceResolver(nullptr); }

    std::istream* getStream(const UnicodeString& uri) override {
        ++m_asked;
        if (m_way != Way::Entries && ZRUri(uri, URISTR_GUESS).isJarScheme()) {
            return nullptr;
        }
        switch (m_way) {
        case Way::Pieces: return new Served<ShortReadBuf>(m_bytes, std::size_t{3});
        case Way::Throwing: return new Served<ThrowAtBuf>(m_bytes, m_throwAt);
        default: return new std::istringstream(m_bytes);
        }
    }

    bool wasAsked() const { return m_asked != 0; }
    const std::string& bytes() const { return m_bytes; }

private:
    std::string m_bytes;
    Way m_way;
    std::size_t m_throwAt;
    int m_asked = 0;
};

std::string startOf(std::istream& stream) {
    std::string bytes(kEnough, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

/// "nothing", or a "+" and the content.
std::string contentOf(std::istream* opened) {
    const std::unique_ptr<std::istream> stream(opened);
    return stream == nullptr ? "nothing" : "+" + startOf(*stream);
}

// Package by package, each held in memory.
std::string walked(const std::string& bytes, const UnicodeString& uri) {
    auto stream = std::unique_ptr<std::istream>(std::make_unique<std::istringstream>(bytes));
    int32_t start = uri.indexOf(u"!/") + 2;
    while (start >= 2 && start < uri.length()) {
        const int32_t end = uri.indexOf(u"!/", start);
        const UnicodeString name(uri, start, (end < 0 ? uri.length() : end) - start);
        ZRMemStream memory(stream.get(), 8192, false);
        if (!ZRZipFile::isZipFile(&memory)) {
            return "nothing";
        }
        const ZRZipFile package(&memory, false);
        ZRZipFileEntry* const entry = package.getFileEntry(name);
        if (entry == nullptr) {
            return "nothing";
        }
        stream.reset(entry->getUncompressedStream(true));
        start = end < 0 ? uri.length() : end + 2;
    }
    return "+" + startOf(*stream);
}

void open(const ZRUri& uri, FakeResolver::Way way, const FakeResolver& resolver) {
    UnicodeString type(u"kept");
    UnicodeString error(u"kept");
    const std::string content = contentOf(uri.getStream(&type, &error));
    require(resolver.wasAsked());
    require(error == u"kept" && (type == u"kept" || type.isEmpty()));
    require(contentOf(uri.getStream(nullptr)) == content);
    const bool isWhole = way == FakeResolver::Way::Whole;
    if (isWhole && uri.isJarScheme()) {
        require(content == walked(resolver.bytes(), uri.toString()));
    } else if (way != FakeResolver::Way::Throwing && !uri.isJarScheme()) {
        require(content == "+" + resolver.bytes());
    }
    // A stream that throws says nothing of what it read before.
    require(!uri.isGzip() || way == FakeResolver::Way::Throwing
            || content.starts_with("+\x1F\x8B"));
    if (const std::unique_ptr<std::istream> stream(uri.getStream(nullptr)); stream != nullptr) {
        contentOf(ZRUri::getGzipStream(*stream));
    }
}

}  // namespace

// A byte of the way, one of where to throw, the URI up to a line feed, and what is served.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    const std::size_t end = all.find('\n', 2);
    if (end == all.npos) {
        return 0;
    }
    const auto way = static_cast<FakeResolver::Way>(data[0] & 3U);
    const auto type = static_cast<URISTRTYPE>(data[0] >> 2U & 3U);
    const FakeResolver resolver(std::string(all.substr(end + 1)), way, data[1]);
    const UnicodeString text = fuzzing::utf16({data + 2, end - 2});
    open(ZRUri(text, type), way, resolver);
    open(ZRUri(ZRUri(u"jar:x:p.zip!/d/a", URISTR_GUESS), text, type), way, resolver);
    return 0;
}
