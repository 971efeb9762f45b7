#include "zro/containers/zip/internal/PackageReader.h"

#include <algorithm>
#include <array>
#include <ios>
#include <limits>
#include <new>

#include "zro/containers/zip/internal/LocalHeader.h"

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kFirstPiece = std::size_t{256} * 1024;
constexpr std::size_t kGrowth = 4;

// What `action` gives, or `failure` when the stream throws.
template <class Result, class Action>
Result guarded(Result failure, Action&& action) {
    try {
        return action();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        return failure;
    }
}

}  // namespace

std::int64_t PackageReader::position() {
    if (m_buffer == nullptr) {
        return -1;
    }
    return guarded<std::int64_t>(-1, [this] {
        return std::streamoff(m_buffer->pubseekoff(0, std::ios_base::cur, std::ios_base::in));
    });
}

bool PackageReader::seek(std::int64_t position) {
    return m_buffer != nullptr && position >= 0 && guarded(false, [this, position] {
               return std::streamoff(m_buffer->pubseekpos(position, std::ios_base::in)) >= 0;
           });
}

std::size_t PackageReader::read(char* bytes, std::size_t count) {
    if (m_buffer == nullptr) {
        return 0;
    }
    return guarded<std::size_t>(0, [this, bytes, count] {
        const auto wanted = static_cast<std::streamsize>(count);
        return static_cast<std::size_t>(
            std::clamp<std::streamsize>(m_buffer->sgetn(bytes, wanted), 0, wanted));
    });
}

bool PackageReader::seekForward(std::uint64_t count) {
    const std::int64_t start = position();
    constexpr auto kFarthest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return start >= 0 && count <= kFarthest - static_cast<std::uint64_t>(start)
           && seek(start + static_cast<std::int64_t>(count));
}

bool PackageReader::skip(std::uint64_t count) {
    if (seekForward(count)) {
        return true;
    }
    std::array<char, 16384> ignored{};
    while (count > 0) {
        const auto piece = std::min<std::uint64_t>(count, ignored.size());
        if (read(ignored.data(), static_cast<std::size_t>(piece)) < piece) {
            return false;
        }
        count -= piece;
    }
    return true;
}

// Steps back within the buffer where that is possible: a seek would make a file buffer read anew.
void PackageReader::unread(std::size_t count, std::int64_t position) {
    const bool isBack = guarded(false, [this, count] {
        for (std::size_t i = 0; i < count; ++i) {
            if (m_buffer->sungetc() == std::streambuf::traits_type::eof()) {
                return false;
            }
        }
        return true;
    });
    if (!isBack) {
        seek(position);
    }
}

std::uint32_t PackageReader::peek32() {
    const std::int64_t start = position();
    if (start < 0) {
        return 0;
    }
    std::array<char, 4> bytes{};
    const std::size_t count = read(bytes.data(), bytes.size());
    unread(count, start);
    return FieldReader(bytes.data(), count).at32(0);
}

StoredBytes readStored(PackageReader& reader, std::uint32_t claimedSize) {
    StoredBytes stored;
    std::size_t room = 0;
    while (stored.size == room && room < claimedSize) {
        room = std::min<std::size_t>(claimedSize, std::max(kFirstPiece, room * kGrowth));
        auto larger = std::make_unique_for_overwrite<char[]>(room);
        std::copy_n(stored.bytes.get(), stored.size, larger.get());
        stored.bytes = std::move(larger);
        stored.size += reader.read(stored.bytes.get() + stored.size, room - stored.size);
    }
    return stored;
}

}  // namespace ZroCommon::internal
