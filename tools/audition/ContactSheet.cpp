#include "audition/ContactSheet.h"

#include "plot/PlotCanvas.h"
#include "plot/PlotTheme.h"

#include <algorithm>

namespace {

constexpr double margin = 16.0;
constexpr double cellWidth = 250.0;
constexpr double cellHeight = 130.0;
constexpr double pictureTop = 30.0;  // of the spectrogram, in its cell
constexpr double envelopeHeight = 30.0;
constexpr PlotColour faultColour = PlotColour::fromHex(0xb3261e);
constexpr PlotColour envelopeColour = PlotColour::fromHex(0xa8442a);

/// Without the number that only orders folders: "_2 General" is shown as "General".
std::string shownFolder(const std::string& folder)
{
    const auto blank = folder.find(' ');
    return folder.starts_with('_') && blank != std::string::npos ? folder.substr(blank + 1) : folder;
}

class SheetPainter {
public:
    SheetPainter(PlotCanvas& plotCanvas, const AuditionReport& shownReport)
        : canvas(plotCanvas), report(shownReport)
    {}

    void drawCell(std::size_t index, PlotPoint at)
    {
        const FactorySource& source = report.sources[index];
        const bool faulty = !report.verdicts[index].faults.empty();
        const double right = at.x + PresetPicture::columns;
        using Style = PlotTextStyle;
        canvas.text({at.x, at.y + 12.0}, source.name,
                    {11.5, faulty ? faultColour : plotTheme::ink, Style::Align::Left, Style::Weight::Bold});
        canvas.text({right, at.y + 12.0}, shownFolder(source.folder),
                    {9.0, plotTheme::softInk, Style::Align::Right});
        canvas.text({at.x, at.y + 25.0},
                    faulty ? report.verdicts[index].faults.front() : measuresText(report.results[index]),
                    {9.0, faulty ? faultColour : plotTheme::softInk});
        drawPicture(report.results[index].picture, {at.x, at.y + pictureTop});
    }

private:
    void drawPicture(const PresetPicture& picture, PlotPoint at)
    {
        const PlotRect spectrogram{at.x, at.y, PresetPicture::columns, PresetPicture::rows};
        canvas.image(spectrogram, picture.spectrogram, PresetPicture::columns);
        const PlotRect lane{at.x, spectrogram.bottom(), spectrogram.width, envelopeHeight};
        canvas.fill(lane, plotTheme::panel);
        std::vector<PlotPoint> outline;
        for (std::size_t i = 0; i < picture.envelope.size(); ++i)
            outline.push_back({lane.x + static_cast<double>(i), heightOf(lane, picture.envelope[i].highest)});
        for (std::size_t i = picture.envelope.size(); i-- > 0;)
            outline.push_back({lane.x + static_cast<double>(i), heightOf(lane, picture.envelope[i].lowest)});
        canvas.polygon(outline, envelopeColour, 0.6);
        canvas.frame({at.x, at.y, lane.width, lane.bottom() - at.y}, plotTheme::panelEdge, 0.6);
    }

    static double heightOf(const PlotRect& lane, float sample)
    {
        return lane.middle() - 0.5 * lane.height * std::clamp(static_cast<double>(sample), -1.0, 1.0);
    }

    PlotCanvas& canvas;
    const AuditionReport& report;
};

}  // namespace

bool writeContactSheet(const AuditionReport& report, int columns, double scale,
                       const std::filesystem::path& file)
{
    const auto count = static_cast<int>(report.sources.size());
    columns = std::clamp(columns, 1, std::max(count, 1));
    const int rows = (count + columns - 1) / columns;
    PlotCanvas canvas(2.0 * margin + columns * cellWidth, 2.0 * margin + rows * cellHeight, scale);
    canvas.clear(plotTheme::paper);
    SheetPainter painter(canvas, report);
    for (int i = 0; i < count; ++i)
        painter.drawCell(static_cast<std::size_t>(i),
                         {margin + (i % columns) * cellWidth, margin + (i / columns) * cellHeight});
    return canvas.writePng(file);
}
