#pragma once

#include <vector>

#include "zro/xml/ZRXmlParser.h"

#include "tools/zro/Explain.h"

namespace zro {

/// Follows a parser's events and knows which elements are open.
class ElementPath {
public:
    void follow(const ZroCommon::ZRXmlParser& parser);

    /// Outermost first.
    std::vector<OpenElement> elements() const;

private:
    struct Entry {
        ZroCommon::ZRName prefix;
        ZroCommon::ZRName name;
        int line = 0;
    };
    std::vector<Entry> m_open;
};

}  // namespace zro
