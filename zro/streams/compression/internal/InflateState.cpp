#include "zro/streams/compression/internal/InflateState.h"

#include <algorithm>
#include <limits>
#include <new>

#include "zro/streams/compression/internal/ExpandedBlock.h"

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kLargestPiece = std::size_t{1} << 30U;
static_assert(kLargestPiece <= std::numeric_limits<uInt>::max());

constexpr std::size_t kBlock = ExpandedBlock::kSize;
constexpr int kRawData = -MAX_WBITS;  // negative for no framing

uInt pieceOf(std::size_t size) {
    return static_cast<uInt>(std::min(size, kLargestPiece));
}

}  // namespace

InflateState::InflateState() : m_setUp(inflateInit2(&m_stream, kRawData)) {}

InflateState::~InflateState() {
    if (isReady()) {
        inflateEnd(&m_stream);
    }
}

void InflateState::restart() {
    if (isReady()) {
        inflateReset(&m_stream);
    }
    setInput({}, false);
    m_made = 0;
    m_status = Status::Running;
}

void InflateState::setInput(std::span<const char> input, bool isLast) {
    m_input = input;
    m_isLast = isLast;
    m_stream.avail_in = 0;
    feed();
}

std::span<const char> InflateState::inputLeft() const {
    const char* const next = reinterpret_cast<const char*>(m_stream.next_in);
    return {next, m_stream.avail_in + m_input.size()};
}

void InflateState::feed() {
    if (m_stream.avail_in == 0) {
        const uInt size = pieceOf(m_input.size());
        // zlib only reads its input, but not all of its versions say so.
        m_stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(m_input.data()));
        m_stream.avail_in = size;
        m_input = m_input.subspan(size);
    }
}

void InflateState::judge(int code) {
    if (code == Z_MEM_ERROR) {
        throw std::bad_alloc();
    }
    if (code == Z_STREAM_END) {
        m_status = Status::Complete;
    } else if (code != Z_OK && code != Z_BUF_ERROR) {
        m_status = Status::Broken;
    }
}

// How much of `size` may still be made.
std::size_t InflateState::allowed(std::size_t size) const {
    const ZRResourceLimits& limits = m_limits;
    if (limits.expansionFactor != 0 && m_made > limits.expansionGrace
        && m_made / limits.expansionFactor > m_stream.total_in) {
        return 0;
    }
    return limits.expandedBytes == 0 ? size
                                     : static_cast<std::size_t>(std::min<std::uint64_t>(
                                         size, limits.expandedBytes - m_made));
}

std::size_t InflateState::expand(std::span<char> room) {
    if (!isReady()) {
        throw std::bad_alloc();
    }
    if (m_limits.expansionFactor == 0) {
        return expandAllowed(room);
    }
    // The limit is looked at at the same places whatever the room is.
    std::size_t made = 0;
    std::size_t wanted = 0;
    std::size_t step = 0;
    do {
        wanted = std::min(room.size() - made, kBlock - static_cast<std::size_t>(m_made % kBlock));
        step = expandAllowed(room.subspan(made, wanted));
        made += step;
    } while (step == wanted && made < room.size());
    return made;
}

std::size_t InflateState::expandAllowed(std::span<char> room) {
    const std::size_t size = allowed(room.size());
    if (size == 0 && !room.empty() && m_status == Status::Running) {
        m_status = Status::Broken;
    }
    const std::size_t made = expandFreely(room.first(size));
    m_made += made;
    return made;
}

std::size_t InflateState::expandFreely(std::span<char> room) {
    std::size_t made = 0;
    while (made < room.size() && m_status == Status::Running) {
        feed();
        const uInt wanted = pieceOf(room.size() - made);
        m_stream.next_out = reinterpret_cast<Bytef*>(room.data() + made);
        m_stream.avail_out = wanted;
        // The last step needs no window for steps to come.
        const bool isLastStep = m_isLast && m_input.empty();
        const int code = inflate(&m_stream, isLastStep ? Z_FINISH : Z_NO_FLUSH);
        made += wanted - m_stream.avail_out;
        judge(code);
        if (needsInput() && m_stream.avail_out > 0) {
            break;
        }
    }
    return made;
}

}  // namespace ZroCommon::internal
