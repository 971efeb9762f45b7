// Expat twice: as it comes, with pointers to UTF-8, and with what a user of interned names, UTF-16
// texts and positions would have to build on top of it.

#include <cstring>
#include <expat.h>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>

#include <unicode/unistr.h>

#include "bench/peers/Contenders.h"
#include "bench/support/MemoryBuffers.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

struct ParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<XML_ParserStruct, ParserDeleter>;

Parser makeParser(void* userData, XML_StartElementHandler start, XML_EndElementHandler end,
                  XML_CharacterDataHandler text) {
    Parser parser(XML_ParserCreateNS(nullptr, '\n'));
    XML_SetUserData(parser.get(), userData);
    XML_SetElementHandler(parser.get(), start, end);
    XML_SetCharacterDataHandler(parser.get(), text);
    return parser;
}

/// Reads one block; false at the end of the document or when a handler has stopped the parser.
bool feed(XML_Parser parser, std::istream& in, int size) {
    in.read(static_cast<char*>(XML_GetBuffer(parser, size)), size);
    const int count = static_cast<int>(in.gcount());
    const bool isLast = count < size;
    const bool isGood = XML_ParseBuffer(parser, count, isLast ? 1 : 0) == XML_STATUS_OK;
    if (!isGood && XML_GetErrorCode(parser) != XML_ERROR_ABORTED) {
        throw std::runtime_error(XML_ErrorString(XML_GetErrorCode(parser)));
    }
    return isGood && !isLast;
}

void parse(XML_Parser parser, std::string_view document) {
    constexpr int kBlock = 65536;
    ViewStream in(document);
    while (feed(parser, in, kBlock)) {
    }
}

/// UTF-8 as it comes.
class Raw {
public:
    static Tally run(std::string_view document) {
        Raw self;
        const Parser parser = makeParser(&self, start, nullptr, text);
        XML_SetNamespaceDeclHandler(parser.get(), declare, nullptr);
        parse(parser.get(), document);
        return self.m_tally;
    }

private:
    static void start(void* user, const char* name, const char** attributes) {
        Tally& tally = static_cast<Raw*>(user)->m_tally;
        ++tally.elements;
        keep(name);
        for (; *attributes != nullptr; attributes += 2) {
            ++tally.attributes;
            tally.units += std::strlen(attributes[1]);
        }
    }
    static void declare(void* user, const char* /*prefix*/, const char* uri) {
        Tally& tally = static_cast<Raw*>(user)->m_tally;
        ++tally.attributes;
        tally.units += uri == nullptr ? 0 : std::strlen(uri);
    }
    static void text(void* user, const char* /*text*/, int length) {
        static_cast<Raw*>(user)->m_tally.units += static_cast<std::uint64_t>(length);
    }

    Tally m_tally;
};

struct BytesHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>()(text);
    }
};

/// Interned names, values and whole texts as `UnicodeString`, a position for every element.
class Interned {
public:
    static Tally run(std::string_view document) {
        Interned self;
        const Parser parser = makeParser(&self, start, end, text);
        XML_SetNamespaceDeclHandler(parser.get(), declare, nullptr);
        self.m_parser = parser.get();
        parse(parser.get(), document);
        return self.m_tally;
    }

private:
    int intern(std::string_view name) {
        const auto found = m_names.find(name);
        if (found != m_names.end()) {
            return found->second;
        }
        return m_names.emplace(name, static_cast<int>(m_names.size())).first->second;
    }
    static icu::UnicodeString wide(std::string_view bytes) {
        return icu::UnicodeString::fromUTF8(
            icu::StringPiece(bytes.data(), static_cast<int32_t>(bytes.size())));
    }

    void takeText() {
        m_tally.units += static_cast<std::uint64_t>(m_text.length());
        m_text.remove();
    }
    static void start(void* user, const char* name, const char** attributes) {
        auto& self = *static_cast<Interned*>(user);
        self.takeText();
        ++self.m_tally.elements;
        keep(self.intern(name));
        keep(XML_GetCurrentLineNumber(self.m_parser));
        keep(XML_GetCurrentColumnNumber(self.m_parser));
        for (; *attributes != nullptr; attributes += 2) {
            keep(self.intern(attributes[0]));
            self.takeValue(attributes[1]);
        }
    }
    void takeValue(const char* value) {
        ++m_tally.attributes;
        m_tally.units += static_cast<std::uint64_t>(wide(value).length());
    }
    static void end(void* user, const char* /*name*/) { static_cast<Interned*>(user)->takeText(); }
    static void declare(void* user, const char* prefix, const char* uri) {
        auto& self = *static_cast<Interned*>(user);
        keep(self.intern(prefix == nullptr ? "" : prefix));
        self.takeValue(uri == nullptr ? "" : uri);
    }
    static void text(void* user, const char* text, int length) {
        static_cast<Interned*>(user)->m_text += wide({text, static_cast<std::size_t>(length)});
    }

    Tally m_tally;
    XML_Parser m_parser = nullptr;
    icu::UnicodeString m_text;
    std::unordered_map<std::string, int, BytesHash, std::equal_to<>> m_names;
};

void stopAtStart(void* user, const char* /*name*/, const char** /*attributes*/) {
    XML_StopParser(static_cast<XML_Parser>(user), XML_FALSE);
}

void readToFirst(Parser& parser, std::istream& in) {
    constexpr int kBlock = 8192;
    parser = makeParser(nullptr, stopAtStart, nullptr, nullptr);
    XML_UseParserAsHandlerArg(parser.get());
    while (feed(parser.get(), in, kBlock)) {
    }
}

template <class Stream, class Source>
std::function<void()> firstFrom(const Source& source) {
    auto in = std::make_shared<Stream>(source);
    auto parser = std::make_shared<Parser>();
    return [in, parser] {
        readToFirst(*parser, *in);
    };
}

}  // namespace

void addExpat(Contenders& contenders) {
    contenders.pull.push_back({"expat", Form::Utf8, Raw::run});
    contenders.pull.push_back({"expat-utf16", Form::Utf16, Interned::run});
    contenders.first.push_back({"expat memory", [](const FirstInput& input) {
                                    return firstFrom<ViewStream>(input.bytes);
                                }});
    contenders.first.push_back({"expat file", [](const FirstInput& input) {
                                    return firstFrom<std::ifstream>(input.file);
                                }});
}

}  // namespace ZroCommon::bench
