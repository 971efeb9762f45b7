#include "zro/streams/compression/internal/GzipWriter.h"

#include <utility>

namespace ZroCommon::internal {
namespace {

constexpr int kSmallest = 9;               // of the levels
constexpr int kGzipBits = MAX_WBITS + 16;  // 16 asks for gzip's framing
constexpr int kMostMemory = 9;

}  // namespace

GzipWriter::GzipWriter(std::ostream* target, std::unique_ptr<std::ostream> owned)
    : m_owned(std::move(owned)),
      m_target(target),
      m_isOpen(
          deflateInit2(&m_stream, kSmallest, Z_DEFLATED, kGzipBits, kMostMemory, Z_DEFAULT_STRATEGY)
          == Z_OK) {
    renewRoom();
}

GzipWriter::~GzipWriter() {
    end();
}

void GzipWriter::end() {
    if (m_isOpen) {
        deflateEnd(&m_stream);
        m_isOpen = false;
    }
}

void GzipWriter::renewRoom() {
    m_stream.next_out = reinterpret_cast<Bytef*>(m_packed.data());
    m_stream.avail_out = static_cast<uInt>(m_packed.size());
}

void GzipWriter::passOn() {
    const std::size_t count = m_packed.size() - m_stream.avail_out;
    renewRoom();
    if (m_target != nullptr) {
        m_target->write(m_packed.data(), static_cast<std::streamsize>(count));
    }
}

void GzipWriter::pack(std::span<char> bytes, int flush) {
    m_stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    m_stream.avail_in = static_cast<uInt>(bytes.size());
    while (m_isOpen && (m_stream.avail_in > 0 || flush == Z_FINISH)) {
        if (m_stream.avail_out == 0) {
            passOn();
        }
        const int code = deflate(&m_stream, flush);
        if (code != Z_OK && code != Z_BUF_ERROR) {
            end();
            passOn();
        }
    }
}

}  // namespace ZroCommon::internal
