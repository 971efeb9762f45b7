#pragma once

#include <functional>
#include <sstream>

#include "tests/support/Test.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/xml/internal/XmlSerializerImpl.h"

namespace ZroCommon::testing {

inline ZRName name(const char* utf8Text) {
    return {text(utf8Text)};
}

inline const ZRName kNone;

/// Calls of a serializer in a row; as a text, what they have written. A name alone is in no
/// namespace.
class Writing {
public:
    explicit Writing(const char16_t* encoding = u"UTF-8") {
        m_serializer->setGenerator({});
        m_serializer->setOutput(m_stream, encoding);
    }

    ZRXmlSerializer* operator->() const { return m_serializer.get(); }
    ZRXmlSerializer& operator*() const { return *m_serializer; }
    operator std::string() const { return m_stream.str(); }

    template <class Operation, class... Arguments>
    Writing& call(Operation operation, const Arguments&... arguments) {
        return std::invoke(operation, *m_serializer, arguments...), *this;
    }
    Writing& document() { return call(&ZRXmlSerializer::startDocument, u"", u""); }
    Writing& start(ZRName name) { return start(kNone, name); }
    Writing& start(ZRName uri, ZRName name) { return m_serializer->startTag(uri, name), *this; }
    Writing& start(ZRName uri, ZRName prefix, ZRName name) {
        return m_serializer->startTag(uri, prefix, name), *this;
    }
    Writing& end(ZRName name) { return end(kNone, name); }
    Writing& end(ZRName uri, ZRName name) { return call(&ZRXmlSerializer::endTag, uri, name); }
    Writing& attribute(ZRName name, const UnicodeString& value) {
        return attribute(kNone, name, value);
    }
    Writing& attribute(ZRName uri, ZRName name, const UnicodeString& value) {
        return m_serializer->attribute(uri, name, value), *this;
    }
    Writing& attribute(ZRName uri, ZRName prefix, ZRName name, const UnicodeString& value) {
        return m_serializer->attribute(uri, prefix, name, value), *this;
    }
    Writing& text(const UnicodeString& text) { return m_serializer->text(text), *this; }
    Writing& text(const char16_t* units, int start, int length) {
        return m_serializer->text(units, start, length), *this;
    }

private:
    std::ostringstream m_stream;
    ZRPtr<ZRXmlSerializer> m_serializer{new internal::XmlSerializerImpl};
};

}  // namespace ZroCommon::testing
