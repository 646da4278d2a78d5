#include "plot/WavePanel.h"

#include "clap_host/NumberText.h"
#include "plot/PlotTheme.h"
#include "plot/WaveEnvelope.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double laneInset = 9.0;  // canvas units between the loudest sample and the lane's edge

double peakOf(const StereoSignal& signal)
{
    double peak = 0.0;
    for (const auto* channel : {&signal.left, &signal.right}) {
        for (const float sample : *channel)
            peak = std::isfinite(sample) ? std::max(peak, std::fabs(static_cast<double>(sample))) : peak;
    }
    return peak;
}

double gainOf(double db) { return std::pow(10.0, db / 20.0); }

std::string dbLabel(double db)
{
    const std::string digits = fixedText(std::fabs(db), 0);
    return db < 0.0 ? "\u2212" + digits : db > 0.0 ? "+" + digits : digits;
}

}  // namespace

double WavePanel::fullScaleFor(const StereoSignal& a, const StereoSignal& b)
{
    const double peak = std::max(peakOf(a), peakOf(b));
    double db = -48.0;
    while (gainOf(db) < peak * 0.999 && db < 240.0)
        db += 3.0;
    return db;
}

WavePanel::WavePanel(const TimeAxis& timeAxis, const PlotRect& panelArea, const Style& panelStyle)
    : axis(timeAxis), area(panelArea), style(panelStyle)
{}

void WavePanel::draw(PlotCanvas& canvas, const StereoSignal& signal) const
{
    canvas.fill(area, plotTheme::panel);
    axis.drawGrid(canvas, area, plotTheme::grid);
    const PlotRect leftLane{area.x, area.y, area.width, 0.5 * area.height};
    const PlotRect rightLane{area.x, area.middle(), area.width, 0.5 * area.height};
    drawLane(canvas, leftLane, signal.left, signal.sampleRate, "L");
    drawLane(canvas, rightLane, signal.right, signal.sampleRate, "R");
    canvas.line({area.x, area.middle()}, {area.right(), area.middle()}, plotTheme::panelEdge, 1.0);
    canvas.frame(area, plotTheme::panelEdge, 1.0);
}

void WavePanel::drawLane(PlotCanvas& canvas, const PlotRect& lane, const std::vector<float>& samples,
                         double sampleRate, const char* name) const
{
    drawLevels(canvas, lane);
    const auto columns = static_cast<std::size_t>(lane.width * canvas.scale());
    const double samplesPerColumn = axis.seconds() * sampleRate / static_cast<double>(columns);
    const auto envelope = waveEnvelope(samples, columns, samplesPerColumn);

    // There along the upper edge, back along the lower one.
    std::vector<PlotPoint> reach(2 * envelope.size());
    std::vector<PlotPoint> rms(2 * envelope.size());
    for (std::size_t i = 0; i < envelope.size(); ++i) {
        const double x = lane.x + (static_cast<double>(i) + 0.5) / canvas.scale();
        const EnvelopeColumn& column = envelope[i];
        reach[i] = {x, heightOf(lane, column.highest)};
        reach[reach.size() - 1 - i] = {x, heightOf(lane, column.lowest)};
        rms[i] = {x, heightOf(lane, std::min(column.rms, std::max(column.highest, 0.0f)))};
        rms[rms.size() - 1 - i] = {x, heightOf(lane, std::max(-column.rms, std::min(column.lowest, 0.0f)))};
    }
    canvas.polygon(reach, style.reach, 0.6);
    canvas.polygon(rms, style.rms, 0.3);
    canvas.text({lane.right() + plotTheme::labelGap, lane.middle() + 4.0}, name,
                {plotTheme::captionSize, plotTheme::softInk, PlotTextStyle::Align::Left,
                 PlotTextStyle::Weight::Bold});
}

void WavePanel::drawLevels(PlotCanvas& canvas, const PlotRect& lane) const
{
    const PlotTextStyle label{plotTheme::labelSize - 1.0, plotTheme::softInk, PlotTextStyle::Align::Right};
    const auto mark = [&](double level, const std::string& text) {
        const double y = heightOf(lane, level);
        canvas.line({lane.x, y}, {lane.right(), y}, plotTheme::grid, 0.7);
        canvas.text({lane.x - plotTheme::labelGap, y + 3.0}, text, label);
    };
    for (const double sign : {1.0, -1.0}) {
        mark(sign * gainOf(style.fullScaleDb), dbLabel(style.fullScaleDb));
        mark(sign * gainOf(style.fullScaleDb - 6.0), dbLabel(style.fullScaleDb - 6.0));
    }
    mark(0.0, "\u2212\u221e");
}

double WavePanel::heightOf(const PlotRect& lane, double level) const noexcept
{
    return lane.middle() - (0.5 * lane.height - laneInset) * level / gainOf(style.fullScaleDb);
}
