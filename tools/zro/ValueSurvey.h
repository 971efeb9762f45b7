#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "zro/dom/ZRDocument.h"
#include "zro/vocabulary/ZRName.h"

#include "tools/zro/Session.h"

namespace zro {

/// What the properties of a document's formatting objects are read as: how often each property is a
/// name, a number of some unit and so on, and where a value is none of that.
class ValueSurvey {
public:
    using Kinds = std::map<std::string, std::uint64_t>;

    /// A value that stays an unknown string.
    struct Stray {
        int line = 0;  ///< of the element, -1 when unknown
        std::string element;
        std::string property;
        std::string text;
    };

    /// Looks at the whole tree.
    explicit ValueSurvey(ZroCommon::ZRDocument& document);

    /// By the names of the properties.
    const std::map<std::string, Kinds>& properties() const { return m_properties; }
    /// In the order of the document.
    const std::vector<Stray>& strays() const { return m_strays; }

private:
    void addElement(ZroCommon::ZRNode& element);
    void addProperty(const ZroCommon::ZRNode& element, const ZroCommon::ZRNode& attribute);

    std::map<std::string, Kinds> m_properties;
    std::vector<Stray> m_strays;
};

/// Prints the table and the list, or an object a line for each property and each stray.
void printSurvey(Session& session, const std::string& file, const ValueSurvey& survey);

}  // namespace zro
