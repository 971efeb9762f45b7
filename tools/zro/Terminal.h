#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace zro {

enum class When : std::uint8_t { Auto, Always, Never };

/// Colours of one output stream, or none.
class Style {
public:
    Style() = default;

    /// Colours for a file descriptor. `Auto` means: only on a terminal that knows them, and not
    /// when the environment has NO_COLOR.
    Style(When when, int descriptor);

    std::string bold(std::string_view text) const { return in("1", text); }
    std::string error(std::string_view text) const { return in("1;31", text); }
    std::string note(std::string_view text) const { return in("1;36", text); }
    std::string mark(std::string_view text) const { return in("1;32", text); }
    std::string faint(std::string_view text) const { return in("2", text); }
    /// A line that shows the colour, nothing where there are none.
    std::string swatch(int red, int green, int blue) const;

private:
    std::string in(const char* code, std::string_view text) const;

    bool m_coloured = false;
};

/// A progress bar on standard error, with size and speed: only on a terminal, only when the work
/// takes a while, and gone when it is over.
class Progress {
public:
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { clear(); }

    /// \param total  bytes to come, 0 when unknown
    void start(std::string label, std::uint64_t total);
    void advanceTo(std::uint64_t done);
    /// No bar is drawn any more.
    void hide();
    /// Takes the bar off the screen, so that other output can follow.
    void clear();

private:
    void draw(std::uint64_t done);

    bool m_onTerminal;
    bool m_drawn = false;
    std::string m_label;
    std::uint64_t m_total = 0;
    std::chrono::steady_clock::time_point m_start;
    std::chrono::steady_clock::time_point m_nextDraw;
};

}  // namespace zro
