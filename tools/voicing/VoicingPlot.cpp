#include "voicing/VoicingPlot.h"

#include "clap_host/NumberText.h"
#include "plot/ChartPanel.h"
#include "plot/PlotTheme.h"
#include "voicing/VoicingMeter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double pictureWidth = 1200.0;
constexpr double pictureHeight = 820.0;
constexpr double pixelsPerUnit = 0.9;  // keeps each file near 100 KB

struct Peak {
    double value;
    PlotColour colour;
};
constexpr std::array peaks{
    Peak{0.0, PlotColour::fromHex(0x2f6b68)}, Peak{0.25, PlotColour::fromHex(0x7d9a3c)},
    Peak{0.5, PlotColour::fromHex(0xd9a021)}, Peak{0.75, PlotColour::fromHex(0xd4622a)},
    Peak{1.0, PlotColour::fromHex(0x8a1c3c)},
};

constexpr double mainCutoffHz = 500.0;
constexpr double levelCutoffHz = 2000.0;
constexpr double levelToneHz = 200.0;

std::string signedText(double number)
{
    return number < -0.5 ? "\u2212" + fixedText(-number, 0) : fixedText(number, 0);
}

ChartAxis hertzAxis(double lowest, double highest)
{
    ChartAxis axis{lowest, highest, ChartAxis::Scale::Logarithmic, {}};
    for (const double hertz : {20.0, 50.0, 100.0, 200.0, 500.0, 1000.0, 2000.0, 5000.0, 10000.0, 20000.0}) {
        if (hertz >= lowest && hertz <= highest)
            axis.ticks.push_back(
                {hertz, hertz < 1000.0 ? fixedText(hertz, 0) : fixedText(hertz / 1000.0, 0) + "k"});
    }
    return axis;
}

ChartAxis dbAxis(double lowest, double highest, double step)
{
    ChartAxis axis{lowest, highest, ChartAxis::Scale::Linear, {}};
    for (double db = lowest; db <= highest; db += step)
        axis.ticks.push_back({db, signedText(db)});
    return axis;
}

/// Evenly over the octaves, and closer around the cut-off, where a peak may be narrow.
std::vector<double> measuredHertz(double lowest, double highest, double cutoff)
{
    std::vector<double> hertz;
    for (double octaves = std::log2(lowest); octaves <= std::log2(highest); octaves += 0.125)
        hertz.push_back(std::exp2(octaves));
    for (double octaves = -0.4; octaves <= 0.4; octaves += 0.025)
        hertz.push_back(cutoff * std::exp2(octaves));
    std::sort(hertz.begin(), hertz.end());
    return hertz;
}

std::string ringingText(const VoicingMeter::Ringing& ringing)
{
    if (ringing.sings)
        return "sings at " + fixedText(ringing.hertz, 0) + " Hz, " + signedText(ringing.levelDb) + " dB";
    const bool longer = ringing.decaySeconds >= VoicingMeter::Ringing::longest;
    return (longer ? "rings longer than " : "rings for ") + fixedText(ringing.decaySeconds, 2) + " s";
}

class VoicingPainter {
public:
    VoicingPainter(PlotCanvas& plotCanvas, const DesignFilterStyle& style) : canvas(plotCanvas), meter(style)
    {}

