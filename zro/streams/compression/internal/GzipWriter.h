#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <ostream>
#include <span>

#include <zlib.h>

namespace ZroCommon::internal {

/// Packs bytes into one gzip member and passes it on to a stream as it grows.
class GzipWriter {
public:
    /// \param target  where the bytes go; null throws them away
    /// \param owned   the target too, when it is to live and die with this object
    explicit GzipWriter(std::ostream* target, std::unique_ptr<std::ostream> owned = nullptr);
    GzipWriter(const GzipWriter&) = delete;
    GzipWriter& operator=(const GzipWriter&) = delete;
    ~GzipWriter();

    /// Memory for the bytes that come next.
    std::array<char, 4096>& room() { return m_room; }

    /// Packs bytes; without effect behind the end.
    void write(std::span<char> bytes) { pack(bytes, Z_NO_FLUSH); }
    /// The same, and ends the data.
    void finish(std::span<char> bytes) { pack(bytes, Z_FINISH); }

private:
    void pack(std::span<char> bytes, int flush);
    void renewRoom();
    void passOn();
    void end();

    std::unique_ptr<std::ostream> m_owned;
    std::ostream* m_target;
    z_stream m_stream{};
    bool m_isOpen;
    std::array<char, 4096> m_room{};
    std::array<char, 4096> m_packed{};
};

}  // namespace ZroCommon::internal
