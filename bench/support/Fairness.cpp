#include "bench/support/Fairness.h"

#include <stdexcept>

namespace ZroCommon::bench {
namespace {

std::string describe(const std::string& contender, const Tally& tally) {
    return contender + " saw " + std::to_string(tally.elements) + " elements, "
           + std::to_string(tally.attributes) + " attributes, " + std::to_string(tally.units)
           + " units";
}

}  // namespace

void Fairness::check(const std::string& contender, Form form, const Tally& tally) {
    for (const Seen& other : m_seen) {
        const bool sameNodes =
            other.tally.elements == tally.elements && other.tally.attributes == tally.attributes;
        const bool sameText = other.form != form || other.tally.units == tally.units;
        if (!sameNodes || !sameText) {
            throw std::runtime_error(describe(contender, tally) + "; "
                                     + describe(other.contender, other.tally));
        }
    }
    m_seen.push_back({contender, form, tally});
}

}  // namespace ZroCommon::bench
