#pragma once

#include <algorithm>
#include <cstddef>
#include <istream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

namespace ZroCommon::testing {

/// What is left in a stream.
inline std::string restOf(std::istream& stream) {
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Reads `bytes` one by one, goes back over the last ten behind each and reads them again.
/// \return the number of bytes read before something was amiss; all of them when nothing was
inline std::size_t readsTwice(std::istream& stream, const std::string& bytes) {
    std::string again;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const std::size_t count = std::min<std::size_t>(at + 1, 10);
        again.assign(count, '\0');
        bool holds = stream.get() == std::char_traits<char>::to_int_type(bytes[at]);
        for (std::size_t back = 0; back < count; ++back) {
            holds = stream.unget() && holds;
        }
        stream.read(again.data(), static_cast<std::streamsize>(count));
        if (!holds || bytes.compare(at + 1 - count, count, again) != 0) {
            return at;
        }
    }
    return bytes.size();
}

/// Reads pieces of these sizes, also beyond the end; behind each, as many as `back` bytes are put
/// back and read again.
inline std::string readInPieces(std::istream& stream, const std::vector<std::size_t>& sizes,
                                std::size_t back) {
    std::string result;
    for (const std::size_t size : sizes) {
        std::string piece(size, '\0');
        stream.read(piece.data(), static_cast<std::streamsize>(size));
        result.append(piece, 0, static_cast<std::size_t>(stream.gcount()));
        stream.clear();
        const std::size_t count = std::min(back, result.size());
        for (std::size_t i = 0; i < count && stream.unget(); ++i) {
            result.pop_back();
        }
        std::string again(count, '\0');
        stream.read(again.data(), static_cast<std::streamsize>(count));
        result.append(again, 0, static_cast<std::size_t>(stream.gcount()));
    }
    return result;
}

/// A buffer that cannot seek, refills `step` bytes at a time and never says that more is ready:
/// whoever waits for more than the next piece shows in `refills()`. The base of the others.
class PiecewiseBuf : public std::streambuf {
public:
    explicit PiecewiseBuf(std::string bytes, std::size_t step = std::string::npos)
        : m_bytes(std::move(bytes)), m_step(step) {}

    /// How often a reader has asked for more, the question at the end included.
    std::size_t refills() const { return m_refills; }

protected:
    int_type underflow() override {
        if (gptr() < egptr()) {
            return traits_type::to_int_type(*gptr());
        }
        ++m_refills;
        const std::size_t count = std::min(m_step, m_bytes.size() - m_next);
        if (count == 0) {
            return atEnd();
        }
        setg(m_bytes.data() + m_next, m_bytes.data() + m_next, m_bytes.data() + m_next + count);
        m_next += count;
        return traits_type::to_int_type(*gptr());
    }

    /// What happens behind the last byte.
    virtual int_type atEnd() { return traits_type::eof(); }

    void rewind() { m_next = 0; }

private:
    std::string m_bytes;
    std::size_t m_step;
    std::size_t m_next = 0;
    std::size_t m_refills = 0;
};

/// A sound stream that refills a few bytes at a time, so that every boundary falls everywhere.
class ShortReadBuf : public PiecewiseBuf {
public:
    explicit ShortReadBuf(std::string bytes, std::size_t step = 1)
        : PiecewiseBuf(std::move(bytes), step) {}
};

/// Gives all at once, and cannot seek.
using NoSeekBuf = PiecewiseBuf;

/// Ends at byte `at`, for good.
class FailAtBuf : public PiecewiseBuf {
public:
    FailAtBuf(const std::string& bytes, std::size_t at) : PiecewiseBuf(bytes.substr(0, at)) {}
};

/// Throws `std::runtime_error` when byte `at` is asked for.
class ThrowAtBuf : public PiecewiseBuf {
public:
    ThrowAtBuf(const std::string& bytes, std::size_t at) : PiecewiseBuf(bytes.substr(0, at)) {}

protected:
    int_type atEnd() override { throw std::runtime_error("ThrowAtBuf"); }
};

/// Seeks as a file does, and throws where it would have to go beyond byte `at`.
class ThrowingFileBuf : public std::stringbuf {
public:
    ThrowingFileBuf(const std::string& bytes, std::size_t at) : std::stringbuf(bytes), m_at(at) {}

protected:
    std::streamsize xsgetn(char* bytes, std::streamsize count) override {
        reach(gptr() - eback() + count);
        return std::stringbuf::xsgetn(bytes, count);
    }
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override {
        reach(position);
        return std::stringbuf::seekpos(position, which);
    }

private:
    void reach(std::streamoff position) const {
        if (position > static_cast<std::streamoff>(m_at)) {
            throw std::runtime_error("ThrowingFileBuf");
        }
    }

    std::size_t m_at;
};

/// Repeats its bytes for ever.
class EndlessBuf : public PiecewiseBuf {
public:
    explicit EndlessBuf(std::string bytes) : PiecewiseBuf(std::move(bytes)) {}

protected:
    int_type atEnd() override {
        rewind();
        return underflow();
    }
};

/// A stream with a buffer of that kind.
template <class Buf>
class StreamOver : public std::istream {
public:
    StreamOver() : std::istream(nullptr) { rdbuf(&buffer); }
    explicit StreamOver(const std::string& bytes) : std::istream(nullptr), buffer(bytes) {
        rdbuf(&buffer);
    }
    StreamOver(const std::string& bytes, std::size_t number)
        : std::istream(nullptr), buffer(bytes, number) {
        rdbuf(&buffer);
    }

    Buf buffer;
};

/// Seeks nowhere but to its start.
template <class Base>
class Rewinding : public Base {
public:
    using Base::Base;

protected:
    std::streampos seekpos(std::streampos position, std::ios_base::openmode /*which*/) override {
        this->rewind();
        this->setg(nullptr, nullptr, nullptr);
        return position;
    }
};

/// A stream that tells when it dies.
class WatchedStream : public std::istringstream {
public:
    WatchedStream(const std::string& bytes, bool& isGone)
        : std::istringstream(bytes), m_isGone(&isGone) {}
    WatchedStream(const WatchedStream&) = delete;
    WatchedStream& operator=(const WatchedStream&) = delete;
    ~WatchedStream() override { *m_isGone = true; }

private:
    bool* m_isGone;
};

}  // namespace ZroCommon::testing
