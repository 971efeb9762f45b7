#pragma once

#include <atomic>
#include <cstdint>

#include "zro/foundation/Export.h"

namespace ZroCommon {

/// Opt-in guards against resources that are made to exhaust whoever opens them.
///
/// A plain value that is set for the process: what is opened afterwards goes by it. 0 means no
/// limit, and so it is at the start. A breach looks like any fault of a resource: a stream ends
/// early, an entry is not there, an address cannot be opened.
struct ZRResourceLimits {
    /// Bytes that one gzip member or deflate block expands to.
    std::uint64_t expandedBytes = 0;
    /// The same as a multiple of the packed bytes, looked at beyond `expansionGrace`.
    std::uint32_t expansionFactor = 0;
    /// Bytes that may come of anything, so that small pictures and sheets are not refused.
    std::uint64_t expansionGrace = std::uint64_t{1} << 20U;

    /// Entries of one package that are read, from its start on.
    std::uint32_t packageEntries = 0;

    /// Bytes of one answer from the network.
    std::uint64_t fetchedBytes = 0;
    /// Seconds from a request to the end of its answer, what the reader does meanwhile included.
    std::uint32_t fetchSeconds = 0;
    /// Seconds in which nothing comes from the network.
    std::uint32_t idleSeconds = 0;
    /// Set to true, from any thread, to end all waiting for the network. Not owned, may be null;
    /// lives as long as anything that was fetched under it.
    const std::atomic<bool>* cancelFlag = nullptr;

    /// What suits resources from strangers: entries of just under 4 GiB and 100 times their packed
    /// size, 10,000 of them; 256 MiB from the network within a minute, and not 10 seconds without
    /// a byte.
    static constexpr ZRResourceLimits strict() {
        ZRResourceLimits limits;
        limits.expandedBytes = 0xFFFFFFFF;
        limits.expansionFactor = 100;
        limits.packageEntries = 10000;
        limits.fetchedBytes = std::uint64_t{256} << 20U;
        limits.fetchSeconds = 60;
        limits.idleSeconds = 10;
        return limits;
    }

    /// What goes for the process; from any thread.
    ZRO_API static ZRResourceLimits getCurrent();
    ZRO_API static void setCurrent(const ZRResourceLimits& limits);
};

}  // namespace ZroCommon
