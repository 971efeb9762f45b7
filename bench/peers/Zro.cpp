// This library: pull parser, serializer, and the way to the first element. Its tree: ZroTree.cpp.

#include <fstream>
#include <memory>
#include <ostream>

#include "zro/xml/ZRXmlUtil.h"

#include "bench/peers/Contenders.h"
#include "bench/support/MemoryBuffers.h"
#include "bench/support/Timing.h"

namespace ZroCommon::bench {
namespace {

void takeElement(const ZRXmlParser& parser, Tally& tally) {
    ++tally.elements;
    keep(parser.getName());
    keep(parser.getNamespace());
    const int count = parser.getAttributeCount();
    for (int index = 0; index < count; ++index) {
        keep(parser.getAttributeName(index));
        keep(parser.getAttributeNamespace(index));
        tally.units += static_cast<std::uint64_t>(parser.getAttributeValue(index).length());
    }
    tally.attributes += static_cast<std::uint64_t>(count);
}

Tally runParser(std::string_view document) {
    ViewStream in(document);
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setInput(in, UnicodeString(), UnicodeString());
    Tally tally;
    for (;;) {
        switch (parser->next()) {
        case ZRXmlParser::START_TAG: takeElement(*parser, tally); break;
        case ZRXmlParser::TEXT:
            tally.units += static_cast<std::uint64_t>(parser->getText().length());
            break;
        case ZRXmlParser::END_DOCUMENT: return tally;
        default: break;
        }
    }
}

UnicodeString wide(const std::string& text) {
    return UnicodeString::fromUTF8(text);
}

struct OwnEvent {
    WriteEvent::Kind kind;
    ZRName namespaceUri;
    ZRName prefix;
    ZRName name;
    UnicodeString value;
};

std::vector<OwnEvent> interned(const std::vector<WriteEvent>& events) {
    std::vector<OwnEvent> result;
    result.reserve(events.size());
    for (const WriteEvent& event : events) {
        result.push_back({event.kind, wide(event.namespaceUri), wide(event.prefix),
                          wide(event.name), wide(event.value)});
    }
    return result;
}

void write(ZRXmlSerializer& serializer, const OwnEvent& event) {
    switch (event.kind) {
    case WriteEvent::Kind::Start:
        serializer.startTag(event.namespaceUri, event.prefix, event.name);
        break;
    case WriteEvent::Kind::Attribute:
        serializer.attribute(event.namespaceUri, event.prefix, event.name, event.value);
        break;
    case WriteEvent::Kind::Text: serializer.text(event.value); break;
    case WriteEvent::Kind::End: serializer.endTag(event.namespaceUri, event.name); break;
    }
}

std::function<std::size_t()> prepareWriter(const std::vector<WriteEvent>& events) {
    auto target = std::make_shared<std::string>();
    return [target, own = interned(events)] {
        target->clear();
        AppendBuffer buffer(*target);
        std::ostream out(&buffer);
        const ZRPtr<ZRXmlSerializer> serializer = ZRXmlUtil::createXmlSerializer();
        serializer->setOutput(out, u"UTF-8");
        serializer->startDocument(u"UTF-8", UnicodeString());
        for (const OwnEvent& event : own) {
            write(*serializer, event);
        }
        serializer->endDocument();
        return target->size();
    };
}

template <class Stream, class Source>
std::function<void()> firstFrom(const Source& source) {
    auto in = std::make_shared<Stream>(source);
    auto parser = std::make_shared<ZRPtr<ZRXmlParser>>();
    return [in, parser] {
        *parser = ZRXmlUtil::createXmlParser();
        (*parser)->setInput(*in, UnicodeString(), UnicodeString());
        keep((*parser)->next());
    };
}

}  // namespace

void addZro(Contenders& contenders) {
    contenders.pull.push_back({"zro", Form::Utf16, runParser});
    contenders.write.push_back({"zro", prepareWriter});
    contenders.first.push_back({"zro memory", [](const FirstInput& input) {
                                    return firstFrom<ViewStream>(input.bytes);
                                }});
    contenders.first.push_back({"zro file", [](const FirstInput& input) {
                                    return firstFrom<std::ifstream>(input.file);
                                }});
    addZroTree(contenders);
}

}  // namespace ZroCommon::bench
