#include "zro/containers/ole/OleStream.h"

#include <algorithm>
#include <array>
#include <limits>

#include "zro/containers/ole/OleCompFile.h"
#include "zro/containers/ole/internal/BlockChain.h"
#include "zro/containers/ole/internal/CompoundTables.h"

namespace ZroCommon {
namespace {

using internal::CompoundTables;

constexpr long kFailed = -1;
constexpr std::int32_t kEndOfChain = -2;
constexpr std::int32_t kOtherEndOfChain = -3;

bool endsChain(std::int32_t block) {
    return block == kEndOfChain || block == kOtherEndOfChain;
}

bool copyBehindHeader(OleStream& stream, JZIOobj& file) {
    std::array<unsigned char, 2> length{};
    if (stream.OLEseek(0, 0) < 0
        || stream.OLEread(length.data(), static_cast<int>(length.size())) != 2) {
        return false;
    }
    if (stream.OLEseek(length[0] + (length[1] << 8) - 2, 1) < 0) {
        return false;
    }
    std::array<char, 10240> piece{};
    constexpr int kPiece = static_cast<int>(piece.size());
    int got = kPiece;
    // On purpose: a copy that was cut short is a success.
    while (got == kPiece) {
        got = stream.OLEread(piece.data(), kPiece);
        if (file.Write(piece.data(), got) != got) {
            break;
        }
    }
    return true;
}

}  // namespace

/// Where a position of the stream lies.
struct OleStream::Place {
    std::int64_t index;   // of the block in the chain
    std::int64_t inside;  // bytes from its start
    std::int64_t offset;  // in the file; -1 for the start of a stream without blocks
};

OleStream::OleStream(OleCompFile* file)
    : m_file(file), m_chain(std::make_unique<internal::BlockChain>()) {}

OleStream::~OleStream() = default;

bool OleStream::GetStreamChain(long dirID) {
    const OleDirInfo* const entry = m_file == nullptr ? nullptr : m_file->getDirInfo(dirID);
    if (entry == nullptr || !entry->isStream()) {
        return false;
    }
    const long size = entry->getStreamSize();
    m_size = static_cast<std::int32_t>(std::max(size, 0L));
    m_isMini = size < m_file->getMiniFatCutoff();
    if (m_isMini && m_file->getMiniStartSect() == -1) {
        return false;
    }
    m_chain->clear();
    m_nextBlock = static_cast<std::int32_t>(entry->getStartSect());
    return true;
}

bool OleStream::GetStreamChainIndex(long index) {
    if (index < static_cast<long>(m_chain->size()) || m_nextBlock == kEndOfChain) {
        return true;
    }
    try {
        return extendChain(index);
    } catch (...) {
        return false;
    }
}

bool OleStream::extendChain(std::int64_t index) {
    const CompoundTables& tables = m_file->tables();
    const auto& table = m_isMini ? tables.miniFat : tables.fat;
    while (m_nextBlock >= 0) {
        // Nothing follows a block beyond the table, so it cannot come again.
        if (!m_chain->push(m_nextBlock, table.has(m_nextBlock))) {
            return false;
        }
        m_nextBlock = table.next(m_nextBlock);
        if (index < static_cast<std::int64_t>(m_chain->size())) {
            return true;
        }
    }
    return endsChain(m_nextBlock);
}

std::int32_t OleStream::chainAt(std::int64_t index) const {
    const auto count = static_cast<std::int64_t>(m_chain->size());
    return index < count ? (*m_chain)[static_cast<std::size_t>(index)] : kEndOfChain;
}

// Where a block of the stream starts in the file, -1 for a mini block that has no place.
std::int64_t OleStream::fileOffset(std::int64_t block) const {
    CompoundTables& tables = *m_file->m_tables;
    const auto& header = tables.header;
    if (!m_isMini) {
        return header.blockOffset(block);
    }
    const int shift = header.blockShift - header.miniShift;
    std::int32_t outer = -1;
    try {
        outer = tables.miniStream.at(block >> shift, tables.miniStartSect, tables.fat);
    } catch (...) {
        return -1;
    }
    const std::int64_t inner = block & (header.minisPerBlock - 1);
    return outer < 0 ? -1 : header.blockOffset(outer) + (inner << header.miniShift);
}

bool OleStream::findPlace(std::int64_t position, Place& place) {
    const auto& header = m_file->tables().header;
    if (m_isMini && header.minisPerBlock == 0) {
        return false;
    }
    const int shift = m_isMini ? header.miniShift : header.blockShift;
    place = {position >> shift, position & ((std::int64_t{1} << shift) - 1), -1};
    if (!GetStreamChainIndex(place.index)) {
        return false;
    }
    std::int32_t block = chainAt(place.index);
    if (block < 0) {
        // Right behind the last block, which is a place only where the stream ends as well.
        if (place.inside != 0 || position < m_size) {
            return false;
        }
        if (place.index == 0) {
            return true;
        }
        block = chainAt(--place.index);
        place.inside = std::int64_t{1} << shift;
    }
    const std::int64_t start = block < 0 ? -1 : fileOffset(block);
    place.offset = start + place.inside;
    return start >= 0;
}

long OleStream::OLEseek(long offset, int origin) {
    if (!isReadable() || origin < 0 || origin > 2) {
        return kFailed;
    }
    constexpr std::int64_t kFar = std::int64_t{1} << 32;
    const std::int64_t distance = std::clamp<std::int64_t>(offset, -kFar, kFar);
    // On purpose: from the end a positive distance goes backward.
    const std::array<std::int64_t, 3> targets = {distance, m_position + distance,
                                                 m_size - distance};
    const auto target =
        std::clamp<std::int64_t>(targets[static_cast<std::size_t>(origin)], 0, m_size);
    Place place{};
    if (!findPlace(target, place)) {
        return kFailed;
    }
    m_position = static_cast<std::int32_t>(target);
    if (place.offset >= 0) {
        m_file->SeekIO(place.offset, 0);
    }
    return OLEtell();
}

long OleStream::OLEtell() {
    return m_position;
}

long OleStream::GetStreamSize() {
    return m_size;
}

bool OleStream::isReadable() const {
    return m_file != nullptr && m_file->m_tables;
}

// The bytes from a place on that lie together in the file, `wanted` at most. Blocks are looked up
// as one by one reading would do it.
std::int64_t OleStream::runLength(const Place& place, std::int64_t wanted) {
    const auto& header = m_file->tables().header;
    const std::int64_t perBlock = m_isMini ? header.bytesPerMini : header.bytesPerBlock;
    std::int64_t length = perBlock - place.inside;
    for (std::int64_t index = place.index + 1; length < wanted; ++index) {
        if (!GetStreamChainIndex(index)) {
            break;
        }
        const std::int32_t block = chainAt(index);
        if (block < 0 || fileOffset(block) != place.offset + length) {
            break;
        }
        length += perBlock;
    }
    return std::min(length, wanted);
}

int OleStream::OLEread(void* buffer, int count) {
    if (!isReadable()) {
        return 0;
    }
    char* const bytes = static_cast<char*>(buffer);
    const int wanted = std::min(count, m_size - m_position);
    int done = 0;
    while (done < wanted) {
        Place place{};
        if (!findPlace(m_position, place) || !m_file->SeekIO(place.offset, 0)) {
            break;
        }
        const int piece = static_cast<int>(runLength(place, wanted - done));
        const int got = std::clamp(m_file->ReadIO(bytes + done, piece), 0, piece);
        done += got;
        m_position += got;
        if (got < piece) {
            break;
        }
    }
    return done;
}

bool OleStream::CopyToFile(const char* path) {
    try {
        JZFileIOobj file(path, "wb");
        return file.Open() && copyBehindHeader(*this, file);
    } catch (...) {
        return false;
    }
}

}  // namespace ZroCommon
