#include "zro/xml/internal/CharReader.h"

#include <algorithm>
#include <utility>

#include "zro/xml/internal/Reuse.h"
#include "zro/xml/internal/Scan.h"
#include "zro/xml/internal/TextBuffer.h"

namespace ZroCommon::internal {
namespace {

constexpr char32_t kNextLine = 0x85;
constexpr char32_t kLineSeparator = 0x2028;

constexpr std::size_t kOrdinaryDepth = 16;  // of inputs within each other

constexpr bool isLead(char16_t unit) {
    return (unit & 0xFC00U) == 0xD800U;
}

constexpr bool isTrail(char16_t unit) {
    return (unit & 0xFC00U) == 0xDC00U;
}

constexpr bool isLineEnd(char32_t c) {
    return c == u'\n' || c == u'\r' || c == kNextLine || c == kLineSeparator;
}

// Numbers beyond 2^31 wrap.
int plus(int number, std::size_t count) {
    return static_cast<int>(static_cast<unsigned>(number) + static_cast<unsigned>(count));
}

}  // namespace

CharReader::CharReader() {
    m_frames.emplace_back().input = std::make_unique<DecodedInput>();
}

void CharReader::reset() {
    m_segments.clear();
    std::unique_ptr<DecodedInput> input = std::move(m_frames.front().input);
    input->reset();
    m_frames.clear();
    m_frames.emplace_back().input = std::move(input);
    m_run = {};
    m_high = nullptr;
    m_replaced = 0;
}

void CharReader::shrink() {
    clearForReuse(m_segments);
    if (m_frames.capacity() > kOrdinaryDepth) {
        m_frames.shrink_to_fit();
    }
    input().shrink();
}

void CharReader::close() {
    while (m_frames.size() > 1) {
        popFrame();
    }
    suspendRun();
    keepUnread();
    // Nothing is left to read, but the units stay as long as nobody opens another stream, so that
    // the position can still be counted.
    const char16_t* const end = top().window.at;
    top().window = {end, end, end};
    top().high = end;
    resumeRun();
    input().close();
}

const DecodedInput& CharReader::input() const {
    // A literal belongs to the input that it was read from, which lies right under it.
    return top().input != nullptr ? *top().input : *m_frames[m_frames.size() - 2].input;
}

DecodedInput& CharReader::input() {
    return const_cast<DecodedInput&>(std::as_const(*this).input());
}

bool CharReader::hasFailed() const {
    if (top().input == nullptr) {
        return m_run.at == m_run.end && !inSegment();
    }
    const Run& window = inSegment() ? top().window : m_run;
    return !hasStream() || (input().atEnd() && window.at == window.end);
}

// Runs.

void CharReader::suspendRun() {
    if (inSegment()) {
        Segment& segment = m_segments.back();
        if (segment.single == kEnd) {
            segment.position = static_cast<std::int32_t>(m_run.at - segment.text.getBuffer());
        }
        return;
    }
    top().window = m_run;
    top().high = m_high;
}

void CharReader::resumeRun() {
    if (!inSegment()) {
        m_run = top().window;
        m_high = top().high;
        return;
    }
    const Segment& segment = m_segments.back();
    if (segment.single != kEnd) {
        m_run = {};
    } else {
        const char16_t* units = segment.text.getBuffer();
        m_run = {units, units + segment.position, units + segment.text.length()};
    }
    m_high = m_run.at;
}

void CharReader::dropUsedSegments() {
    while (inSegment() && m_run.at == m_run.end && m_segments.back().single == kEnd) {
        m_segments.pop_back();
        resumeRun();
    }
}

void CharReader::addSegment(Segment segment) {
    dropUsedSegments();
    suspendRun();
    m_segments.push_back(std::move(segment));
    resumeRun();
}

void CharReader::pushText(const UnicodeString& text, std::uint32_t nesting) {
    if (!text.isEmpty()) {
        addSegment({text, 0, kEnd, nesting});
    }
}

void CharReader::pushReplacement(const UnicodeString& text) {
    checkCancel();
    countReplacement(static_cast<std::uint64_t>(text.length()));
    pushText(text);
}

void CharReader::countReplacement(std::uint64_t units) {
    m_replaced += units;
    if (limits.entityExpansionFactor != 0 && m_replaced > limits.entityExpansionThreshold
        && m_replaced / limits.entityExpansionFactor > m_frames.front().input->total()) {
        throw LimitBreach{u"entity expansion"};
    }
}

void CharReader::pushBackSlowly(char32_t c) {
    if (c == kEnd) {
        return;
    }
    if (c >= 0x10000 && m_run.at - m_run.start >= 2
        && m_run.at[-2] == static_cast<char16_t>(0xD7C0 + (c >> 10U))
        && m_run.at[-1] == static_cast<char16_t>(0xDC00 + (c & 0x3FFU))) {
        noteHigh();
        m_run.at -= 2;
        return;
    }
    pushCharacter(c);
}

void CharReader::pushCharacter(char32_t c) {
    if (c != kEnd) {
        addSegment({UnicodeString(), 0, c, nesting()});
    }
}

void CharReader::findRun() {
    dropUsedSegments();
    if (m_run.at == m_run.end && !inSegment()) {
        refill();
    }
}

DecodedInput::Fill CharReader::refill() {
    if (top().input == nullptr || !hasStream()) {
        return DecodedInput::Fill::End;
    }
    checkCancel();
    const InputTail tail = m_frames.size() > 1 ? InputTail::Nested : InputTail::Closed;
    DecodedInput& source = *top().input;
    auto fill = DecodedInput::Fill::End;
    if (source.hasMore()) {
        leaveWindow();
        updatePosition();
        source.makeWindow(m_run);
        m_high = m_run.at;  // before anything throws: the old window is gone
        top().counted = m_run.at;
        fill = source.refill(m_run, tail);
    }
    if (tail == InputTail::Nested) {
        countReplacement(static_cast<std::uint64_t>(m_run.end - m_run.at) + 1);
    }
    return fill;
}

void CharReader::checkCancel() const {
    if (limits.cancelFlag != nullptr && limits.cancelFlag->load(std::memory_order_relaxed)) {
        throw LimitBreach{u"cancelled"};
    }
}

// Single characters.

char32_t CharReader::getSlowly() {
    char32_t c = kEnd;
    Endings endings;
    for (;;) {
        while (!takeNext(c, endings)) {
        }
        if (c != u'\r' || endings.count == 0 || readBehindReturn()) {
            break;
        }
        endInReturn(endings);
    }
    return endings.count + endings.returns == 0 ? c : passEndings(c, endings);
}

// One step to the next character. False when the step did not give one.
bool CharReader::takeNext(char32_t& c, Endings& endings) {
    dropUsedSegments();
    if (m_run.at != m_run.end) {
        c = takeCodePoint();
        return true;
    }
    if (inSegment()) {
        c = takeSingle(endings);
        return true;
    }
    switch (refill()) {
    case DecodedInput::Fill::Filled: return false;
    case DecodedInput::Fill::End: return atInputEnd(c, endings);
    case DecodedInput::Fill::Special: break;
    }
    c = top().input->takeSpecial();
    if (c == u'\r') {
        endInReturn(endings);
        return false;
    }
    if (c != kEnd) {
        countCharacter(c);
    }
    return true;
}

bool CharReader::atInputEnd(char32_t& c, Endings& endings) {
    if (m_frames.size() > 1 && top().input != nullptr) {
        popFrame();
        ++endings.count;
        return false;
    }
    if (top().input != nullptr) {
        top().input->bytes().setEndState();
    }
    c = kEnd;
    return true;
}

void CharReader::endInReturn(Endings& endings) {
    popFrame();
    endings.returns += endings.count + 1;
    endings.count = 0;
}

// On purpose: the first character behind external entities is read as one of the outer input and,
// for each of them that ends there, as if it came from the entity. So it counts several times, be
// it put back text or not; and line ends in such text are folded, as everywhere in an input.
//
// On purpose: a CR that ends an external entity takes a line feed behind the reference with it, and
// what else follows there is read again behind all pushed-back text, and counts again.
char32_t CharReader::passEndings(char32_t c, const Endings& endings) {
    if (endings.count != 0 && c != kEnd) {
        countCharacter(c, endings.count);
        c = isLineEnd(c) ? U'\n' : c;
    }
    if (endings.returns == 0) {
        return c;
    }
    const bool isLost = m_frames.size() == 1 && hasFailed();  // cut off by the document's end
    if (c != u'\n' && c != kNextLine && c != kEnd && !isLost) {
        keepReadAhead(c);
    }
    countCharacter(u'\n', endings.returns);
    return u'\n';
}

// Behind a CR of put back text: reads ahead in the bytes, where a line feed belongs to the CR.
// False when they end inside an outer input, which goes on with it then.
bool CharReader::readBehindReturn() {
    if (top().input == nullptr || hasReadAhead()) {
        return true;
    }
    char32_t next = kEnd;
    const InputTail tail = m_frames.size() > 1 ? InputTail::Nested : InputTail::Closed;
    if (!settle().takeBehindReturn(tail, next)) {
        return false;
    }
    if (next != kEnd) {
        keepReadAhead(next);
    }
    return true;
}

void CharReader::readAheadOfReturn() {
    if (!inSegment() && top().input != nullptr && top().input->isBehindReturn(m_run)) {
        readBehindReturn();
    }
}

// The character read ahead comes behind all other text put back.
bool CharReader::hasReadAhead() const {
    return inSegment() && m_segments[top().firstSegment].isReadAhead;
}

void CharReader::keepReadAhead(char32_t c) {
    suspendRun();
    const auto first = m_segments.begin() + static_cast<std::ptrdiff_t>(top().firstSegment);
    m_segments.insert(first, {UnicodeString(), 0, c, top().nesting, true});
    resumeRun();
}

char32_t CharReader::takeCodePoint() {
    const char16_t unit = *m_run.at++;
    if (!isLead(unit) || m_run.at == m_run.end || !isTrail(*m_run.at)) {
        return unit;
    }
    const char16_t trail = *m_run.at++;
    return 0x10000 + ((static_cast<char32_t>(unit) & 0x3FFU) << 10U) + (trail & 0x3FFU);
}

// A character that was read ahead counts now, as if an input had ended before it.
char32_t CharReader::takeSingle(Endings& endings) {
    const Segment single = m_segments.back();
    m_segments.pop_back();
    resumeRun();
    endings.count += single.isReadAhead ? 1U : 0U;
    return single.single;
}

// Inputs.

void CharReader::push(std::unique_ptr<DecodedInput> inner) {
    const std::uint32_t outer = nesting();
    if (limits.inputNesting != 0 && outer >= limits.inputNesting) {
        throw LimitBreach{u"input nesting"};
    }
    addFrame(outer + 1).input = std::move(inner);
    resumeRun();
}

void CharReader::pushLiteral(std::u16string_view units, int line, int column) {
    dropUsedSegments();
    Frame& frame = addFrame(nesting());
    frame.window = {units.data(), units.data(), units.data() + units.size()};
    frame.high = units.data();
    frame.counted = units.data();
    frame.line = line;
    frame.column = column;
    resumeRun();
}

// On purpose: a character that was read ahead is the first one of an input that begins now.
CharReader::Frame& CharReader::addFrame(std::uint32_t nesting) {
    dropUsedSegments();
    suspendRun();
    const std::size_t outerSegments = top().firstSegment;
    const bool movesReadAhead = hasReadAhead();
    Frame& frame = m_frames.emplace_back();
    frame.firstSegment = m_segments.size();
    frame.nesting = nesting;
    if (movesReadAhead) {
        const auto first = m_segments.begin() + static_cast<std::ptrdiff_t>(outerSegments);
        std::rotate(first, first + 1, m_segments.end());
        --frame.firstSegment;
    }
    return frame;
}

void CharReader::popLiteral() {
    popFrame();
}

void CharReader::popFrame() {
    if (top().input != nullptr) {
        leaveWindow();
    }
    m_segments.resize(top().firstSegment);
    m_frames.pop_back();
    resumeRun();
}

DecodedInput& CharReader::settle() {
    dropUsedSegments();
    suspendRun();
    updatePosition();
    keepUnread();
    top().input->settle(top().window);
    resumeRun();
    return *top().input;
}

// Characters of the window that were put back stay to be read, as text before the window. The run
// is suspended.
void CharReader::keepUnread() {
    Frame& frame = top();
    if (frame.window.at < frame.high) {
        const auto count = static_cast<std::int32_t>(frame.high - frame.window.at);
        const std::size_t first = frame.firstSegment + (hasReadAhead() ? 1 : 0);
        m_segments.insert(m_segments.begin() + static_cast<std::ptrdiff_t>(first),
                          {UnicodeString(frame.window.at, count), 0, kEnd, frame.nesting});
        frame.window.at = frame.high;
    }
}

// Positions.

void CharReader::updatePosition() const {
    Frame& frame = m_frames.back();
    const bool current = !inSegment();
    const char16_t* at =
        current ? std::max(m_run.at, m_high) : std::max(frame.window.at, frame.high);
    if (at == frame.counted) {
        return;
    }
    LineCount count;
    countLines(frame.counted, at, count);
    frame.line = plus(frame.line, count.lines);
    frame.column = plus(count.lines == 0 ? frame.column : 0, count.characters);
    frame.counted = at;
}

void CharReader::setPosition(int line, int column) {
    updatePosition();
    top().line = line;
    top().column = column;
}

// A character that was read past the window, or counts once more.
void CharReader::countCharacter(char32_t c, std::size_t times) {
    const int line = this->line();
    const int column = this->column();
    if (isLineEnd(c)) {
        setPosition(plus(line, times), 0);
    } else {
        setPosition(line, plus(column, times));
    }
}

int CharReader::line() const {
    updatePosition();
    return top().line;
}

int CharReader::column() const {
    updatePosition();
    return top().column;
}

std::size_t normalizeLiteral(std::span<char16_t> units) {
    std::size_t to = 0;
    for (std::size_t from = 0; from < units.size(); ++from) {
        char16_t unit = units[from];
        const char16_t next = from + 1 < units.size() ? units[from + 1] : char16_t{0};
        if (isLead(unit)) {
            if (!isTrail(next)) {
                unit = 0xFFFD;
            } else {
                units[to++] = unit;
                unit = next;
            }
            ++from;
        } else if (unit == u'\r') {
            const bool isCut = isLead(next) && from + 2 == units.size();
            from += next == u'\n' || next == kNextLine || isCut ? 1U : 0U;
            unit = u'\n';
        } else if (unit == kNextLine || unit == kLineSeparator) {
            unit = u'\n';
        }
        units[to++] = unit;
    }
    return to;
}

}  // namespace ZroCommon::internal
