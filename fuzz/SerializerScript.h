#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

#include "tests/support/Text.h"
#include "zro/foundation/ZRError.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/xml/ZRXmlUtil.h"

namespace ZroCommon::fuzzing {

using testing::utf8;

/// Bytes as a row of decisions; behind their end every decision is 0.
class Decisions {
public:
    explicit Decisions(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    bool atEnd() const { return m_bytes.empty(); }

    /// A number below `bound`, which is at most 256.
    std::size_t below(std::size_t bound) {
        if (atEnd()) {
            return 0;
        }
        const std::size_t chosen = m_bytes.front() % bound;
        m_bytes = m_bytes.subspan(1);
        return chosen;
    }

    template <class T, std::size_t kCount>
    const T& oneOf(const std::array<T, kCount>& choices) {
        return choices[below(kCount)];
    }

private:
    std::span<const std::uint8_t> m_bytes;
};

/// Any calls in any order, with names and texts that XML knows nothing of. Errors are for the
/// caller of the serializer to make, so they pass.
inline void makeWildCalls(Decisions decisions) {
    static constexpr std::array<const char16_t*, 8> kTexts = {
        u"",         u"a", u"p", u"xmlns", u"urn:1", u"--]]>?&<\"'", u"\u3042\xD800\uFFFF\xE9",
        u"shift_jis"};
    std::ostringstream stream;
    const ZRPtr<ZRXmlSerializer> serializer = ZRXmlUtil::createXmlSerializer();
    ZRXmlSerializer& s = *serializer;
    while (!decisions.atEnd()) {
        const std::size_t call = decisions.below(24);
        const UnicodeString t(decisions.oneOf(kTexts));
        const ZRName n1(UnicodeString(decisions.oneOf(kTexts)));
        const ZRName n2(UnicodeString(decisions.oneOf(kTexts)));
        try {
            switch (call) {
            case 0: s.setOutput(stream, t); break;
            case 1: s.startDocument(t, n1); break;
            case 2: s.endDocument(); break;
            case 3: s.setPrefix(n1, n2); break;
            case 4: s.getPrefix(n1, true); break;
            case 5: s.startTag(n1, n2); break;
            case 6: s.attribute(n1, n2, t); break;
            case 7: s.attribute(n1, n2, ZRName(t), t); break;
            case 8: s.attribute(ZRN_ns_xmlns, n1, n2, t); break;
            case 9: s.endTag(n1, n2); break;
            case 10: s.endTag(s.getNamespace(), s.getName()); break;
            case 11: s.text(t); break;
            case 12: s.text(t.getBuffer(), 0, t.length()); break;
            case 13: s.cdsect(t); break;
            case 14: s.entityRef(t); break;
            case 15: s.processingInstruction(t); break;
            case 16: s.comment(t); break;
            case 17: s.docdecl(t); break;
            case 18: s.ignorableWhitespace(t); break;
            case 19: s.flush(); break;
            case 20: s.setGenerator(t); break;
            case 21: stream.setstate(std::ios_base::badbit); break;
            case 22: stream.clear(); break;
            default: s.startTag(n1, n2, ZRName(t)); break;
            }
        } catch (const ZRError&) {
        }
    }
}

/// A document of sensible calls, and what a parser has to find in it.
class SensibleDocument {
public:
    explicit SensibleDocument(Decisions decisions, bool isShiftJis = false)
        : m_decisions(decisions) {
        m_serializer->setOutput(m_stream, isShiftJis ? u"Shift_JIS" : u"UTF-8");
        if (!isShiftJis) {  // a declaration would be wrong once the bytes have been converted
            m_serializer->startDocument(UnicodeString(), UnicodeString());
        }
        write();
        m_bytes = m_stream.str();
        if (isShiftJis) {
            m_bytes =
                utf8(UnicodeString(m_bytes.data(), static_cast<int32_t>(m_bytes.size()), "cp932"));
        }
    }

    /// In UTF-8, whatever it was written in.
    const std::string& bytes() const { return m_bytes; }
    const std::string& expected() const { return m_expected; }

private:
    // An attribute's prefix stands for one namespace only, and no element has it: else one tag
    // could declare a prefix twice. The last namespace is never a default one.
    static constexpr std::array<const char16_t*, 3> kUris = {u"urn:1", u"urn:2&\"", u"urn:3"};
    static constexpr std::array<const char16_t*, 3> kAttributePrefixes = {u"a1", u"a2", u"a3"};
    static constexpr std::array<const char16_t*, 3> kElementPrefixes = {u"e1", u"e2", u""};
    static constexpr std::array<const char16_t*, 8> kTexts = {
        u"x", u"", u"&<>\"'", u"]]>", u"two words", u"\u3042\U0001F600", u"\xE9t\xE9", u"--?>"};

