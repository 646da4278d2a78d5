#include "clap_host/NumberText.h"
#include "plot/ChartPanel.h"
#include "plot/PlotTheme.h"
#include "speed/SpeedReport.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double pictureWidth = 1200.0;
constexpr double margin = 40.0;
constexpr double barStep = 25.0;
constexpr double barHeight = 15.0;
constexpr double curveTop = 120.0;

constexpr std::array curveColours{PlotColour::fromHex(0xa8442a), PlotColour::fromHex(0x2f6b68),
                                  PlotColour::fromHex(0xd9a021), PlotColour::fromHex(0x5a4a8a)};
constexpr PlotColour bar = PlotColour::fromHex(0x2f6b68);
constexpr PlotColour commonBar = PlotColour::fromHex(0x7d9a3c);
constexpr PlotColour presetBar = PlotColour::fromHex(0xd9a021);
constexpr PlotColour floorBar = PlotColour::fromHex(0xb5a48c);

using Align = PlotTextStyle::Align;
using Weight = PlotTextStyle::Weight;

/// A number at or above `value` that a scale may end at.
double roundedUp(double value)
{
    const double decade = std::pow(10.0, std::floor(std::log10(value)));
    for (const double step : {1.0, 1.2, 1.6, 2.0, 2.4, 3.2, 4.0, 6.0, 8.0}) {
        if (step * decade >= value)
            return step * decade;
    }
    return 10.0 * decade;
}

ChartAxis upTo(double highest, int ticks, const std::string& unit)
{
    ChartAxis axis{0.0, highest, ChartAxis::Scale::Linear, {}};
    for (int i = 0; i <= ticks; ++i)
        axis.ticks.push_back(
            {highest * i / ticks, fixedText(highest * i / ticks, 0) + (i == ticks ? unit : "")});
    return axis;
}

struct Bar {
    std::string name;
    double nanoseconds;
    PlotColour colour;
};

std::vector<Bar> barsOf(const SpeedReport& report)
{
    std::vector<Bar> bars;
    const auto add = [&](const std::vector<SpeedRow>& rows, PlotColour colour, const std::string& note) {
        for (const SpeedRow& row : rows)
            bars.push_back({row.name + note, row.figure.least, colour});
    };
    add(report.floors, floorBar, " (floor)");
    if (report.peer)
        bars.push_back({report.peer->name + ", twice (peer)", report.peer->figure.least, plotTheme::softInk});
    add(report.patches, bar, "");
    add(report.commonKernel, commonBar, ", without AVX2");
    add(report.presets, presetBar, "");
    return bars;
}

class SpeedPainter {
public:
    explicit SpeedPainter(const SpeedReport& speedReport)
        : report(speedReport),
          bars(barsOf(report)),
          height(std::max(820.0, curveTop + barStep * static_cast<double>(bars.size()) + 50.0)),
          canvas(pictureWidth, height, 1.5)
    {}

