#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace ZroCommon::internal {

/// What a conversion reads and writes. The buffers belong to the caller.
struct ConversionBlock {
    const char* in = nullptr;
    std::size_t inPos = 0;      ///< bytes of the input already consumed
    std::size_t inLength = 0;   ///< bytes valid in the input
    char* out = nullptr;        ///< of a reader, as aligned as a unit
    std::size_t outLength = 0;  ///< bytes valid in the output; of a reader, an even number
    std::size_t outCapacity = 0;
};

/// What the writing side of a conversion is told.
struct WriterOptions {
    /// The first one that the target can encode stands for characters that it cannot.
    char16_t replacements[2] = {u'\u3013', u'?'};  // NOLINT(modernize-avoid-c-arrays): plain data
    // Passed on for converters that know of them; those of ICU have no use for them.
    bool first = false;
    int lineFeeds = 0;
    bool second = false;
};

/// A conversion between bytes in a named encoding and UTF-16LE without a byte order mark.
///
/// Names are ICU's, which are matched loosely and take in those of the IANA register, and those of
/// the tables (`makeconv` makes them from UCM files) in a directory of the caller's. A name that
/// could be a path is none. One thread at a time for an object.
class CodeConverter {
public:
    /// From `encoding` to UTF-16LE. Malformed input becomes U+FFFD. "UTF-16" honours and drops a
    /// byte order mark, and is little-endian without one.
    /// \param encoding  null and the empty name are not known
    /// \param tables    a directory of tables that go before those of ICU; may be empty
    /// \return null when the name is not known
    static std::unique_ptr<CodeConverter> openReader(const char* encoding,
                                                     const std::string& tables);

    /// From UTF-16LE to `encoding`. No byte order mark is written unless the name asks for one:
    /// "UTF-16" is little-endian, "UTF-32" big-endian. Half a surrogate pair at the end of an input
    /// is converted as one that stays alone. "x11-compound-text" is not known.
    static std::unique_ptr<CodeConverter>
    openWriter(const char* encoding, const std::string& tables, const WriterOptions& options);

    CodeConverter() = default;
    CodeConverter(const CodeConverter&) = delete;
    CodeConverter& operator=(const CodeConverter&) = delete;
    virtual ~CodeConverter() = default;

    /// Converts the rest of the input, as much as the output has room for, behind what the output
    /// holds. Characters are not divided on the output side of a writer. Input may stay: behind an
    /// output that is full, an odd last byte of a writer's.
    /// \param atEnd  nothing comes behind this input: what it leaves open is closed
    /// \return false when the conversion failed
    virtual bool convert(ConversionBlock& block, bool atEnd) = 0;
};

}  // namespace ZroCommon::internal