    static ZRName name(const char16_t* text) { return {UnicodeString(text)}; }

    void write() {
        startElement();
        while (!m_decisions.atEnd()) {
            writePiece();
        }
        while (m_serializer->getDepth() > 0) {
            endElement();
        }
        m_serializer->endDocument();
    }

    void writePiece() {
        switch (m_decisions.below(8)) {
        case 0:
        case 1: return startElement();
        case 2: return m_serializer->getDepth() > 1 ? endElement() : writeText();
        case 3: return m_serializer->comment(u" comment ");
        case 4: return m_serializer->processingInstruction(u"target data");
        case 5: m_text += "<&>"; return m_serializer->cdsect(u"<&>");
        case 6: m_text += "&"; return m_serializer->entityRef(u"amp");
        default: return writeText();
        }
    }

    void startElement() {
        flushText();
        const std::size_t uri = m_decisions.below(kUris.size() + 1);
        const ZRName local = name(m_decisions.below(2) == 0 ? u"block" : u"inline");
        if (uri == kUris.size()) {
            m_serializer->startTag(ZRName(), ZRName(), local);
        } else if (m_decisions.below(3) == 0) {
            m_serializer->startTag(name(kUris[uri]), local);
        } else {
            const std::size_t prefixes = uri + 1 < kUris.size() ? 3 : 2;
            const ZRName prefix = name(kElementPrefixes[m_decisions.below(prefixes)]);
            m_serializer->startTag(name(kUris[uri]), prefix, local);
        }
        m_expected += "<{" + (uri < kUris.size() ? utf8(kUris[uri]) : "") + "}" + utf8(local);
        for (std::size_t count = m_decisions.below(4); count > 0; --count) {
            writeAttribute(
                name((u"n" + std::u16string(1, static_cast<char16_t>(u'0' + count))).c_str()));
        }
        m_expected += ">";
    }

    void writeAttribute(ZRName local) {
        const UnicodeString value(m_decisions.oneOf(kTexts));
        const std::size_t uri = m_decisions.below(kUris.size() + 2);
        ZRName namespaceUri;
        if (uri < kUris.size()) {
            namespaceUri = name(kUris[uri]);
            m_serializer->attribute(namespaceUri, name(kAttributePrefixes[uri]), local, value);
        } else {
            namespaceUri = uri == kUris.size() ? name(kUris.back()) : ZRName();
            m_serializer->attribute(namespaceUri, local, value);
        }
        m_expected += " {" + utf8(namespaceUri) + "}" + utf8(local) + "=" + utf8(value);
    }

    void endElement() {
        flushText();
        m_serializer->endTag(m_serializer->getNamespace(), m_serializer->getName());
        m_expected += "</>";
    }

    void writeText() {
        const UnicodeString text(m_decisions.oneOf(kTexts));
        m_serializer->text(text);
        m_text += utf8(text);
    }

    void flushText() {
        m_expected += m_text.empty() ? "" : "[" + m_text + "]";
        m_text.clear();
    }

    Decisions m_decisions;
    std::ostringstream m_stream;
    ZRPtr<ZRXmlSerializer> m_serializer = ZRXmlUtil::createXmlSerializer();
    std::string m_bytes;
    std::string m_expected;
    std::string m_text;  // since the last tag
};

inline std::string startTagOf(const ZRXmlParser& parser) {
    std::string tag = "<{" + utf8(parser.getNamespace()) + "}" + utf8(parser.getName());
    for (int i = 0; i < parser.getAttributeCount(); ++i) {
        if (parser.getAttributeNamespace(i) != ZRN_ns_xmlns) {
            tag += " {" + utf8(parser.getAttributeNamespace(i)) + "}"
                   + utf8(parser.getAttributeName(i)) + "=" + utf8(parser.getAttributeValue(i));
        }
    }
    return tag + ">";
}

inline std::string eventOf(const ZRXmlParser& parser) {
    switch (parser.getEventType()) {
    case ZRXmlParser::START_TAG: return startTagOf(parser);
    case ZRXmlParser::END_TAG: return "</>";
    default: return parser.getText().isEmpty() ? "" : "[" + utf8(parser.getText()) + "]";
    }
}

/// What a parser finds in a document, in the form of `SensibleDocument::expected`, or what it says
/// to it.
inline std::string parsedBack(const std::string& bytes) try {
    std::istringstream stream(bytes);
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setInput(stream, UnicodeString(), UnicodeString());
    std::string found;
    while (parser->next() != ZRXmlParser::END_DOCUMENT) {
        found += eventOf(*parser);
    }
    return found;
} catch (const ZRError& error) {
    return "error: " + utf8(error.getMessage());
}

}  // namespace ZroCommon::fuzzing
