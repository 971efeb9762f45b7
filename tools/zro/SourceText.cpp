#include "tools/zro/SourceText.h"

#include <algorithm>
#include <utility>

namespace zro {
namespace {

constexpr std::size_t kKeptLines = 50;
constexpr std::size_t kKeptCharacters = 65536;  // of one line
constexpr std::size_t kContext = 200;           // read behind the position

constexpr char32_t kNextLine = 0x85;
constexpr char32_t kLineSeparator = 0x2028;

bool isBlank(char32_t character) {
    return character == U' ' || character == U'\t' || character == U'\n';
}

bool isBlankText(std::u32string_view text) {
    return std::all_of(text.begin(), text.end(), isBlank);
}

// Where the tag that ends at or before the text's end begins.
std::size_t tagStart(std::u32string_view text) {
    const std::size_t start = text.rfind(U'<');
    return start == std::u32string_view::npos ? 0 : start;
}

bool isAttributeAt(std::u32string_view text, std::size_t offset, std::size_t length) {
    if (offset == 0 || !isBlank(text[offset - 1])) {
        return false;
    }
    std::size_t next = offset + length;
    while (next < text.size() && isBlank(text[next])) {
        ++next;
    }
    return next < text.size() && text[next] == U'=';
}

bool startsName(std::u32string_view text, std::size_t offset) {
    return offset > 0
           && (isBlank(text[offset - 1]) || text[offset - 1] == U'<' || text[offset - 1] == U'/');
}

}  // namespace

SourceText::SourceText(std::unique_ptr<std::istream> input)
    : m_input(std::move(input)), m_decoder(*m_input) {}

bool SourceText::moveTo(ReadPosition position) {
    m_position = position;
    while (!isComplete()) {
        const auto character = m_decoder.next();
        if (!character) {
            break;
        }
        take(*character);
    }
    const Line& first = m_lines.front();
    return position.line > first.number
           || (position.line == first.number && charactersRead(first) >= first.dropped);
}

void SourceText::moveToBroken() {
    ReadPosition position;
    for (auto character = m_decoder.next(); character; character = m_decoder.next()) {
        const Line& line = m_lines.back();
        const std::size_t read = line.dropped + line.text.size() + 1;
        position = {line.number, static_cast<int>(read)};
        take(*character);
        if (m_decoder.isBroken()) {
            break;
        }
    }
    position.column -= position.line == 1 ? m_decoder.uncounted() : 0;
    moveTo(position);
}

// Line ends as the parser folds them: CR LF, CR U+0085, CR, LF, U+0085 and U+2028.
void SourceText::take(char32_t character) {
    const bool completes = m_afterReturn && (character == U'\n' || character == kNextLine);
    m_afterReturn = character == U'\r';
    if (completes) {
        return;
    }
    if (character == U'\n' || character == U'\r' || character == kNextLine
        || character == kLineSeparator) {
        breakLine();
        return;
    }
    Line& line = m_lines.back();
    line.text += character;
    if (line.text.size() > kKeptCharacters) {
        line.text.erase(0, kKeptCharacters / 2);
        line.dropped += kKeptCharacters / 2;
    }
}

void SourceText::breakLine() {
    const int number = m_lines.back().number + 1;
    m_lines.push_back({number, 0, {}});
    if (m_lines.size() > kKeptLines) {
        m_lines.pop_front();
    }
}

bool SourceText::isComplete() const {
    const Line& line = m_lines.back();
    return line.number > m_position.line
           || (line.number == m_position.line
               && line.dropped + line.text.size() > charactersRead(line) + kContext);
}

bool SourceText::isAtEnd() const {
    const Line& last = m_lines.back();
    return last.number == m_position.line
           && charactersRead(last) >= last.dropped + last.text.size();
}

// Of the whole line, its dropped front included.
std::size_t SourceText::charactersRead(const Line& line) const {
    if (line.number < m_position.line) {
        return line.dropped + line.text.size();
    }
    const int counted = std::max(m_position.column, 0);
    return static_cast<std::size_t>(line.number == 1 ? counted + m_decoder.uncounted() : counted);
}

std::size_t SourceText::lineOfPosition() const {
    std::size_t index = m_lines.size() - 1;
    while (index > 0 && m_lines[index].number > m_position.line) {
        --index;
    }
    if (charactersRead(m_lines[index]) > m_lines[index].dropped) {
        return index;
    }
    do {
        index -= index > 0 ? 1 : 0;
    } while (index > 0 && isBlankText(m_lines[index].text));
    return index;
}

Excerpt SourceText::atPosition() const {
    const std::size_t index = lineOfPosition();
    const Line& line = m_lines[index];
    if (line.number < m_position.line) {
        return excerpt(index, line.text.size(), 1);
    }
    const std::size_t read = charactersRead(line);
    return excerpt(index, read > line.dropped ? read - line.dropped - 1 : 0, 1);
}

Excerpt SourceText::behindPosition() const {
    const std::size_t index = lineOfPosition();
    const Line& line = m_lines[index];
    const std::size_t read = charactersRead(line);
    return excerpt(index, read > line.dropped ? read - line.dropped : 0, 1);
}

Excerpt SourceText::excerpt(std::size_t lineIndex, std::size_t start, std::size_t length) const {
    const Line& line = m_lines[lineIndex];
    Excerpt result;
    result.line = line.text;
    result.number = line.number;
    result.start = std::min(start, line.text.size());
    result.column = static_cast<int>(line.dropped + result.start) + 1;
    result.length = std::max<std::size_t>(1, std::min(length, line.text.size() - result.start));
    return result;
}

SourceText::Joined SourceText::joined() const {
    Joined result;
    for (const Line& line : m_lines) {
        if (line.number > m_position.line) {
            break;
        }
        result.starts.push_back(result.text.size());
        const std::size_t read = charactersRead(line);
        result.text += line.text.substr(0, read > line.dropped ? read - line.dropped : 0);
        if (line.number < m_position.line) {
            result.text += U'\n';
        }
    }
    return result;
}

Excerpt SourceText::excerptAt(const Joined& joined, std::size_t offset, std::size_t length) const {
    const auto next = std::upper_bound(joined.starts.begin(), joined.starts.end(), offset);
    const auto index = static_cast<std::size_t>(std::distance(joined.starts.begin(), next)) - 1;
    return excerpt(index, offset - joined.starts[index], length);
}

std::optional<Excerpt> SourceText::lastOf(std::u32string_view text, std::size_t distance) const {
    const Joined all = joined();
    const std::size_t offset = all.text.rfind(text);
    if (text.empty() || offset == std::u32string::npos
        || offset + text.size() + distance < all.text.size()) {
        return std::nullopt;
    }
    return excerptAt(all, offset, text.size());
}

std::optional<Excerpt> SourceText::prefixInTag(std::u32string_view prefix) const {
    const Joined all = joined();
    const std::u32string name = std::u32string(prefix) + U":";
    std::size_t offset = all.text.find(name, tagStart(all.text));
    while (offset != std::u32string::npos && !startsName(all.text, offset)) {
        offset = all.text.find(name, offset + 1);
    }
    if (offset == std::u32string::npos) {
        return std::nullopt;
    }
    return excerptAt(all, offset, prefix.size());
}

std::optional<Excerpt> SourceText::attributeInTag(std::u32string_view name) const {
    const Joined all = joined();
    const std::size_t start = tagStart(all.text);
    std::size_t offset = all.text.rfind(name);
    while (offset != std::u32string::npos && offset > start) {
        if (isAttributeAt(all.text, offset, name.size())) {
            return excerptAt(all, offset, name.size());
        }
        offset = all.text.rfind(name, offset - 1);
    }
    return std::nullopt;
}

}  // namespace zro
