#pragma once

#include <streambuf>

#include "zro/foundation/Export.h"

namespace ZroCommon {

/// The base of the library's stream buffers: each operation does what the standard one does.
///
/// A table of virtual functions that holds functions of another library has them searched by name
/// whenever this library is loaded; these are the library's own.
class ZRO_API StreamBuffer : public std::streambuf {
protected:
    StreamBuffer() = default;

    void imbue(const std::locale& locale) override { std::streambuf::imbue(locale); }
    std::streambuf* setbuf(char* bytes, std::streamsize count) override {
        return std::streambuf::setbuf(bytes, count);
    }
    pos_type seekoff(off_type offset, std::ios_base::seekdir way,
                     std::ios_base::openmode which) override {
        return std::streambuf::seekoff(offset, way, which);
    }
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override {
        return std::streambuf::seekpos(position, which);
    }
    int sync() override { return std::streambuf::sync(); }
    std::streamsize showmanyc() override { return std::streambuf::showmanyc(); }
    std::streamsize xsgetn(char* bytes, std::streamsize count) override {
        return std::streambuf::xsgetn(bytes, count);
    }
    int_type underflow() override { return std::streambuf::underflow(); }
    int_type uflow() override { return std::streambuf::uflow(); }
    int_type pbackfail(int_type character) override { return std::streambuf::pbackfail(character); }
    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        return std::streambuf::xsputn(bytes, count);
    }
    int_type overflow(int_type character) override { return std::streambuf::overflow(character); }
};

}  // namespace ZroCommon
