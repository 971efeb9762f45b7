#pragma once

#include <cstddef>
#include <cstdint>

namespace ZroCommon::internal {

/// How bytes become characters. The "unknown" orders and the one-byte families all read a byte as a
/// character.
enum class EncodingMode : std::uint8_t {
    Unknown = 0,
    Utf8 = 1,
    Utf16Unknown = 2,
    Utf16LE = 3,
    Utf16BE = 4,
    Utf32Unknown = 5,
    Utf32LE = 6,
    Utf32BE = 7,
    Ascii = 8,
    Latin1 = 9,
};

/// Why a decoder stopped.
enum class DecodeStop : std::uint8_t {
    Full,           ///< the window is full
    NeedsBytes,     ///< the bytes are used up, or their rest is not a whole character
    Unrepresented,  ///< a character follows that the window cannot hold; see `decodeOne`
};

/// What comes behind the bytes at hand.
enum class InputTail : std::uint8_t {
    Open,    ///< perhaps more
    Closed,  ///< nothing: a cut sequence is broken, and a CR is a line end
    Nested,  ///< the text around an entity: a last CR may take a line feed with it from there
};

/// Progress of one decoding step; the pointers are where the next one goes on.
struct Decoding {
    const unsigned char* bytes;
    const unsigned char* bytesEnd;
    char16_t* units;
    char16_t* unitsEnd;
};

/// Decodes into a window of UTF-16 in which every line end is a line feed: CR, CR LF, CR NEL, NEL
/// and LS are folded. The window gets only what UTF-16 carries one for one and the parser need not
/// look at twice: no single surrogates, nothing above 10FFFF and no FFFF. Broken sequences come out
/// as U+FFFD. A CR that ends a nested input is not represented.
DecodeStop decode(EncodingMode mode, Decoding& state, InputTail tail);

/// The same for one character of a closed input. \return false when there is none to give
bool decodeNext(EncodingMode mode, Decoding& state);

/// One character by the rules of the mode.
struct DecodedOne {
    char32_t character = 0;
    std::size_t length = 0;  ///< in bytes; 0 when the sequence is not whole
    bool isCut = false;      ///< broken by the end of the input
};

/// Malformed input gives U+FFFD and uses up the bytes that were looked at. In UTF-8 there is no
/// test for overlong forms, surrogates or values above 10FFFF. Sequences that end at `end` are
/// broken if `atEnd`, else not whole. \param at  below `end`
DecodedOne decodeOne(EncodingMode mode, const unsigned char* at, const unsigned char* end,
                     bool atEnd);

/// Whether a CR takes the character behind it with it: LF and NEL. On purpose: U+FFFF as well, and
/// a sequence that the end of the document cuts. Both are lost, since a character read ahead is not
/// told from no character when it is U+FFFF, and is not asked for behind the end.
bool isTakenByReturn(const DecodedOne& next, InputTail tail);

}  // namespace ZroCommon::internal
