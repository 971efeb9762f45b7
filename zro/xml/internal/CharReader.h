#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "zro/foundation/Text.h"
#include "zro/xml/ZRLimits.h"
#include "zro/xml/internal/DecodedInput.h"

namespace ZroCommon::internal {

/// A limit was passed. Becomes a `ZRError` where the parser meets its caller.
struct LimitBreach {
    const char16_t* limit;
};

/// The characters of a document as the scanner reads them: the innermost input, texts that were
/// pushed back in front of it, and line and column.
///
/// Most characters lie in the current run, where `get` is a pointer step and scanners look ahead by
/// themselves. A run is the decoded window of an input, a pushed-back text or a literal; what does
/// not fit into one (single surrogates and the like) comes from `get` alone. Reading crosses from
/// one run and one input to the next without a seam, and without recursion however many end at the
/// same place.
///
/// Line and column belong to the input: the line counts from 1, the column is the number of
/// characters read on it. Pushed-back characters do not count again. They are counted when asked.
class CharReader {
public:
    /// The end of all input; also what a character U+FFFF of the document reads as.
    static constexpr char32_t kEnd = 0xFFFF;

    CharReader();

    /// Drops all inputs and texts and forgets their names and encoding.
    void reset();
    /// Behind `reset`: gives the memory of a large document back.
    void shrink();
    /// Drops all inputs, with the position of the document left as it is.
    void close();

    /// The innermost input; there always is one, though perhaps without a stream.
    DecodedInput& input();
    const DecodedInput& input() const;

    bool hasStream() const { return input().baseStream() != nullptr; }
    /// True when the end of the innermost input was met, and when there is none.
    bool hasFailed() const;

    /// The next character, or `kEnd`.
    char32_t get() {
        if (m_run.at != m_run.end && (*m_run.at & 0xF800U) != 0xD800U) {
            return *m_run.at++;
        }
        return getSlowly();
    }

    /// Puts the character that was read last back. Several can be put back, the last read first.
    /// `kEnd` puts nothing back.
    void pushBack(char32_t c) {
        if (m_run.at != m_run.start && c < 0x10000 && m_run.at[-1] == c && c != kEnd) {
            noteHigh();
            --m_run.at;
            return;
        }
        pushBackSlowly(c);
    }

    /// Puts a character that was not read from here in front of what follows.
    void pushCharacter(char32_t c);
    /// Puts a text in front of what follows.
    void pushText(const UnicodeString& text) { pushText(text, nesting()); }
    /// The same for a text from an input of that nesting, which may have ended by now.
    void pushText(const UnicodeString& text, std::uint32_t nesting);
    /// The same for replacement text, which the limits watch.
    void pushReplacement(const UnicodeString& text);

    /// The current run, for scanners that look for its next stopping character. Empty when the next
    /// character has to come from `get`.
    const Run& run() {
        if (m_run.at == m_run.end) {
            findRun();
        }
        return m_run;
    }
    /// The same, without a look for another one when the current run is used up. Never throws.
    const Run& currentRun() const { return m_run; }
    /// True when the run is the window of an input: no pushed-back text and no literal. Line ends
    /// are folded there, and surrogates come in pairs.
    bool inWindow() const { return !inSegment() && top().input != nullptr; }
    /// Goes on in the current run.
    void moveTo(const char16_t* at) { m_run.at = at; }
    /// Goes on at a unit of the current run as if it had been read and put back.
    void moveBefore(const char16_t* at) {
        m_run.at = at;
        m_high = std::max(m_high, at + 1);
    }

    /// Makes an opened input the innermost one. Its end takes reading back to where it was.
    void push(std::unique_ptr<DecodedInput> inner);
    /// How many external inputs lie around the character that was read last, by what they refer to:
    /// what was put back counts for the input that it came from.
    std::uint32_t nesting() const {
        return inSegment() ? m_segments.back().nesting : top().nesting;
    }