    bool write(const std::filesystem::path& file)
    {
        canvas.clear(plotTheme::paper);
        canvas.text({margin, 44.0}, "What Sordelin 2 takes of a processor",
                    {20.0, plotTheme::ink, Align::Left, Weight::Bold});
        canvas.text({margin, 66.0},
                    "ns of one core per stereo frame at 48 kHz, least of " + std::to_string(report.rounds) +
                        " rounds; filters on " + report.processor,
                    {plotTheme::captionSize, plotTheme::softInk});
        drawBars();
        const double curveHeight = (height - curveTop - 190.0) / 3.0;
        drawBlocks({760.0, curveTop, 400.0, curveHeight});
        drawMatrix({760.0, curveTop + curveHeight + 70.0, 400.0, curveHeight});
        drawLoads({760.0, curveTop + 2.0 * (curveHeight + 70.0), 400.0, curveHeight});
        return canvas.writePng(file);
    }

private:
    void drawBars()
    {
        double most = 1.0;
        for (const Bar& one : bars)
            most = std::max(most, one.nanoseconds);
        const PlotRect area{340.0, curveTop, 340.0, barStep * static_cast<double>(bars.size())};
        const ChartAxis across = upTo(roundedUp(1.15 * most), 5, " ns");
        ChartPanel(area, across, {})
            .drawGrid(canvas, "By patch, blocks of 128; dashed: the bare loops, four lanes");
        drawMark(area, across, report.floors.front().figure.least);
        double y = area.y + 0.5 * (barStep - barHeight);
        for (const Bar& one : bars) {
            const double width = area.width * across.placeOf(one.nanoseconds);
            canvas.text({area.x - plotTheme::labelGap, y + 11.5}, one.name,
                        {plotTheme::labelSize, plotTheme::ink, Align::Right});
            canvas.fill({area.x, y, width, barHeight}, one.colour);
            const std::string number = fixedText(one.nanoseconds, 1);
            const PlotTextStyle style{plotTheme::labelSize, plotTheme::softInk};
            const double numberWidth = canvas.textWidth(number, style);
            canvas.fill({area.x + width + 3.0, y, numberWidth + 4.0, barHeight}, plotTheme::panel);
            canvas.text({area.x + width + 5.0, y + 11.5}, number, style);
            y += barStep;
        }
    }

    /// Where the floor of the filters lies, through all bars.
    void drawMark(const PlotRect& area, const ChartAxis& across, double nanoseconds)
    {
        const double x = area.x + area.width * across.placeOf(nanoseconds);
        canvas.dashedLine({x, area.y}, {x, area.bottom()}, plotTheme::beat, 1.0);
    }

    void drawBlocks(const PlotRect& area)
    {
        ChartAxis across{16.0, 4096.0, ChartAxis::Scale::Logarithmic, {}};
        for (double frames = 16.0; frames <= 4096.0; frames *= 2.0)
            across.ticks.push_back({frames, fixedText(frames, 0)});
        drawSeries(area, across, report.blocks, "ns by frames per block");
    }

    void drawMatrix(const PlotRect& area)
    {
        ChartAxis across{0.0, 24.0, ChartAxis::Scale::Linear, {}};
        for (double count = 0.0; count <= 24.0; count += 4.0)
            across.ticks.push_back({count, fixedText(count, 0)});
        drawSeries(area, across, report.matrix, "ns by slots and sources in use");
    }

    void drawLoads(const PlotRect& area)
    {
        SpeedSeries load{"instances of the default patch", {{0.0, 0.0}}};
        double most = 1.0;
        for (const InstanceFigures::Load& one : report.instances.loads) {
            load.points.push_back({static_cast<double>(one.instances), 100.0 * one.cores});
            most = std::max(most, 100.0 * one.cores);
        }
        const double largest = report.instances.loads.back().instances;
        drawSeries(area, upTo(largest, 4, ""), {load}, "% of a core by instances that play");
    }

    void drawSeries(const PlotRect& area, const ChartAxis& across, const std::vector<SpeedSeries>& all,
                    const std::string& caption)
    {
        double most = 1.0;
        for (const SpeedSeries& one : all) {
            for (const SpeedSeries::Point& point : one.points)
                most = std::max(most, point.nanoseconds);
        }
        const ChartPanel panel(area, across, upTo(roundedUp(1.3 * most), 4, ""));
        panel.drawGrid(canvas, caption);
        double y = area.y + 16.0;
        for (std::size_t i = 0; i < all.size(); ++i) {
            const PlotColour colour = curveColours[i % curveColours.size()];
            std::vector<PlotPoint> points;
            for (const SpeedSeries::Point& point : all[i].points)
                points.push_back({point.at, point.nanoseconds});
            panel.drawCurve(canvas, points, colour, 2.0);
            canvas.text({area.right() - 10.0, y}, all[i].name, {plotTheme::labelSize, colour, Align::Right});
            y += 14.0;
        }
    }

    const SpeedReport& report;
    std::vector<Bar> bars;
    double height;
    PlotCanvas canvas;
};

}  // namespace

bool writeSpeedChart(const SpeedReport& report, const std::filesystem::path& file)
{
    return SpeedPainter(report).write(file);
}
