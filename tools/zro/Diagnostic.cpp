#include "tools/zro/Diagnostic.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "tools/zro/Text.h"

namespace zro {
namespace {

constexpr std::size_t kShownCharacters = 110;
constexpr std::size_t kBefore = 60;
constexpr char32_t kEllipsis = 0x2026;
constexpr char32_t kReplacement = 0xFFFD;

// The part of a long line around the mark, with an ellipsis where something is missing.
Excerpt clipped(const Excerpt& whole) {
    if (whole.line.size() <= kShownCharacters) {
        return whole;
    }
    const std::size_t begin = whole.start > kBefore ? whole.start - kBefore : 0;
    const std::size_t end = std::min(whole.line.size(), begin + kShownCharacters);
    Excerpt part = whole;
    part.line = whole.line.substr(begin, end - begin);
    part.start = whole.start - begin;
    part.length = std::min(whole.length, std::max<std::size_t>(1, part.line.size() - part.start));
    if (begin > 0) {
        part.line.insert(part.line.begin(), kEllipsis);
        ++part.start;
    }
    if (end < whole.line.size()) {
        part.line += kEllipsis;
    }
    return part;
}

// What a terminal may show: a document must not be able to send it commands.
std::string harmless(std::u32string line) {
    std::replace_if(
        line.begin(), line.end(),
        [](char32_t character) { return character != U'\t' && isUnsafe(character); }, kReplacement);
    return toUtf8(line);
}

// Blanks as wide as the text before the mark; tabs stay, so that both lines stop at the same place.
std::string padding(std::u32string_view text) {
    std::string result;
    for (const char32_t character : text) {
        result += character == U'\t'
                      ? std::string("\t")
                      : std::string(static_cast<std::size_t>(displayWidth(character)), ' ');
    }
    return result;
}

std::string marks(std::u32string_view text) {
    int width = 0;
    for (const char32_t character : text) {
        width += displayWidth(character);
    }
    return "^" + std::string(static_cast<std::size_t>(std::max(width - 1, 0)), '~');
}

std::string excerptText(const Excerpt& whole, const Style& style) {
    const Excerpt shown = clipped(whole);
    const std::string number = std::to_string(shown.number);
    const std::u32string_view line = shown.line;
    const std::string gutter = std::string(number.size() + 1, ' ');
    return style.faint(" " + number + " | ") + harmless(shown.line) + "\n"
           + style.faint(gutter + " | ") + padding(line.substr(0, shown.start))
           + style.mark(marks(line.substr(shown.start, shown.length))) + "\n";
}

// What is shown already stays as it is.
std::string oneLine(const std::string& text) {
    return printable(fromUtf8(text));
}

std::string positionText(const Diagnostic& diagnostic) {
    if (diagnostic.excerpt) {
        return ":" + std::to_string(diagnostic.excerpt->number) + ":"
               + std::to_string(diagnostic.excerpt->column);
    }
    if (diagnostic.line > 0) {
        return ":" + std::to_string(diagnostic.line) + ":" + std::to_string(diagnostic.column);
    }
    return {};
}

const char* kindName(Diagnostic::Kind kind) {
    return kind == Diagnostic::Kind::Error ? "error" : "note";
}

void addPosition(nlohmann::ordered_json& object, const Diagnostic& diagnostic) {
    if (diagnostic.excerpt) {
        const Excerpt& excerpt = *diagnostic.excerpt;
        object["line"] = excerpt.number;
        object["column"] = excerpt.column;
        object["length"] = excerpt.length;
        object["text"] = toUtf8(clipped(excerpt).line);
    }
    if (diagnostic.line > 0) {
        object["parserLine"] = diagnostic.line;
        object["parserColumn"] = diagnostic.column;
    }
}

}  // namespace

std::string asText(const Diagnostic& diagnostic, const Style& style) {
    const std::string kind = kindName(diagnostic.kind);
    std::string text = style.bold((diagnostic.file.empty() ? "zro" : oneLine(diagnostic.file))
                                  + positionText(diagnostic) + ":");
    text += " ";
    text += diagnostic.kind == Diagnostic::Kind::Error ? style.error(kind + ":")
                                                       : style.note(kind + ":");
    text += " " + oneLine(diagnostic.message);
    if (diagnostic.code != 0) {
        text += style.faint(" [0x" + asHex(static_cast<std::uint32_t>(diagnostic.code)) + "]");
    }
    text += "\n";
    if (diagnostic.excerpt) {
        text += excerptText(*diagnostic.excerpt, style);
    }
    if (!diagnostic.hint.empty()) {
        text += "  " + style.note("hint:") + " " + diagnostic.hint + "\n";
    }
    return text;
}

std::string asJson(const Diagnostic& diagnostic) {
    nlohmann::ordered_json object;
    object["kind"] = kindName(diagnostic.kind);
    if (!diagnostic.file.empty()) {
        object["file"] = diagnostic.file;
    }
    addPosition(object, diagnostic);
    if (diagnostic.code != 0) {
        object["code"] = diagnostic.code;
    }
    object["message"] = diagnostic.message;
    if (!diagnostic.source.empty()) {
        object["source"] = diagnostic.source;
    }
    if (!diagnostic.hint.empty()) {
        object["hint"] = diagnostic.hint;
    }
    constexpr auto kReplaceBadBytes = nlohmann::ordered_json::error_handler_t::replace;
    return object.dump(-1, ' ', false, kReplaceBadBytes) + "\n";
}

}  // namespace zro
