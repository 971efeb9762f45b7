#include "zro/streams/compression/ZRInflaterStream.h"

#include <algorithm>
#include <span>

#include "zro/streams/compression/internal/ExpandedBlock.h"
#include "zro/streams/compression/internal/InflateState.h"

namespace ZroCommon {

namespace internal {

/// A deflated block and how far it is expanded.
class BlockInflater {
public:
    BlockInflater(const char* data, std::size_t size, bool copy) : m_data(data, size) {
        if (copy) {
            m_copy = std::make_unique_for_overwrite<char[]>(size);
            std::copy_n(data, size, m_copy.get());
            m_data = {m_copy.get(), size};
        }
        m_state.setInput(m_data, true);
    }

    void restart() {
        m_state.restart();
        m_state.setInput(m_data, true);
    }

    std::size_t expand(std::span<char> room) { return m_state.expand(room); }
    ExpandedBlock& block() { return m_block; }

private:
    std::span<const char> m_data;
    std::unique_ptr<char[]> m_copy;  // null when the block is the caller's
    InflateState m_state;
    ExpandedBlock m_block;
};

}  // namespace internal

ZRInflaterStreamBuf::ZRInflaterStreamBuf(const char* data, std::size_t size, bool copy)
    : m_inflater(std::make_unique<internal::BlockInflater>(data, size, copy)) {}

ZRInflaterStreamBuf::~ZRInflaterStreamBuf() = default;

void ZRInflaterStreamBuf::reset() {
    m_inflater->restart();
    setg(nullptr, nullptr, nullptr);
}

ZRInflaterStreamBuf::int_type ZRInflaterStreamBuf::underflow() {
    if (gptr() < egptr()) {
        return traits_type::to_int_type(*gptr());
    }
    internal::ExpandedBlock& block = m_inflater->block();
    const std::size_t made = m_inflater->expand(block.next(eback(), gptr()));
    if (made == 0) {
        return traits_type::eof();
    }
    setg(block.begin(), block.bytes(), block.bytes() + made);
    return traits_type::to_int_type(*gptr());
}

ZRInflaterStream::ZRInflaterStream(const char* data, std::size_t size, bool copy)
    : std::basic_istream<char>(nullptr), m_buffer(data, size, copy) {
    init(&m_buffer);
}

ZRInflaterStream::~ZRInflaterStream() = default;

void ZRInflaterStream::reset() {
    clear();
    m_buffer.reset();
}

}  // namespace ZroCommon
