#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/Streams.h"
#include "zro/streams/ZRMemStream.h"

namespace ZroCommon::fuzzing {

using testing::ShortReadBuf;

/// Drives a `ZRMemStreamBuf` and a plain string side by side, one operation at a time.
///
/// The string holds what is in memory and what the sources still have; where the blocks lie shows
/// only when blocks are let go, and there the stream may choose within what it promises.
class MemStreamModel {
public:
    explicit MemStreamModel(std::size_t growBytes)
        : m_grow(growBytes), m_stream(nullptr, growBytes) {}

    static constexpr unsigned kOperations = 26;

    /// Does operation `code` % kOperations with two arguments. \return what went wrong, or nothing
    std::string step(unsigned code, unsigned first, unsigned second) {
        m_fault.clear();
        if (m_content.size() > kLargest) {
            m_stream.remove();
            m_content.clear();
            m_read = m_write = 0;
        }
        switch (code % kOperations) {
        case 0: write(bytes(first, second)); break;
        case 1: writeOne(bytes(1, second)); break;
        case 2: read(first % 24); break;
        case 3: readOne(); break;
        case 4: unread(m_stream.sungetc()); break;
        case 5: unread(m_stream.sputbackc('?')); break;
        case 6:
        case 7:
        case 8: seek(std::ios::beg, 0, place(first), kWhich[code % kOperations - 6]); break;
        case 9: seek(std::ios::cur, m_read, small(first), kIn); break;
        case 10: seek(std::ios::cur, m_write, small(first), kOut); break;
        case 11: seek(std::ios::cur, m_write, small(first), kIn | kOut); break;
        case 12: seek(std::ios::end, m_content.size(), small(first), kIn); break;
        case 13: seek(std::ios::end, m_content.size(), small(first), kOut); break;
        case 14: check(m_stream.length() == m_content.size(), "length"); break;
        case 15: abandon(); break;
        case 16: trim(first % (m_content.size() + 2)); break;
        case 17: getBuffer(); break;
        case 18: search(bytes(1 + first % 5, second)); break;
        case 19: skip(bytes(1 + first % 5, second)); break;
        case 20: skipLine(); break;
        case 21: copyFrom(bytes(first, second), second % 40); break;
        case 22: addSource(bytes(first, second), second % 3); break;
        case 23: keepMemory(first % 2 == 0); break;
        case 24: checkContent(); break;
        case 25: checkCopy(); break;
        default: break;
        }
        return m_fault;
    }

    /// Everything at once: the content, both positions, the checksum.
    std::string finish() {
        m_fault.clear();
        checkContent();
        check(at(kIn) == m_read, "read position");
        check(at(kOut) == m_write, "write position");
        if (m_grow % 4 == 0) {
            check(m_stream.calcOTFTableChecksum() == checksum(), "checksum");
        }
        return m_fault;
    }

private:
    static constexpr std::size_t kLargest = 150;
    static constexpr std::ios::openmode kIn = std::ios::in;
    static constexpr std::ios::openmode kOut = std::ios::out;
    static constexpr std::ios::openmode kWhich[] = {kIn, kOut, kIn | kOut};

    void check(bool isGood, const char* what) {
        if (!isGood && m_fault.empty()) {
            m_fault = what;
        }
    }

    // Few different bytes, so that patterns are found and repeat themselves.
    static std::string bytes(unsigned count, unsigned seed) {
        constexpr char kBytes[] = {'a', 'b', 'a', '\r', '\n', 'a', 'b', '\xFF'};
        std::string result;
        for (unsigned i = 0; i < count % 24; ++i) {
            result += kBytes[(seed >> (i % 13)) % 8];
        }
        return result;
    }

    static std::ptrdiff_t small(unsigned value) {
        return static_cast<std::ptrdiff_t>(value % 32) - 16;
    }

    // Two places behind the end, and all before.
    std::ptrdiff_t place(unsigned value) const {
        return static_cast<std::ptrdiff_t>(value % (m_content.size() + 3));
    }

    std::size_t at(std::ios::openmode which) {
        return static_cast<std::size_t>(
            std::streamoff(m_stream.pubseekoff(0, std::ios::cur, which)));
    }

    void overwrite(const std::string& text) {
        m_content.replace(m_write, std::min(text.size(), m_content.size() - m_write), text);
        m_write += text.size();
    }

    void write(const std::string& text) {
        m_stream.sputn(text.data(), static_cast<std::streamsize>(text.size()));
        overwrite(text);
    }

    void writeOne(const std::string& text) {
        check(m_stream.sputc(text[0]) == std::char_traits<char>::to_int_type(text[0]), "sputc");
        overwrite(text);
    }

    void copyFrom(const std::string& text, unsigned count) {
        std::istringstream source(text);
        const std::size_t copied = m_stream.copyStream(source, count);
        check(copied == std::min<std::size_t>(count, text.size()), "copyStream");
        overwrite(text.substr(0, count));
    }

    void read(std::size_t count) {
        std::string found(count, '\0');
        found.resize(static_cast<std::size_t>(
            m_stream.sgetn(found.data(), static_cast<std::streamsize>(count))));
        check(found == m_content.substr(m_read, count), "sgetn");
        m_read += found.size();
        settle();
    }

