#include "plot/TimeAxis.h"

#include "clap_host/NumberText.h"
#include "plot/PlotTheme.h"

#include <array>
#include <cmath>

namespace {

constexpr double beatsPerBar = 4.0;
constexpr double leastTickGap = 64.0;  // canvas units between two labels
constexpr double leastLineGap = 9.0;   // between two lines of the grid
constexpr double leastBarGap = 28.0;   // between two numbers of bars
constexpr double secondsBelow = 17.0;  // from a panel to the base line of its seconds
constexpr double barsBelow = 33.0;     // and of its bars
constexpr double unitBeside = 20.0;    // clear of a number at the very end

std::string timeText(double seconds, double step)
{
    if (step >= 1.0 && seconds >= 60.0) {
        const auto whole = std::lround(seconds);
        const std::string rest = std::to_string(whole % 60);
        return std::to_string(whole / 60) + (rest.size() < 2 ? ":0" : ":") + rest;
    }
    return fixedText(seconds, step >= 1.0 ? 0 : step >= 0.1 ? 1 : 2);
}

}  // namespace

TimeAxis::TimeAxis(double left, double right, double seconds, std::optional<double> tempoBpm)
    : leftEnd(left), rightEnd(right), length(seconds), tempo(tempoBpm)
{}

void TimeAxis::drawGrid(PlotCanvas& canvas, const PlotRect& panel, PlotColour colour) const
{
    const double step = tempo ? beatsPerLine() * 60.0 / *tempo : secondsPerTick();
    const double strongEvery = tempo ? beatsPerStrongLine() / beatsPerLine() : 1e9;
    for (int i = 1; i * step < length; ++i) {
        const bool strong = std::fmod(i, strongEvery) == 0.0;
        PlotColour lineColour = colour;
        lineColour.alpha *= strong ? 2.0 : 1.0;
        canvas.line({at(i * step), panel.y}, {at(i * step), panel.bottom()}, lineColour, strong ? 1.0 : 0.7);
    }
}

void TimeAxis::drawSeconds(PlotCanvas& canvas, const PlotRect& panel) const
{
    const PlotTextStyle style{plotTheme::labelSize, plotTheme::softInk, PlotTextStyle::Align::Centre};
    const double step = secondsPerTick();
    for (int i = 0; i * step <= length * 1.0001; ++i) {
        const double x = at(i * step);
        canvas.line({x, panel.bottom()}, {x, panel.bottom() + 4.0}, plotTheme::softInk, 0.8);
        canvas.text({x, panel.bottom() + secondsBelow}, timeText(i * step, step), style);
    }
    PlotTextStyle unit = style;
    unit.align = PlotTextStyle::Align::Left;
    canvas.text({panel.right() + unitBeside, panel.bottom() + secondsBelow}, length >= 60.0 ? "min:s" : "s",
                unit);
}

void TimeAxis::drawBars(PlotCanvas& canvas, const PlotRect& panel) const
{
    if (!tempo)
        return;
    PlotTextStyle style{plotTheme::labelSize, plotTheme::beat, PlotTextStyle::Align::Centre};
    const double baseLine = panel.bottom() + barsBelow;
    const double step = beatsPerStrongLine() * 60.0 / *tempo;
    const auto labelEvery = static_cast<int>(std::ceil(leastBarGap / (at(step) - at(0.0))));
    for (int i = 0; i * step < length; i += labelEvery) {
        const long bar = std::lround(i * beatsPerStrongLine() / beatsPerBar) + 1;
        canvas.text({at(i * step), baseLine}, std::to_string(bar), style);
    }
    style.align = PlotTextStyle::Align::Left;
    canvas.text({panel.right() + unitBeside, baseLine}, "bar", style);
}

double TimeAxis::secondsPerTick() const noexcept
{
    static constexpr std::array steps{0.01, 0.02, 0.05, 0.1,  0.2,   0.5,   1.0,   2.0,   5.0,
                                      10.0, 15.0, 30.0, 60.0, 120.0, 300.0, 600.0, 1800.0};
    for (const double step : steps) {
        if (at(step) - at(0.0) >= leastTickGap)
            return step;
    }
    return 3600.0 * std::ceil(length / (3600.0 * 12.0));
}

double TimeAxis::beatsPerLine() const noexcept
{
    double beats = 1.0;
    while (at(beats * 60.0 / *tempo) - at(0.0) < leastLineGap)
        beats *= beats < beatsPerBar ? beatsPerBar : 2.0;
    return beats;
}

double TimeAxis::beatsPerStrongLine() const noexcept
{
    return beatsPerLine() < beatsPerBar ? beatsPerBar : 4.0 * beatsPerLine();
}
