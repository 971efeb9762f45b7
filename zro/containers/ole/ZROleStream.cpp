#include "zro/containers/ole/ZROleStream.h"

#include <algorithm>

namespace ZroCommon {
namespace {

constexpr int kBlock = 4096;

}  // namespace

ZROleStreamBuf::ZROleStreamBuf(OleStream* stream, int limit) : m_stream(stream), m_limit(limit) {
    if (stream != nullptr) {
        stream->OLEtell();  // On purpose: an overridden one is told that reading begins.
    }
}

ZROleStreamBuf::~ZROleStreamBuf() = default;

// On purpose: the limit is counted in blocks, and a block that came up short counts as a whole one.
int ZROleStreamBuf::nextPiece() const {
    if (m_limit < 0) {
        return kBlock;
    }
    return static_cast<int>(std::clamp<std::int64_t>(m_limit - m_blocksRead * kBlock, 0, kBlock));
}

ZROleStreamBuf::int_type ZROleStreamBuf::underflow() {
    if (gptr() < egptr()) {
        return traits_type::to_int_type(*gptr());
    }
    const int piece = nextPiece();
    if (m_stream == nullptr || piece == 0) {
        return traits_type::eof();
    }
    if (!m_buffer) {
        m_buffer = std::make_unique<char[]>(kBlock);
    }
    const int got = m_stream->OLEread(m_buffer.get(), piece);
    ++m_blocksRead;
    setg(m_buffer.get(), m_buffer.get(), m_buffer.get() + std::clamp(got, 0, piece));
    return gptr() < egptr() ? traits_type::to_int_type(*gptr()) : traits_type::eof();
}

ZROleStream::ZROleStream(OleStream* stream, int limit)
    : std::basic_istream<char>(nullptr), m_buffer(stream, limit) {
    init(&m_buffer);
}

ZROleStream::~ZROleStream() = default;

}  // namespace ZroCommon
