#include "zro/xml/internal/Transcoder.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstring>
#include <string>
#include <utility>

#include "zro/streams/transcoding/ZRTCVStream.h"

namespace ZroCommon::internal {
namespace {

std::unique_ptr<std::istream> openTCVStream(std::istream* bytes, const UnicodeString& name) {
    if (name.indexOf(u'\0') >= 0) {
        return nullptr;
    }
    std::string narrow;
    auto stream = std::make_unique<ZRTCVStream>(bytes, name.toUTF8String(narrow).c_str());
    return stream->is_open() ? std::move(stream) : nullptr;
}

constinit std::atomic<TranscoderFactory> s_factory{&openTCVStream};

}  // namespace

TranscoderFactory setTranscoderFactory(TranscoderFactory factory) {
    return s_factory.exchange(factory);
}

std::unique_ptr<std::istream> openTranscoder(std::istream* bytes, const UnicodeString& name) {
    const TranscoderFactory factory = s_factory.load(std::memory_order_acquire);
    return factory == nullptr ? nullptr : factory(bytes, name);
}

RestStream::RestStream(ByteSource source) : std::istream(nullptr), m_buffer(std::move(source)) {
    rdbuf(&m_buffer);
}

RestStream::Buffer::int_type RestStream::Buffer::underflow() {
    if (source.available() == 0 && !source.fetch()) {
        return traits_type::eof();
    }
    const std::size_t count = std::min(source.available(), m_block.size());
    std::memcpy(m_block.data(), source.begin(), count);
    source.take(count);
    setg(m_block.data(), m_block.data(), m_block.data() + count);
    return traits_type::to_int_type(m_block[0]);
}

}  // namespace ZroCommon::internal
