#include "plot/SpectrogramPanel.h"

#include "clap_host/NumberText.h"
#include "plot/ColourMap.h"
#include "plot/PlotTheme.h"
#include "plot/Spectrogram.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double lowestHz = 30.0;
constexpr double shownRangeDb = 80.0;  // from the darkest to the brightest colour
constexpr PlotColour lightGrid = PlotColour::fromHex(0xfff6e0, 0.11);

/// A little above the strongest part, in steps of 10 dB, so that two pictures are easily compared.
double topDbFor(const Spectrogram& spectrogram)
{
    return std::clamp(10.0 * std::ceil(spectrogram.highest() / 10.0), -60.0, 20.0);
}

std::string hertzText(double hertz)
{
    return hertz < 1000.0 ? fixedText(hertz, 0) : fixedText(hertz / 1000.0, 0) + "k";
}

std::string dbText(double db) { return db < 0.0 ? "\u2212" + fixedText(-db, 0) : fixedText(db, 0); }

}  // namespace

SpectrogramPanel::SpectrogramPanel(const TimeAxis& timeAxis, const PlotRect& panelArea)
    : axis(timeAxis), area(panelArea)
{}

void SpectrogramPanel::draw(PlotCanvas& canvas, const StereoSignal& signal) const
{
    Spectrogram::Settings settings;
    settings.columns = static_cast<std::size_t>(area.width * canvas.scale());
    settings.rows = static_cast<std::size_t>(area.height * canvas.scale());
    settings.seconds = axis.seconds();
    settings.lowestHz = lowestHz;
    settings.highestHz = std::clamp(signal.sampleRate / 2.0, 2.0 * lowestHz, 20000.0);
    const Spectrogram spectrogram(signal, settings);
    const double topDb = topDbFor(spectrogram);

    const ColourMap colours;
    std::vector<std::uint32_t> pixels(settings.columns * settings.rows);
    for (std::size_t row = 0; row < settings.rows; ++row) {
        for (std::size_t column = 0; column < settings.columns; ++column)
            pixels[row * settings.columns + column] =
                colours.at(1.0 + (spectrogram.at(column, row) - topDb) / shownRangeDb);
    }
    canvas.image(area, pixels, static_cast<int>(settings.columns));
    axis.drawGrid(canvas, area, lightGrid);
    drawFrequencies(canvas, settings.highestHz);
    drawLegend(canvas, topDb);
}

void SpectrogramPanel::drawFrequencies(PlotCanvas& canvas, double highestHz) const
{
    static constexpr std::array marks{50.0, 100.0, 200.0, 500.0, 1000.0, 2000.0, 5000.0, 10000.0, 20000.0};
    const PlotTextStyle label{plotTheme::labelSize, plotTheme::softInk, PlotTextStyle::Align::Right};
    for (const double hertz : marks) {
        if (hertz > highestHz)
            break;
        const double y =
            area.bottom() - area.height * std::log(hertz / lowestHz) / std::log(highestHz / lowestHz);
        canvas.line({area.x, y}, {area.right(), y}, lightGrid, 0.7);
        canvas.line({area.x - 4.0, y}, {area.x, y}, plotTheme::softInk, 0.8);
        canvas.text({area.x - plotTheme::labelGap, y + 3.5}, hertzText(hertz), label);
    }
    canvas.text({area.x - plotTheme::labelGap, area.bottom()}, "Hz", label);
}

void SpectrogramPanel::drawLegend(PlotCanvas& canvas, double topDb) const
{
    const PlotRect bar{area.right() + 14.0, area.y, 11.0, area.height};
    const ColourMap colours;
    std::vector<std::uint32_t> pixels(256);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = colours.at(1.0 - static_cast<double>(i) / 255.0);
    canvas.image(bar, pixels, 1);
    canvas.frame(bar, plotTheme::panelEdge, 0.8);

    const PlotTextStyle label{plotTheme::labelSize, plotTheme::softInk};
    constexpr int steps = 4;
    for (int step = 0; step <= steps; ++step) {
        const double below = shownRangeDb * step / steps;
        const double y = bar.y + bar.height * below / shownRangeDb;
        canvas.line({bar.right(), y}, {bar.right() + 3.0, y}, plotTheme::softInk, 0.8);
        const double baseLine = step == 0 ? y + 8.0 : step == steps ? y : y + 3.5;
        canvas.text({bar.right() + 6.0, baseLine}, dbText(topDb - below) + (step == 0 ? " dB" : ""), label);
    }
}
