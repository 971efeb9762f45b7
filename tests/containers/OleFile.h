#pragma once

#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>

#include "tests/support/OleBuilder.h"
#include "zro/containers/ole/OleCompFile.h"

namespace ZroCommon::testing {

inline OleDirPath olePath(std::initializer_list<const char*> names) {
    OleDirPath path{};
    for (const char* const name : names) {
        path.names[path.count++] = name;
    }
    return path;
}

/// A compound file that lies in memory, opened.
class OleFile {
public:
    explicit OleFile(const std::string& bytes)
        : m_bytes(bytes), m_io(&m_bytes), m_isOpen(m_file.OLEopen(&m_io)) {}

    bool isOpen() const { return m_isOpen; }
    OleCheck refusedBy() const { return m_file.getRefusal().check; }
    OleCompFile& operator*() { return m_file; }
    OleCompFile* operator->() { return &m_file; }

    std::unique_ptr<OleStream> open(std::initializer_list<const char*> names) {
        OleDirPath path = olePath(names);
        return std::unique_ptr<OleStream>(m_file.OLEopenStream(&path));
    }

    /// What a stream holds, read in pieces, or "none".
    std::string read(std::initializer_list<const char*> names, int piece = 1000) {
        const auto stream = open(names);
        return stream ? restOf(*stream, piece) : "none";
    }

    static std::string restOf(OleStream& stream, int piece = 1000) {
        std::string all;
        std::string bytes(static_cast<std::size_t>(piece), '\0');
        for (int got = 1; got > 0; all.append(bytes, 0, static_cast<std::size_t>(got))) {
            got = stream.OLEread(bytes.data(), piece);
        }
        return all;
    }

private:
    std::istringstream m_bytes;
    JZStreamIOobj m_io;
    OleCompFile m_file;
    bool m_isOpen;
};

/// Bytes that differ wherever one looks.
inline std::string oleData(std::size_t size, unsigned seed = 1) {
    std::string data;
    for (std::size_t i = 0; i < size; ++i) {
        seed = seed * 1664525U + 1013904223U;
        data += static_cast<char>(seed >> 24U);
    }
    return data;
}

}  // namespace ZroCommon::testing
