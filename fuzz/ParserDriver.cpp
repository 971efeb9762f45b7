#include "fuzz/ParserDriver.h"

#include <sstream>
#include <string>

#include "zro/foundation/ZRError.h"
#include "zro/uri/ZRUri.h"
#include "zro/vocabulary/ZRNameTable.h"
#include "zro/xml/ZRXmlUtil.h"
#include "zro/xml/internal/ExternalSubsetCache.h"

#include "fuzz/Input.h"

namespace ZroCommon::fuzzing {
namespace {

constexpr int kMostErrors = 64;
constexpr int kMostEvents = 200'000;

std::string_view (*s_answer)(const UnicodeString&, const void*) = nullptr;
const void* s_user = nullptr;

class FakeResolver : public ZRUriReferenceResolver {
public:
    std::istream* getStream(const UnicodeString& uri) override {
        const std::string_view bytes =
            s_answer != nullptr ? s_answer(uri, s_user) : std::string_view();
        return new std::istringstream(std::string(bytes));
    }
};

FakeResolver s_resolver;

// Behind an error that was passed over a name may be empty.
void checkAttributes(const ZRXmlParser& parser, bool faultless) {
    const int count = parser.getAttributeCount();
    require(count >= 0);
    for (int i = 0; i < count; ++i) {
        require(!faultless || !parser.getAttributeName(i).isEmpty());
        require(!parser.getAttributeValue(i).isBogus());
        parser.getAttributePrefix(i);
        parser.getAttributeNamespace(i);
    }
}

void checkNamespaces(const ZRXmlParser& parser) {
    const int count = parser.getNamespaceCount(parser.getDepth());
    require(count >= 0);
    for (int i = 0; i < count; ++i) {
        parser.getNamespace(parser.getNamespacePrefix(i));
        parser.getNamespaceUri(i);
    }
}

bool hasText(ZRXmlParser::EventType event) {
    return event == ZRXmlParser::TEXT || event == ZRXmlParser::CDSECT;
}

void checkEvent(const ZRXmlParser& parser, ZRXmlParser::EventType event, bool faultless) {
    require(parser.getEventType() == event);
    require(parser.getDepth() >= 0);
    require(parser.getLineNumber() >= 1);
    require(!parser.getPositionDescription().isEmpty());
    parser.getText();
    parser.getColumnNumber();
    parser.getBaseUri();
    checkNamespaces(parser);
    if (event == ZRXmlParser::START_TAG) {
        parser.isEmptyElementTag();
        checkAttributes(parser, faultless);
    } else {
        require(parser.getAttributeCount() == -1);
    }
    if (hasText(event)) {
        parser.isWhitespace();
    }
}

/// Depth moves by one at most as long as no error was passed over. Tags need not pair up: a stray
/// "<![x]>" gives the event before it once more.
class DepthCount {
public:
    void see(const ZRXmlParser& parser, ZRXmlParser::EventType event) {
        const int depth = parser.getDepth();
        require(std::abs(depth - m_depth) <= 1);
        require(event != ZRXmlParser::START_TAG || depth > 0);
        require(event != ZRXmlParser::END_DOCUMENT || depth == 0);
        m_depth = depth;
    }

private:
    int m_depth = 0;
};

void countError(const ZRError& error, void* user) {
    auto& count = *static_cast<int*>(user);
    if (++count > kMostErrors) {
        throw error;
    }
}

void runParser(ZRXmlParser& parser, const ParseChoice& choice, const int& errors) {
    DepthCount depth;
    for (int events = 0; events < kMostEvents; ++events) {
        const auto event = choice.tokens ? parser.nextToken() : parser.next();
        checkEvent(parser, event, errors == 0);
        if (errors == 0) {
            depth.see(parser, event);
        }
        if (event == ZRXmlParser::END_DOCUMENT) {
            require(parser.next() == ZRXmlParser::END_DOCUMENT);
            return;
        }
    }
}

}  // namespace

ParseChoice ParseChoice::from(std::string_view head) {
    ParseChoice choice;
    if (head.size() >= kBytes) {
        choice.tokens = (head[0] & 1) != 0;
        choice.tolerant = (head[0] & 2) != 0;
        choice.features = static_cast<std::uint8_t>(head[1]);
    }
    return choice;
}

Sandbox::Sandbox() {
    ZRNameTable::addRefSharedNameTable();
    ZRUri::setUriReferenceResolver(&s_resolver);
}

Sandbox::~Sandbox() {
    ZRUri::setUriReferenceResolver(nullptr);
    serve(nullptr, nullptr);
    internal::forgetExternalSubsets();  // they hold names, and would outlast this input
    ZRNameTable::releaseSharedNameTable();
}

ZRLimits smallLimits() {
    ZRLimits limits;
    limits.elementDepth = 1024;
    limits.entityExpansionFactor = 20;
    limits.entityExpansionThreshold = std::uint64_t{64} * 1024;
    limits.inputNesting = 8;
    return limits;
}

void parseAll(std::string_view document, const ParseChoice& choice) {
    std::istringstream stream{std::string(document)};
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setLimits(smallLimits());
    for (int feature = 0; feature <= ZRXmlParser::FEATURE_BUILTIN_ENCODINGS_ONLY; ++feature) {
        parser->setFeature(static_cast<ZRXmlParser::Feature>(feature),
                           ((choice.features >> feature) & 1) != 0);
    }
    int errors = 0;
    if (choice.tolerant) {
        parser->setCallbackError(countError, &errors);
    }
    try {
        parser->setInput(stream, UnicodeString(), UnicodeString(u"file:///fuzz/main.xml"));
        runParser(*parser, choice, errors);
    } catch (const ZRError& error) {
        require(error.getErrorCode() != 0);
        require(!error.getMessage().isEmpty());
    }
}

void serve(std::string_view (*answer)(const UnicodeString& uri, const void* user),
           const void* user) {
    s_answer = answer;
    s_user = user;
}

}  // namespace ZroCommon::fuzzing
