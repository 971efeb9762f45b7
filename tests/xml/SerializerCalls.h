#pragma once

#include <functional>
#include <sstream>
#include <string>

#include "tests/support/Text.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/xml/internal/XmlSerializerImpl.h"

namespace ZroCommon::testing {

using Calls = std::function<void(ZRXmlSerializer&)>;

inline ZRName name(const char* utf8Text) {
    return {text(utf8Text)};
}

inline const ZRName kNone;

/// What the calls write into a stream that was just set.
inline std::string written(const Calls& calls, const char16_t* encoding = u"UTF-8") {
    std::ostringstream stream;
    const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
    serializer->setGenerator({});
    serializer->setOutput(stream, encoding);
    calls(*serializer);
    return stream.str();
}

}  // namespace ZroCommon::testing
