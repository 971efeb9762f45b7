#pragma once

#include <cstddef>
#include <new>

namespace ZroCommon::internal {

/// Small blocks of memory, laid out by size in pages of one size each.
///
/// Each thread takes blocks from pages of its own without a lock. A block may be freed by any
/// thread: those of other threads' pages are collected and handed back in batches. Pages that
/// become empty go back, so the memory of a dropped tree serves other sizes and other threads; what
/// is beyond a reserve of 64 MiB goes back to the system.
class NodeSlab {
public:
    /// Larger blocks come from the global heap.
    static constexpr std::size_t kLargestBlock = 512;

    /// \throws std::bad_alloc
    static void* allocate(std::size_t size);
    /// \param size  as it was allocated
    static void free(void* memory, std::size_t size) noexcept;

    /// Gives the reserve back to the system, as far as this thread and no other keeps it.
    static void trim() noexcept;
    /// Bytes taken from the system at present, by all threads.
    static std::size_t reservedBytes() noexcept;
};

/// Memory of nodes, attributes and their texts. Slabs hide a use after free, so builds with
/// sanitizers go without.
inline void* allocateNodeMemory(std::size_t size) {
#ifdef ZRO_NO_SLABS
    return ::operator new(size);
#else
    return NodeSlab::allocate(size);
#endif
}

inline void freeNodeMemory(void* memory, [[maybe_unused]] std::size_t size) noexcept {
#ifdef ZRO_NO_SLABS
    ::operator delete(memory);
#else
    NodeSlab::free(memory, size);
#endif
}

}  // namespace ZroCommon::internal
