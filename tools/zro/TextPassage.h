#pragma once

#include <istream>
#include <optional>
#include <sstream>
#include <string>

#include "zro/streams/ZRMemStream.h"

#include "tools/zro/Session.h"

namespace zro {

/// Bytes of which the first can be looked at before all are read, in memory that does not grow.
class PeekedBytes {
public:
    static constexpr std::size_t kHead = 2048;

    /// \param source  lives as long
    explicit PeekedBytes(std::istream& source);

    /// Up to `kHead` bytes.
    const std::string& head() const { return m_headBytes; }
    /// All of them, once, from a stream that can be set back as long as no more than its head has
    /// been read.
    std::istream& all() { return m_all; }

    /// The name of the encoding that the head looks like, or nothing.
    std::optional<std::string> detectEncoding() const;

private:
    std::string m_headBytes;
    std::istringstream m_head;
    ZroCommon::ZRMemStream m_all;
};

/// How a text is written anew.
struct Conversion {
    std::string from;  ///< empty: guessed by the first bytes
    std::string to = "UTF-8";
    std::size_t limit = 0;  ///< bytes, 0 for no limit
    std::string output = "-";
};

/// Why a text cannot be read from, or written in, an encoding of that name: none is known. Empty
/// when one is.
std::string sourceEncodingError(const std::string& name);
std::string targetEncodingError(const std::string& name);

/// Writes a text in another encoding. What goes wrong is reported.
void convertText(Session& session, const Input& input, PeekedBytes& bytes,
                 const Conversion& conversion);

/// Says that an encoding cannot be guessed.
void failToDetect(Session& session, const Input& input);

}  // namespace zro
