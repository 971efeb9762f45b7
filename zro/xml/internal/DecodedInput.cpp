#include "zro/xml/internal/DecodedInput.h"

#include <algorithm>
#include <array>
#include <utility>

#include "zro/xml/internal/Transcoder.h"

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kHistory = 2;
constexpr std::size_t kFirstWindow = 4096;  // as many as the first block of bytes gives
constexpr std::size_t kLargestWindow = 32768;

// How many bytes the first units of a window were made from.
std::size_t bytesOfUnits(EncodingMode mode, const unsigned char* bytes, std::size_t count,
                         std::size_t units) {
    std::array<char16_t, 2> scratch{};
    Decoding state{bytes, bytes + count, scratch.data(), scratch.data() + scratch.size()};
    for (std::size_t made = 0; made < units;) {
        state.units = scratch.data();
        if (!decodeNext(mode, state)) {
            break;
        }
        made += static_cast<std::size_t>(state.units - scratch.data());
    }
    return static_cast<std::size_t>(state.bytes - bytes);
}

}  // namespace

void DecodedInput::open(std::istream& stream) {
    m_baseStream = &stream;
    m_source.open(&stream);
    m_limit = kFirstWindow;
    m_decodedBytes = 0;
}

void DecodedInput::open(std::unique_ptr<std::istream> stream) {
    m_ownStream = std::move(stream);
    open(*m_ownStream);
}

void DecodedInput::close() {
    m_source.open(nullptr);
    m_transcoder.reset();
    m_rest.reset();
    m_baseStream = nullptr;
    m_ownStream.reset();
    m_decodedBytes = 0;
}

void DecodedInput::reset() {
    close();
    encoding = Encoding();
    uri.remove();
    baseUri.remove();
}

void DecodedInput::shrink() {
    m_source.shrink();
    if (m_capacity > kFirstWindow + kHistory) {
        m_units.reset();
        m_capacity = 0;
    }
}

bool DecodedInput::hasMore() {
    if (m_source.available() != 0) {
        return true;
    }
    m_decodedBytes = 0;
    return m_source.fetch();
}

void DecodedInput::makeWindow(Run& window) {
    std::array<char16_t, kHistory> history{};
    const auto kept =
        std::min<std::size_t>(kHistory, static_cast<std::size_t>(window.at - window.start));
    std::copy_n(window.at - kept, kept, history.begin());
    if (m_capacity < m_limit + kHistory) {
        m_units.reset(new char16_t[m_limit + kHistory]);
        m_capacity = m_limit + kHistory;
    }
    std::copy_n(history.begin(), kept, m_units.get());
    m_history = kept;
    m_decodedBytes = 0;
    window.start = m_units.get();
    window.at = m_units.get() + kept;
    window.end = window.at;
}

DecodedInput::Fill DecodedInput::refill(Run& window, InputTail tail) {
    char16_t* const first = m_units.get() + (window.at - window.start);
    for (;;) {
        Decoding state{m_source.begin(), m_source.end(), first, first + m_limit};
        const DecodeStop stop =
            decode(encoding.mode, state, m_source.sawEnd() ? tail : InputTail::Open);
        if (state.units != first) {
            m_decodedBytes = static_cast<std::size_t>(state.bytes - m_source.begin());
            m_source.take(m_decodedBytes);
            m_limit = std::min(m_limit * 2, kLargestWindow);
            window.end = state.units;
            return Fill::Filled;
        }
        if (stop == DecodeStop::Unrepresented) {
            return Fill::Special;
        }
        if (!m_source.fetch() && m_source.available() == 0) {
            return Fill::End;
        }
    }
}

char32_t DecodedInput::takeSpecial() {
    const DecodedOne one = decodeOne(encoding.mode, m_source.begin(), m_source.end(), true);
    m_source.take(one.length);
    return one.character;
}

bool DecodedInput::takeBehindReturn(InputTail tail, char32_t& next) {
    next = 0xFFFF;
    do {
        if (m_source.available() != 0) {
            const DecodedOne one =
                decodeOne(encoding.mode, m_source.begin(), m_source.end(), m_source.sawEnd());
            if (one.length != 0) {
                m_source.take(one.length);
                next = isTakenByReturn(one, tail) ? 0xFFFF : one.character;
                return true;
            }
        }
    } while (m_source.fetch() || m_source.available() != 0);
    return tail == InputTail::Closed;
}

bool DecodedInput::isBehindReturn(const Run& window) const {
    if (m_decodedBytes == 0 || unitsRead(window) == 0 || window.at[-1] != u'\n') {
        return false;
    }
    const unsigned char* const bytes = m_source.begin() - m_decodedBytes;
    const std::size_t read = unitsRead(window);
    const std::size_t start = bytesOfUnits(encoding.mode, bytes, m_decodedBytes, read - 1);
    const std::size_t end = bytesOfUnits(encoding.mode, bytes, m_decodedBytes, read);
    const DecodedOne one = decodeOne(encoding.mode, bytes + start, bytes + end, true);
    return one.character == u'\r' && one.length == end - start;
}

void DecodedInput::settle(Run& window) {
    if (window.at != window.end) {
        m_source.giveBack(m_decodedBytes);
        // The window was made from these bytes alone, so they give the same units again.
        m_source.take(
            bytesOfUnits(encoding.mode, m_source.begin(), m_decodedBytes, unitsRead(window)));
    }
    window.end = window.at;
    m_decodedBytes = 0;
    m_limit = kFirstWindow;
}

bool DecodedInput::transcode(const UnicodeString& name) {
    auto rest = std::make_unique<RestStream>(std::move(m_source));
    std::unique_ptr<std::istream> transcoder = openTranscoder(rest.get(), name);
    if (transcoder == nullptr) {
        m_source = rest->release();
        return false;
    }
    m_source = ByteSource();
    m_source.open(transcoder.get());
    m_rest = std::move(rest);
    m_transcoder = std::move(transcoder);
    return true;
}

}  // namespace ZroCommon::internal
