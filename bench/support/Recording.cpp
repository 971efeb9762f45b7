#include "bench/support/Recording.h"

#include "zro/xml/ZRXmlUtil.h"

#include "bench/support/MemoryBuffers.h"

namespace ZroCommon::bench {
namespace {

std::string utf8(const UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

WriteEvent tagEvent(WriteEvent::Kind kind, const ZRXmlParser& parser) {
    return {kind, utf8(parser.getNamespace()), utf8(parser.getPrefix()), utf8(parser.getName()),
            std::string()};
}

void addStart(const ZRXmlParser& parser, std::vector<WriteEvent>& events) {
    events.push_back(tagEvent(WriteEvent::Kind::Start, parser));
    for (int index = 0; index < parser.getAttributeCount(); ++index) {
        events.push_back({WriteEvent::Kind::Attribute, utf8(parser.getAttributeNamespace(index)),
                          utf8(parser.getAttributePrefix(index)),
                          utf8(parser.getAttributeName(index)),
                          utf8(parser.getAttributeValue(index))});
    }
}

}  // namespace

std::vector<WriteEvent> recordEvents(std::string_view document) {
    ViewStream in(document);
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setInput(in, UnicodeString(), UnicodeString());
    std::vector<WriteEvent> events;
    for (;;) {
        switch (parser->next()) {
        case ZRXmlParser::START_TAG: addStart(*parser, events); break;
        case ZRXmlParser::END_TAG:
            events.push_back(tagEvent(WriteEvent::Kind::End, *parser));
            break;
        case ZRXmlParser::TEXT:
            events.push_back({WriteEvent::Kind::Text, {}, {}, {}, utf8(parser->getText())});
            break;
        default: return events;
        }
    }
}

}  // namespace ZroCommon::bench
