// Gzip files, by the rules of zlib's own file functions; the system is asked in larger pieces.
#include <algorithm>
#include <array>
#include <utility>

#include "zro/streams/compression/internal/Crc32.h"
#include "zro/streams/compression/internal/GzipHeader.h"
#include "zro/streams/compression/internal/GzipReader.h"
#include "zro/streams/compression/internal/InflateState.h"
#include "zro/streams/internal/ReadSource.h"

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kInputSize = 32768;

// zlib hands out runs of that size, and none with a fault in it.
constexpr std::size_t kWholeRun = 16384;
static_assert(ExpandedBlock::kSize % kWholeRun == 0);

class GzipFile final : public GzipReader {
public:
    explicit GzipFile(std::unique_ptr<std::istream> file) : m_file(std::move(file)) {}

    std::size_t read(std::span<char> room) override {
        std::size_t made = 0;
        while (made == 0 && m_place != Place::End) {
            switch (m_place) {
            case Place::Between: findMember(); break;
            case Place::Member: made = expand(room); break;
            case Place::Plain: made = copyOut(room); break;
            case Place::End: break;
            }
        }
        return made;
    }

    // The next byte of the file, or -1: what headers are read from.
    int next() {
        if (m_input.empty() && !fill()) {
            return -1;
        }
        const auto byte = static_cast<unsigned char>(m_input[0]);
        m_input = m_input.subspan(1);
        return byte;
    }

private:
    enum class Place : std::uint8_t { Between, Member, Plain, End };

    // Adds to what is left of the input. \return false when nothing came
    bool fill() {
        std::copy(m_input.begin(), m_input.end(), m_memory.begin());
        const std::size_t wanted = m_memory.size() - m_input.size();
        const std::size_t got = readSource(*m_file, m_memory.data() + m_input.size(), wanted);
        m_input = {m_memory.data(), m_input.size() + got};
        m_isLast = got < wanted;
        return got > 0;
    }

    // Gives the state what there is, but for one byte until the end of the file is known.
    void feed() {
        m_reserve = m_isLast || m_input.empty() ? 0 : 1;
        m_state.setInput(m_input.first(m_input.size() - m_reserve), false);
    }

    void findMember() {
        if (m_input.size() < 2) {
            fill();
        }
        if (m_input.size() >= 2
            && std::equal(m_input.begin(), m_input.begin() + 2, kGzipSignature)) {
            startMember();
        } else {
            // Behind a member, anything but another one is no part of the data.
            m_place = m_hasMember ? Place::End : Place::Plain;
        }
    }

    void startMember() {
        GzipHeader<GzipFile> header(*this);
        if (!header.readStart() || !header.skipRest()) {
            m_place = Place::End;
            return;
        }
        m_place = Place::Member;
        m_state.restart();
        feed();
        m_check = 0;
        m_size = 0;
        m_hasMember = true;
    }

    // Fills the room, so that faults are met at the same distances from the start of the member.
    //
    // On purpose: what comes with the last of the file is expanded run by run, since what is still
    // to come of input that a run has used up is not handed out.
    std::size_t expand(std::span<char> room) {
        std::size_t made = 0;
        std::size_t runStart = 0;
        bool isSound = true;
        while (isSound && made < room.size() && m_place == Place::Member) {
            const std::size_t before = made;
            made += m_state.expand(
                room.subspan(made, m_isLast ? kWholeRun - made % kWholeRun : room.size() - made));
            m_input = m_input.last(m_state.inputLeft().size() + m_reserve);
            // A fault shows with the byte before it, where there is one.
            runStart = made > before ? made - 1 : made;
            runStart -= runStart % kWholeRun;
            if (m_state.isComplete()) {
                m_check = extendCrc32(m_check, room.first(made));
                isSound = endMember(made);
            } else if (m_state.needsInput()) {
                takeMore();
            } else {
                isSound = !m_state.isBroken();
            }
        }
        if (m_place == Place::Member && isSound) {
            m_check = extendCrc32(m_check, room.first(made));
        }
        m_size += made;
        return isSound ? made : wholeRuns(made, runStart);
    }

    void takeMore() {
        if (!fill() && m_reserve == 0) {
            m_place = Place::End;
        }
        feed();
    }

    // On purpose: the run in which a fault was met is held back, unless it is all there is.
    std::size_t wholeRuns(std::size_t made, std::size_t runStart) {
        m_place = Place::End;
        return m_size > kWholeRun ? runStart : made;
    }

    std::size_t copyOut(std::span<char> room) {
        if (m_input.empty() && !fill()) {
            m_place = Place::End;
        }
        const std::size_t count = std::min(room.size(), m_input.size());
        std::copy_n(m_input.begin(), count, room.begin());
        m_input = m_input.subspan(count);
        return count;
    }

    // Compares check value and size, where they are there. \return false when they are wrong
    bool endMember(std::size_t made) {
        m_place = Place::Between;
        std::uint64_t trailer = 0;
        for (unsigned shift = 0; shift < 64; shift += 8) {
            const int byte = next();
            if (byte < 0) {
                return true;
            }
            trailer |= static_cast<std::uint64_t>(byte) << shift;
        }
        const auto size = static_cast<std::uint32_t>(m_size + made);
        return trailer == (std::uint64_t{size} << 32U | m_check);
    }

    std::unique_ptr<std::istream> m_file;
    std::array<char, kInputSize> m_memory{};
    std::span<const char> m_input;  // what is not used yet of the memory
    std::size_t m_reserve = 0;      // of it, what the state has not been given
    bool m_isLast = false;          // nothing comes behind it
    InflateState m_state;
    std::uint32_t m_check = 0;  // of what the member gave so far
    std::uint64_t m_size = 0;   // and its size
    Place m_place = Place::Between;
    bool m_hasMember = false;
};

}  // namespace

std::unique_ptr<GzipReader> readGzipFile(std::unique_ptr<std::istream> file) {
    return file == nullptr ? nullptr : std::make_unique<GzipFile>(std::move(file));
}

}  // namespace ZroCommon::internal
