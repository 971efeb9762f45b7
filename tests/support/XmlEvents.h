#pragma once

#include <istream>
#include <memory>
#include <regex>
#include <sstream>
#include <string_view>
#include <vector>

#include "tests/support/FakeWeb.h"
#include "tests/support/Test.h"
#include "zro/foundation/ZRError.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/uri/ZRUri.h"
#include "zro/xml/ZRXmlUtil.h"

namespace ZroCommon::testing {

/// How a document is to be read.
struct XmlReading {
    bool tokens = false;     ///< by `nextToken`
    bool tolerant = false;   ///< errors go to a callback and stand among the events
    bool positions = false;  ///< each event is followed by "@line:column"
    std::vector<ZRXmlParser::Feature> features{};
    const char16_t* encoding = u"";
    const char16_t* baseUri = u"";
};

inline std::string visible(const UnicodeString& text) {
    if (text.isBogus()) {
        return "(bogus)";
    }
    std::string result;
    for (const char c : utf8(text)) {
        switch (c) {
        case '\n': result += "\\n"; break;
        case '\r': result += "\\r"; break;
        case '\t': result += "\\t"; break;
        case '\0': result += "\\0"; break;
        default: result += c; break;
        }
    }
    return result;
}

inline std::string qualified(ZRName prefix, ZRName name) {
    return prefix.isEmpty() ? utf8(name.toString())
                            : utf8(prefix.toString()) + ":" + utf8(name.toString());
}

/// "<a b=1 p:c=2>", with a slash in front of the ">" of an empty element.
inline std::string startTag(const ZRXmlParser& parser) {
    std::string result = "<" + qualified(parser.getPrefix(), parser.getName());
    for (int i = 0; i < parser.getAttributeCount(); ++i) {
        result += " " + qualified(parser.getAttributePrefix(i), parser.getAttributeName(i)) + "="
                  + visible(parser.getAttributeValue(i));
    }
    return result + (parser.isEmptyElementTag() ? "/>" : ">");
}

/// One event: tags as such, text as 'text', the rest by kind, the end as ".".
inline std::string xmlEvent(const ZRXmlParser& parser) {
    const std::string text = visible(parser.getText());
    switch (parser.getEventType()) {
    case ZRXmlParser::START_DOCUMENT: return "start";
    case ZRXmlParser::END_DOCUMENT: return ".";
    case ZRXmlParser::START_TAG: return startTag(parser);
    case ZRXmlParser::END_TAG: return "</" + qualified(parser.getPrefix(), parser.getName()) + ">";
    case ZRXmlParser::TEXT: return "'" + text + "'";
    case ZRXmlParser::CDSECT: return "cdata'" + text + "'";
    case ZRXmlParser::ENTITY_REF: return "&" + utf8(parser.getName().toString()) + "'" + text + "'";
    case ZRXmlParser::IGNORABLE_WHITESPACE: return "space'" + text + "'";
    case ZRXmlParser::PROCESSING_INSTRUCTION: return "pi'" + text + "'";
    case ZRXmlParser::COMMENT: return "comment'" + text + "'";
    case ZRXmlParser::DOCDECL: return "doctype";
    }
    return "?";
}

/// A parser at the start of a document of its own.
class OwnParser {
public:
    explicit OwnParser(const std::string& document, const char16_t* baseUri = u"")
        : m_stream(document) {
        m_parser->setInput(m_stream, u"", baseUri);
    }

    ZRXmlParser* operator->() const { return m_parser.get(); }
    ZRXmlParser& operator*() const { return *m_parser; }

    /// From now on errors are counted and else passed over.
    void countErrors(int& count) const {
        m_parser->setCallbackError([](const ZRError&, void* data) { ++*static_cast<int*>(data); },
                                   &count);
    }
    void readToEnd() const {
        while (m_parser->next() != ZRXmlParser::END_DOCUMENT) {
        }
    }

private:
    std::istringstream m_stream;
    ZRPtr<ZRXmlParser> m_parser = ZRXmlUtil::createXmlParser();
};

/// Collects events and errors in one line, two blanks between them.
class XmlEventLog {
public:
    XmlEventLog(ZRXmlParser& parser, const XmlReading& reading)
        : m_parser(parser), m_reading(reading) {
        if (reading.tolerant) {
            parser.setCallbackError(&XmlEventLog::noteError, this);
        }
        for (const ZRXmlParser::Feature feature : reading.features) {
            parser.setFeature(feature, true);
        }
    }

    /// Reads to the end, or to a thrown error, which is the last entry.
    std::string read() {
        try {
            do {
                m_reading.tokens ? m_parser.nextToken() : m_parser.next();
                add(xmlEvent(m_parser));
            } while (m_parser.getEventType() != ZRXmlParser::END_DOCUMENT);
        } catch (const ZRError& error) {
            add("throws " + describe(error));
        }
        return m_log;
    }

    void add(const std::string& entry) {
        m_log += (m_log.empty() ? "" : "  ") + entry;
        if (m_reading.positions) {
            m_log += "@" + std::to_string(m_parser.getLineNumber()) + ":"
                     + std::to_string(m_parser.getColumnNumber());
        }
    }

    /// "6145 Missing end tag. @START_TAG 1:2", where the message ends with a description of the
    /// position in words.
    static std::string describe(const ZRError& error) {
        static const std::regex s_position(R"(\\n(\w+), Line (\d+), Col (\d+)\.$)");
        return std::to_string(error.getErrorCode()) + " "
               + std::regex_replace(visible(error.getRawMessage()), s_position, " @$1 $2:$3");
    }

private:
    static void noteError(const ZRError& error, void* log) {
        static_cast<XmlEventLog*>(log)->add("[" + describe(error) + "]");
    }

    ZRXmlParser& m_parser;
    const XmlReading& m_reading;
    std::string m_log;
};

inline std::string xmlEvents(std::istream& stream, const XmlReading& reading = {}) {
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    XmlEventLog log(*parser, reading);
    try {
        parser->setInput(stream, reading.encoding, reading.baseUri);
    } catch (const ZRError& error) {
        return "throws " + XmlEventLog::describe(error);
    }
    return log.read();
}

inline std::string xmlEvents(std::string_view document, const XmlReading& reading = {}) {
    std::istringstream stream{std::string(document)};
    return xmlEvents(stream, reading);
}

/// Documents, and what `xmlEvents` says of each.
inline void expectEvents(Rows<const char*, const char*> rows, const XmlReading& reading = {}) {
    for (const auto& [document, events] : rows) {
        EXPECT_EQ(xmlEvents(document, reading), events) << "for: " << document;
    }
}

}  // namespace ZroCommon::testing