    void draw(const std::string& name)
    {
        canvas.clear(plotTheme::paper);
        using Weight = PlotTextStyle::Weight;
        canvas.text({60.0, 40.0}, name, {20.0, plotTheme::ink, PlotTextStyle::Align::Left, Weight::Bold});
        drawResponse({60.0, 82.0, 690.0, 330.0}, mainCutoffHz, "Response in dB, cut-off ");
        drawRinging({470.0, 100.0});
        drawResponse({815.0, 82.0, 355.0, 142.0}, 60.0, "Cut-off ");
        drawResponse({815.0, 270.0, 355.0, 142.0}, 5000.0, "Cut-off ");
        drawLevels({60.0, 470.0, 320.0, 300.0}, levelToneHz, "Output over input in dB, below the cut-off");
        drawLevels({450.0, 470.0, 320.0, 300.0}, levelCutoffHz, "The same at the cut-off");
        drawSong({840.0, 470.0, 330.0, 300.0});
    }

private:
    void drawResponse(const PlotRect& area, double cutoffHz, const std::string& caption)
    {
        const bool large = area.height > 200.0;
        const ChartPanel panel(area, hertzAxis(20.0, 20000.0), dbAxis(-60.0, 60.0, large ? 12.0 : 30.0));
        panel.drawGrid(canvas, caption + fixedText(cutoffHz, 0) + " Hz");
        for (const Peak& peak : peaks) {
            std::vector<PlotPoint> curve;
            for (const double hertz : measuredHertz(20.0, 20000.0, cutoffHz))
                curve.push_back({hertz, meter.smallSignalDb({cutoffHz, peak.value}, hertz)});
            panel.drawCurve(canvas, curve, peak.colour, large ? 1.8 : 1.4);
        }
    }

    /// The legend of the colours.
    void drawRinging(PlotPoint at)
    {
        for (const Peak& peak : peaks) {
            const auto ringing = meter.ringing({mainCutoffHz, peak.value});
            canvas.line({at.x, at.y - 4.0}, {at.x + 22.0, at.y - 4.0}, peak.colour, 2.4);
            canvas.text({at.x + 30.0, at.y}, "peak " + fixedText(peak.value, 2) + "  " + ringingText(ringing),
                        {11.0, plotTheme::ink});
            at.y += 16.0;
        }
    }

    void drawLevels(const PlotRect& area, double toneHz, const std::string& caption)
    {
        const ChartPanel panel(area, dbAxis(-40.0, 20.0, 10.0), dbAxis(-50.0, 20.0, 10.0));
        panel.drawGrid(canvas, caption);
        for (const Peak& peak : peaks) {
            std::vector<PlotPoint> curve;
            for (double inputDb = -40.0; inputDb <= 20.0; inputDb += 1.5)
                curve.push_back({inputDb, meter.outputDb({levelCutoffHz, peak.value}, toneHz, inputDb)});
            panel.drawCurve(canvas, curve, peak.colour, 1.8);
        }
        canvas.text({area.x, area.bottom() + 33.0},
                    fixedText(toneHz, 0) + " Hz, cut-off " + fixedText(levelCutoffHz, 0) + " Hz",
                    {plotTheme::labelSize, plotTheme::softInk});
    }

    void drawSong(const PlotRect& area)
    {
        const ChartPanel panel(area, hertzAxis(20.0, 20000.0), dbAxis(-60.0, 10.0, 10.0));
        panel.drawGrid(canvas, "What it sings, in dB over the cut-off");
        bool silent = true;
        for (const Peak& peak : peaks) {
            std::vector<PlotPoint> curve;
            for (double octaves = std::log2(20.0); octaves <= std::log2(20000.0); octaves += 0.25) {
                const auto ringing = meter.ringing({std::exp2(octaves), peak.value});
                silent = silent && !ringing.sings;
                curve.push_back({std::exp2(octaves), ringing.sings ? ringing.levelDb : -200.0});
            }
            panel.drawCurve(canvas, curve, peak.colour, 1.8);
        }
        if (silent)
            canvas.text({area.x + 0.5 * area.width, area.middle()}, "nothing, at any peak",
                        {plotTheme::captionSize, plotTheme::softInk, PlotTextStyle::Align::Centre});
    }

    PlotCanvas& canvas;
    VoicingMeter meter;
};

}  // namespace

bool writeVoicingPlot(const DesignFilterStyle& style, const std::string& name,
                      const std::filesystem::path& file)
{
    PlotCanvas canvas(pictureWidth, pictureHeight, pixelsPerUnit);
    VoicingPainter(canvas, style).draw(name);
    return canvas.writePng(file);
}
