#include "tools/zro/Terminal.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <unistd.h>
#include <utility>

#include "tools/zro/Text.h"

namespace zro {
namespace {

constexpr auto kFirstDraw = std::chrono::milliseconds(400);
constexpr auto kRedraw = std::chrono::milliseconds(100);
constexpr std::uint64_t kBarWidth = 30;

bool environmentHas(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe)
    return value != nullptr && *value != '\0';
}

bool isDumb() {
    const char* terminal = std::getenv("TERM");  // NOLINT(concurrency-mt-unsafe)
    return terminal == nullptr || std::string_view(terminal) == "dumb";
}

bool wantsColour(When when, int descriptor) {
    if (when != When::Auto) {
        return when == When::Always;
    }
    return isatty(descriptor) == 1 && !isDumb() && !environmentHas("NO_COLOR");
}

}  // namespace

Style::Style(When when, int descriptor) : m_coloured(wantsColour(when, descriptor)) {}

std::string Style::in(const char* code, std::string_view text) const {
    if (!m_coloured) {
        return std::string(text);
    }
    return std::string("\x1b[") + code + "m" + std::string(text) + "\x1b[0m";
}

std::string Style::swatch(int red, int green, int blue) const {
    const std::string code =
        "48;2;" + std::to_string(red) + ";" + std::to_string(green) + ";" + std::to_string(blue);
    return m_coloured ? in(code.c_str(), std::string(12, ' ')) + "\n" : std::string();
}

Progress::Progress() : m_onTerminal(isatty(STDERR_FILENO) == 1 && !isDumb()) {}

void Progress::start(std::string label, std::uint64_t total) {
    clear();
    m_label = std::move(label);
    m_total = total;
    m_start = std::chrono::steady_clock::now();
    m_nextDraw = m_start + kFirstDraw;
}

void Progress::advanceTo(std::uint64_t done) {
    if (!m_onTerminal) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (now >= m_nextDraw) {
        m_nextDraw = now + kRedraw;
        draw(done);
    }
}

void Progress::hide() {
    clear();
    m_onTerminal = false;
}

void Progress::clear() {
    if (m_drawn) {
        std::cerr << "\r\x1b[K" << std::flush;
        m_drawn = false;
    }
}

void Progress::draw(std::uint64_t done) {
    std::string line = "\r" + m_label + "  ";
    if (m_total != 0) {
        const std::uint64_t filled = std::min(kBarWidth, done * kBarWidth / m_total);
        line += "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "]  ";
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_start;
    const auto speed = static_cast<std::uint64_t>(static_cast<double>(done) / elapsed.count());
    std::cerr << line << asSize(done) << "  " << asSize(speed) << "/s\x1b[K" << std::flush;
    m_drawn = true;
}

}  // namespace zro
