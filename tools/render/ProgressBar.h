#pragma once

#include <chrono>
#include <ostream>
#include <string_view>

/// Shows on a stream how far a long piece of work is. Work that ends within a second shows nothing.
class ProgressBar {
public:
    /// Bar: one line that is drawn again and again, for terminals. Lines: one line per further quarter.
    enum class Style { None, Bar, Lines };

    ProgressBar(Style barStyle, std::ostream& stream) : style(barStyle), out(stream) {}
    /// Leaves no bar behind.
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Cheap enough for every few milliseconds of work.
    /// @param fraction  0..1
    /// @param activity  a word or two, such as "rendering"
    void update(double fraction, std::string_view activity);

private:
    using Clock = std::chrono::steady_clock;

    void drawBar(double fraction, std::string_view activity);
    void writeLine(double fraction, std::string_view activity);

    const Style style;
    std::ostream& out;
    const Clock::time_point start = Clock::now();
    Clock::time_point lastDrawn{};
    std::size_t drawnWidth = 0;  // characters of the bar that stand on the terminal
    int quartersWritten = 0;
};
