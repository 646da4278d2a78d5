#include "render/ProgressBar.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 1s;  // shorter work needs no bar
constexpr auto redrawInterval = 80ms;
constexpr int barWidth = 40;  // characters

int percent(double fraction) { return static_cast<int>(std::lround(fraction * 100.0)); }

}  // namespace

ProgressBar::~ProgressBar()
{
    if (drawnWidth > 0)
        out << '\r' << std::string(drawnWidth, ' ') << '\r' << std::flush;
}

void ProgressBar::update(double fraction, std::string_view activity)
{
    const auto now = Clock::now();
    if (style == Style::None || now - start < patience)
        return;
    fraction = std::clamp(fraction, 0.0, 1.0);
    if (style == Style::Lines)
        return writeLine(fraction, activity);
    if (now - lastDrawn < redrawInterval)
        return;
    lastDrawn = now;
    drawBar(fraction, activity);
}

void ProgressBar::drawBar(double fraction, std::string_view activity)
{
    const auto filled = static_cast<std::size_t>(std::lround(fraction * barWidth));
    std::string line("[");
    line.append(filled, '#').append(barWidth - filled, '.').append("] ");
    line.append(std::to_string(percent(fraction))).append(" %  ").append(activity);
    const std::size_t width = line.size();
    if (width < drawnWidth)
        line.append(drawnWidth - width, ' ');  // over the rest of a longer line
    drawnWidth = width;
    out << '\r' << line << std::flush;
}

void ProgressBar::writeLine(double fraction, std::string_view activity)
{
    const int quarter = static_cast<int>(fraction * 4.0);
    if (quarter <= quartersWritten)
        return;
    quartersWritten = quarter;
    out << activity << ": " << 25 * quarter << " %\n" << std::flush;
}
