#pragma once

#include <regex>
#include <sstream>
#include <string>

#include "tests/support/Test.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/xml/internal/XmlSerializerImpl.h"

namespace ZroCommon::testing {

inline ZRName name(const std::string& utf8Text) {
    return {text(utf8Text)};
}

inline const ZRName kNone;

/// A serializer, and what it has written as a text.
class Writing {
public:
    /// \param encoding  null for a serializer without an output
    explicit Writing(const char16_t* encoding = u"UTF-8") {
        m_serializer->setGenerator({});
        if (encoding != nullptr) {
            m_serializer->setOutput(m_stream, encoding);
        }
    }

    ZRXmlSerializer* operator->() const { return m_serializer.get(); }
    ZRXmlSerializer& operator*() const { return *m_serializer; }
    operator std::string() const { return m_stream.str(); }

    Writing& text(const char16_t* units, int start, int length) {
        return m_serializer->text(units, start, length), *this;
    }

    /// Calls, with two blanks between them: "<{urn:1}p:name" starts a tag, "@{urn:1}p:name=value"
    /// sets an attribute and "/{urn:1}name" ends a tag, whose namespace and prefix may be left out;
    /// "^p=urn:1" sets a prefix; "*" and "." start and end the document; texts by their kind:
    /// "'text", "[cdata", "&reference", "?instruction", "!comment", "#doctype", " blanks".
    Writing& run(const std::string& calls) {
        for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 2) {
            end = calls.find("  ", at);
            call(calls.substr(at, end - at));
        }
        return *this;
    }

private:
    void call(const std::string& call) {
        static const std::regex s_form(R"(.(\{(.*?)\})?(([^:=]*)(:))?([^:=]*)(=([^]*))?)");
        std::smatch parts;
        std::regex_match(call, parts, s_form);
        const ZRName uri = name(parts[2].str());
        const ZRName prefix = name(parts[4].str());
        const ZRName local = name(parts[6].str());
        const UnicodeString value = testing::text(parts[8].str());
        const UnicodeString rest = testing::text(call.substr(1));
        const bool hasPrefix = parts[5].matched;
        ZRXmlSerializer& s = *m_serializer;
        switch (call[0]) {
        case '*': return s.startDocument(u"", u"");
        case '.': return s.endDocument();
        case '<': return hasPrefix ? s.startTag(uri, prefix, local) : s.startTag(uri, local);
        case '@':
            return hasPrefix ? s.attribute(uri, prefix, local, value)
                             : s.attribute(uri, local, value);
        case '/': return s.endTag(uri, local);
        case '^': return s.setPrefix(local, ZRName(value));
        case '\'': return s.text(rest);
        case '[': return s.cdsect(rest);
        case '&': return s.entityRef(rest);
        case '?': return s.processingInstruction(rest);
        case '!': return s.comment(rest);
        case '#': return s.docdecl(rest);
        default: return s.ignorableWhitespace(rest);
        }
    }

    std::ostringstream m_stream;
    ZRPtr<ZRXmlSerializer> m_serializer{new internal::XmlSerializerImpl};
};

}  // namespace ZroCommon::testing
