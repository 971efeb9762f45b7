#include "tools/zro/ElementPath.h"

#include <algorithm>
#include <iterator>

#include "tools/zro/Names.h"

namespace zro {

using ZroCommon::ZRXmlParser;

void ElementPath::follow(const ZRXmlParser& parser) {
    switch (parser.getEventType()) {
    case ZRXmlParser::START_TAG:
        m_open.push_back({parser.getPrefix(), parser.getName(), parser.getLineNumber()});
        break;
    case ZRXmlParser::END_TAG:
        if (!m_open.empty()) {
            m_open.pop_back();
        }
        break;
    default: break;
    }
}

std::vector<OpenElement> ElementPath::elements() const {
    std::vector<OpenElement> result;
    std::transform(m_open.begin(), m_open.end(), std::back_inserter(result),
                   [](const Entry& entry) {
                       return OpenElement{qualifiedName(entry.prefix, entry.name), entry.line};
                   });
    return result;
}

}  // namespace zro
