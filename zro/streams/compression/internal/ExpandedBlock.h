#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <span>

namespace ZroCommon::internal {

/// The memory behind a get area: a block for expanded bytes, and before it room for the last few of
/// the block before, so that a reader may put them back.
class ExpandedBlock {
public:
    static constexpr std::size_t kPutback = 10;
    /// Behind each block zlib copies its window, so small ones cost more.
    static constexpr std::size_t kSize = 65536;

    /// Keeps what can still be put back of a get area that is used up. Nothing in the block
    /// changes yet, so the area stands as it is if no more bytes come.
    /// \return where the next bytes go
    std::span<char> next(const char* areaBegin, const char* areaEnd) {
        m_kept = std::min(static_cast<std::size_t>(areaEnd - areaBegin), kPutback);
        std::copy_n(areaEnd - m_kept, m_kept, m_last.begin());
        return {bytes(), kSize};
    }

    /// Keeps the end of bytes that went elsewhere, behind what `next` kept.
    void keepEndOf(std::span<const char> bytes) {
        const std::size_t count = std::min(bytes.size(), kPutback);
        const std::size_t dropped = m_kept - std::min(m_kept, kPutback - count);
        char* const end = std::copy_n(m_last.begin() + dropped, m_kept - dropped, m_last.begin());
        std::copy_n(bytes.last(count).begin(), count, end);
        m_kept += count - dropped;
    }

    /// Where the new get area begins: before what was kept.
    char* begin() { return std::copy_backward(m_last.begin(), m_last.begin() + m_kept, bytes()); }
    char* bytes() { return m_memory.get() + kPutback; }

private:
    std::unique_ptr<char[]> m_memory = std::make_unique_for_overwrite<char[]>(kPutback + kSize);
    std::array<char, kPutback> m_last{};
    std::size_t m_kept = 0;
};

}  // namespace ZroCommon::internal
