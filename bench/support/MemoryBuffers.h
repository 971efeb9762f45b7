#pragma once

#include <istream>
#include <streambuf>
#include <string>
#include <string_view>

namespace ZroCommon::bench {

/// A stream buffer over bytes that stay where they are: reading costs no copy but the reader's.
class ViewBuffer : public std::streambuf {
public:
    explicit ViewBuffer(std::string_view bytes) {
        char* begin = const_cast<char*>(bytes.data());  // the get area is only read
        setg(begin, begin, begin + bytes.size());
    }

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode which) override {
        const char* base = from == std::ios_base::beg   ? eback()
                           : from == std::ios_base::cur ? gptr()
                                                        : egptr();
        return seekpos(base - eback() + offset, which);
    }

    pos_type seekpos(pos_type position, std::ios_base::openmode /*which*/) override {
        const off_type offset = position;
        if (offset < 0 || offset > egptr() - eback()) {
            return {off_type(-1)};
        }
        setg(eback(), eback() + offset, egptr());
        return position;
    }
};

/// An input stream over bytes of the caller's.
class ViewStream : public std::istream {
public:
    explicit ViewStream(std::string_view bytes) : std::istream(nullptr), m_buffer(bytes) {
        rdbuf(&m_buffer);
    }

private:
    ViewBuffer m_buffer;
};

/// A stream buffer that appends to a string, which keeps its room from one use to the next.
class AppendBuffer : public std::streambuf {
public:
    explicit AppendBuffer(std::string& target) : m_target(&target) {}

protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        m_target->append(bytes, static_cast<std::size_t>(count));
        return count;
    }
    int_type overflow(int_type byte) override {
        if (!traits_type::eq_int_type(byte, traits_type::eof())) {
            m_target->push_back(traits_type::to_char_type(byte));
        }
        return traits_type::not_eof(byte);
    }

private:
    std::string* m_target;
};

}  // namespace ZroCommon::bench
