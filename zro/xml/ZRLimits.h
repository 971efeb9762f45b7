#pragma once

#include <atomic>
#include <cstdint>

namespace ZroCommon {

/// Opt-in guards against documents that are made to exhaust their reader.
///
/// A plain value: fill in what you need, hand it over, keep nothing. 0 means no limit, and a new
/// object has none, so that no document is refused which the rules of XML accept. A breach ends the
/// parse with a `ZRError` of code 0x183A, "Limit exceeded: " and the name of the limit; an error
/// callback does not survive it.
struct ZRLimits {
    /// Open elements at one time. Breach: "element depth".
    std::uint32_t elementDepth = 0;

    /// Characters that entities bring in, as a multiple of the bytes read from the document's own
    /// input; looked at once they exceed `entityExpansionThreshold`. Breach: "entity expansion".
    std::uint32_t entityExpansionFactor = 0;
    /// UTF-16 units from entities, internal and external, that are always allowed.
    std::uint64_t entityExpansionThreshold = std::uint64_t{8} * 1024 * 1024;

    /// External inputs that refer to one another, from the document on. Breach: "input nesting".
    std::uint32_t inputNesting = 0;

    /// Nothing but the document itself is opened: an external entity is a breach, "external
    /// entity", and an external subset is skipped. The MathML entities, which need no opening,
    /// stay.
    bool denyExternal = false;
    /// The same without a breach: external entities are empty.
    bool skipExternal = false;

    /// Set to true, from any thread, to end the parse: "cancelled". Not owned, may be null; lives
    /// as long as the parser that has it.
    const std::atomic<bool>* cancelFlag = nullptr;

    /// What suits documents from strangers: depth 2048, expansion 100 times beyond 8 Mi units,
    /// nesting 40. External inputs stay allowed; see `denyExternal` and `skipExternal`.
    static constexpr ZRLimits strict() {
        ZRLimits limits;
        limits.elementDepth = 2048;
        limits.entityExpansionFactor = 100;
        limits.inputNesting = 40;
        return limits;
    }
};

}  // namespace ZroCommon
