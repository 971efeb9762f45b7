#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <zlib.h>

#include "zro/foundation/ZRResourceLimits.h"

namespace ZroCommon::internal {

/// Expands raw deflate data (RFC 1951) that comes in pieces of any size, to room of any size. Data
/// that goes beyond the limits on resources, as they are at the start, counts as damaged.
class InflateState {
public:
    InflateState();
    InflateState(const InflateState&) = delete;
    InflateState& operator=(const InflateState&) = delete;
    ~InflateState();

    /// False when it could not be set up; then nothing may be expanded.
    bool isReady() const { return m_setUp == Z_OK; }

    /// Forgets input and state, for a new member.
    void restart();

    /// Sets the next piece of the input; it has to last until it is used up.
    /// \param isLast  true when nothing comes behind it, which spares work on small data
    void setInput(std::span<const char> input, bool isLast);
    /// What is not used up yet of the input.
    std::span<const char> inputLeft() const;
    /// True when only more input lets it go on.
    bool needsInput() const {
        return m_status == Status::Running && m_stream.avail_in == 0 && m_input.empty();
    }

    /// Expands until the room is full, the input is used up, or the data ends.
    /// \return the number of bytes made
    /// \throws std::bad_alloc  when there is no memory
    std::size_t expand(std::span<char> room);

    /// True behind the last byte of sound data.
    bool isComplete() const { return m_status == Status::Complete; }
    /// True when the data is damaged: nothing more will come.
    bool isBroken() const { return m_status == Status::Broken; }

private:
    enum class Status : std::uint8_t { Running, Complete, Broken };

    void feed();
    void judge(int code);
    std::size_t expandAllowed(std::span<char> room);
    std::size_t expandFreely(std::span<char> room);
    std::size_t allowed(std::size_t size) const;

    z_stream m_stream{};
    std::span<const char> m_input;  // what does not fit in the 32-bit count of zlib
    bool m_isLast = false;
    Status m_status = Status::Running;
    ZRResourceLimits m_limits = ZRResourceLimits::getCurrent();
    std::uint64_t m_made = 0;  // since the last start
    int m_setUp;
};

}  // namespace ZroCommon::internal
