#pragma once

#include <string>

#include "bench/peers/Contenders.h"

namespace ZroCommon::bench {

/// Holds that every contender saw the same document: equal elements and attributes, and equal
/// units within one form of text.
class Fairness {
public:
    /// \throws std::runtime_error  when the tally differs from that of an earlier contender
    void check(const std::string& contender, Form form, const Tally& tally);

private:
    struct Seen {
        std::string contender;
        Form form;
        Tally tally;
    };
    std::vector<Seen> m_seen;
};

}  // namespace ZroCommon::bench