    void readOne() {
        const int found = m_stream.sbumpc();
        const int wanted = m_read < m_content.size()
                               ? std::char_traits<char>::to_int_type(m_content[m_read])
                               : EOF;
        check(found == wanted, "sbumpc");
        m_read += wanted == EOF ? 0 : 1;
        settle();
    }

    void unread(int found) {
        check((found == EOF) == (m_read == 0), "unget at the start, and only there, fails");
        if (m_read > 0) {
            --m_read;
            check(found == std::char_traits<char>::to_int_type(m_content[m_read]), "unget");
        }
    }

    // With recycling on, reading may have let whole blocks go.
    void settle() {
        if (!m_keeps) {
            drop(m_read - at(kIn));
        }
    }

    void drop(std::size_t count) {
        check(count <= m_read && count % m_grow == 0, "whole blocks go");
        if (!m_fault.empty()) {
            return;
        }
        m_content.erase(0, count);
        m_read -= count;
        m_write = m_write < count ? 0 : m_write - count;
    }

    void seek(std::ios::seekdir way, std::size_t from, std::ptrdiff_t offset,
              std::ios::openmode which) {
        const auto result =
            std::streamoff(way == std::ios::beg ? m_stream.pubseekpos(offset, which)
                                                : m_stream.pubseekoff(offset, way, which));
        const std::ptrdiff_t target = static_cast<std::ptrdiff_t>(from) + offset;
        if (target < 0 || static_cast<std::size_t>(target) > m_content.size()) {
            return check(result == -1, "a seek outside of the content fails");
        }
        check(result == target, "seek");
        m_read = (which & kIn) != 0 ? static_cast<std::size_t>(target) : m_read;
        m_write = (which & kOut) != 0 ? static_cast<std::size_t>(target) : m_write;
    }

    void abandon() {
        m_stream.abandonBuffer();
        const std::size_t now = at(kIn);
        check(now <= m_grow, "the block of the read position comes first");
        drop(m_read - now);
    }

    void trim(std::size_t length) {
        m_stream.trim(length);
        m_content.resize(std::min(length, m_content.size()));
        m_read = std::min(m_read, m_content.size());
        m_write = std::min(m_write, m_content.size());
    }

    void getBuffer() {
        const char* start = nullptr;
        const std::size_t count = m_stream.getBuffer(start);
        check(count <= m_grow, "one block at most");
        check((count == 0) == (m_read == m_content.size()), "empty at the end, and only there");
        check(m_content.compare(m_read, count, start, count) == 0, "getBuffer");
        m_read += count;
    }

    void search(const std::string& pattern) {
        const std::size_t found = m_content.find(pattern, m_read);
        const bool isThere = found != std::string::npos;
        check(m_stream.searchSeek(pattern.data(), pattern.size()) == isThere, "searchSeek");
        m_read = isThere ? found : m_read;
    }

    void skip(const std::string& pattern) {
        const bool isThere = m_content.compare(m_read, pattern.size(), pattern) == 0;
        check(m_stream.skipSeek(pattern.data(), pattern.size()) == isThere, "skipSeek");
        m_read += isThere ? pattern.size() : 0;
    }

    void skipLine() {
        m_stream.seekEOL();
        const std::size_t end = m_content.find_first_of("\r\n", m_read);
        const std::size_t next = m_content.find_first_not_of("\r\n", end);
        m_read = std::min(next, m_content.size());
    }

    void addSource(const std::string& text, unsigned kind) {
        m_content += text;
        m_sources.push_back(std::make_unique<ShortReadBuf>(text, std::max(kind, 1U)));
        m_stream.setSource(kind == 0 ? new std::istringstream(text)
                                     : new std::istream(m_sources.back().get()),
                           true);
    }

    void keepMemory(bool keeps) {
        m_keeps = keeps;
        m_stream.setKeepMemory(keeps);
    }

    void checkContent() {
        std::string all = "before ";
        m_stream.appendToString(all);
        check(all == "before " + m_content, "content");
    }

    void checkCopy() {
        MemStreamModel copy(m_grow);
        copy.m_stream.copyContent(m_stream);
        std::tie(copy.m_content, copy.m_read, copy.m_write) = std::tie(m_content, m_read, m_write);
        check(copy.finish().empty(), "copy");
    }

    std::uint32_t checksum() const {
        std::uint32_t sum = 0;
        for (std::size_t i = 0; i < m_content.size(); ++i) {
            sum += static_cast<std::uint32_t>(static_cast<unsigned char>(m_content[i]))
                   << (24 - i % 4 * 8);
        }
        return sum;
    }

    std::size_t m_grow;
    std::vector<std::unique_ptr<ShortReadBuf>> m_sources;
    ZRMemStreamBuf m_stream;
    std::string m_content;
    std::size_t m_read = 0;
    std::size_t m_write = 0;
    bool m_keeps = true;
    std::string m_fault;
};

}  // namespace ZroCommon::fuzzing
