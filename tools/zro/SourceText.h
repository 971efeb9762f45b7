#pragma once

#include <cstddef>
#include <deque>
#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tools/zro/SourceDecoder.h"

namespace zro {

/// Where a parser says it stands: its line from 1, and the characters it has read on that line.
struct ReadPosition {
    int line = 0;
    int column = 0;
};

/// One line of a document with a part of it marked.
struct Excerpt {
    std::u32string line;     ///< a piece of it when it is very long
    int number = 0;          ///< of the line, from 1
    int column = 0;          ///< of the first marked character in the whole line, from 1
    std::size_t start = 0;   ///< index of the first marked character in `line`
    std::size_t length = 1;  ///< number of marked characters, at least 1
};

/// The last lines of a document up to a position, decoded and divided as the parser does it.
///
/// Needs little memory whatever the document's size, and moves forward only: all the errors of a
/// large file cost one more pass over it and nothing else.
class SourceText {
public:
    explicit SourceText(std::unique_ptr<std::istream> input);

    /// Reads on to the end of the position's line, or a little behind the position when the line is
    /// long. \return false when the position is behind us already
    bool moveTo(ReadPosition position);

    /// Reads on to the first character that is malformed in UTF-8, or to the end.
    void moveToBroken();

    /// The last character read. When that was a line end, the end of its line.
    Excerpt atPosition() const;

    /// The place behind that: where something is missing.
    Excerpt behindPosition() const;

    /// The last place up to the position that holds the text, if no more than `distance` characters
    /// are between it and the position.
    std::optional<Excerpt> lastOf(std::u32string_view text, std::size_t distance) const;

    /// A prefix, without its colon, where the tag before the position first uses it.
    std::optional<Excerpt> prefixInTag(std::u32string_view prefix) const;

    /// An attribute, by its name as written, where the tag before the position has it last.
    std::optional<Excerpt> attributeInTag(std::u32string_view name) const;

    /// True when nothing of the document is left behind the position.
    bool isAtEnd() const;

    /// Some bytes from the start of the document.
    const std::string& firstBytes() const { return m_decoder.firstBytes(); }

private:
    struct Line {
        int number = 1;
        std::size_t dropped = 0;  // characters cut off at the front of a very long line
        std::u32string text;
    };
    // The kept text up to the position, line ends included, and the offset of each line in it.
    struct Joined {
        std::u32string text;
        std::deque<std::size_t> starts;
    };

    void take(char32_t character);
    void breakLine();
    bool isComplete() const;
    std::size_t charactersRead(const Line& line) const;
    Joined joined() const;
    // The position's line, or the one before when nothing of it was read but blank lines.
    std::size_t lineOfPosition() const;
    Excerpt excerpt(std::size_t lineIndex, std::size_t start, std::size_t length) const;
    Excerpt excerptAt(const Joined& joined, std::size_t offset, std::size_t length) const;

    std::unique_ptr<std::istream> m_input;
    SourceDecoder m_decoder;
    ReadPosition m_position;
    std::deque<Line> m_lines{1};
    bool m_afterReturn = false;  // a line feed or next line behind it belongs to it
};

}  // namespace zro
