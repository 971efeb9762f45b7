#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "zro/containers/ole/internal/PropertyReader.h"

namespace ZroCommon::internal {

/// Where a property lies.
struct PropertyRecord {
    std::uint32_t id = 0;
    std::uint32_t offset = 0;  ///< from the start of the section
    std::uint32_t type = 0;    ///< for property 0 the number of entries of the dictionary
    std::uint32_t dataPosition = 0;
};

/// A section of a property set.
struct PropertySection {
    std::vector<PropertyRecord> properties;
    bool hasDictionary = false;
    std::set<std::uint32_t> hyperlinkIds;  ///< those that the dictionary names "_PID_HLINKS"
};

/// Parses a property set from where the stream stands, and goes to the end of its section table.
/// \param sections  takes what was whole ahead of the damage as well
/// \return false for a damaged one, also for one that lists more than its bytes have room for
bool parsePropertySet(PropertyReader& reader, std::vector<PropertySection>& sections);

}  // namespace ZroCommon::internal