    /// Behind a line feed: if the bytes have a CR alone there, the character behind it is read
    /// ahead now, as it would be byte by byte. For a place that puts something back in front of it.
    void readAheadOfReturn();

    /// Reads a text on its own: `get` ends with `kEnd` at its end, until `popLiteral`.
    /// \param units  normalised by `normalizeLiteral`; stays where it is until then
    void pushLiteral(std::u16string_view units, int line, int column);
    void popLiteral();

    /// Reading goes on with undecoded bytes behind the last character; see `DecodedInput::settle`.
    DecodedInput& settle();

    /// Line 1, column 0 at this place.
    void startCounting() { setPosition(1, 0); }
    int line() const;
    int column() const;

    /// Called before a window moves or goes with its input, for who still looks into it. What it
    /// throws comes out of the reading operation, which then has not happened. May be empty.
    std::function<void()> onWindowLeft;

    ZRLimits limits;
    /// \throws LimitBreach  when the cancel flag is set
    void checkCancel() const;

private:
    // A text put back, or a single character that a text cannot hold.
    struct Segment {
        UnicodeString text;
        std::int32_t position = 0;
        char32_t single = kEnd;
        std::uint32_t nesting = 0;
        bool isReadAhead = false;  // taken from behind a CR; counts when it is read
    };

    // Inputs that ended on the way to a character.
    struct Endings {
        std::size_t count = 0;    // since the last one that ended in a CR
        std::size_t returns = 0;  // up to that one
    };

    // One input or literal. `window` and `high` of the current frame are out of date while its
    // window is the current run.
    struct Frame {
        std::unique_ptr<DecodedInput> input;  // null in a literal
        Run window;
        const char16_t* high = nullptr;     // what was read at most before a push back
        const char16_t* counted = nullptr;  // up to where `line` and `column` are right
        int line = -1;
        int column = -1;
        std::size_t firstSegment = 0;
        std::uint32_t nesting = 0;
    };

    Frame& top() { return m_frames.back(); }
    const Frame& top() const { return m_frames.back(); }
    bool inSegment() const { return m_segments.size() > top().firstSegment; }
    void noteHigh() {
        if (m_run.at > m_high) {
            m_high = m_run.at;
        }
    }

    char32_t getSlowly();
    bool takeNext(char32_t& c, Endings& endings);
    bool atInputEnd(char32_t& c, Endings& endings);
    void endInReturn(Endings& endings);
    void pushBackSlowly(char32_t c);
    void findRun();
    char32_t takeCodePoint();
    char32_t takeSingle(Endings& endings);
    bool readBehindReturn();
    char32_t passEndings(char32_t c, const Endings& endings);
    bool hasReadAhead() const;
    void keepReadAhead(char32_t c);
    DecodedInput::Fill refill();

    void suspendRun();
    void resumeRun();
    void dropUsedSegments();
    void addSegment(Segment segment);
    void countReplacement(std::uint64_t units);
    void keepUnread();
    Frame& addFrame(std::uint32_t nesting);
    void popFrame();
    void leaveWindow() const {
        if (onWindowLeft) {
            onWindowLeft();
        }
    }

    void updatePosition() const;
    void setPosition(int line, int column);
    void countCharacter(char32_t c, std::size_t times = 1);

    Run m_run;
    const char16_t* m_high = nullptr;  // as in Frame, of the current frame
    std::vector<Segment> m_segments;   // of all frames, the next to be read last
    mutable std::vector<Frame> m_frames;
    std::uint64_t m_replaced = 0;  // units of replacement text so far
};

/// Gives a literal's text the reading of an input: line ends are folded as `decode` does, and a
/// lead surrogate without a trail makes U+FFFD of itself and the unit behind it. \return the number
/// of units that are left
std::size_t normalizeLiteral(std::span<char16_t> units);

}  // namespace ZroCommon::internal
