#include "plot/RenderPlot.h"

#include "plot/PlotHeader.h"
#include "plot/PlotTheme.h"
#include "plot/SpectrogramPanel.h"
#include "plot/WavePanel.h"

#include <algorithm>

namespace {

constexpr double pictureWidth = 1280.0;
constexpr double pixelsPerUnit = 1.5;
constexpr double leftMargin = 70.0;
constexpr double rightMargin = 82.0;
constexpr double bottomMargin = 52.0;
constexpr double inputHeight = 150.0;
constexpr double outputHeight = 190.0;
constexpr double spectrogramHeight = 340.0;
constexpr double panelGap = 42.0;  // holds the caption of the panel below

constexpr PlotColour inputReach = PlotColour::fromHex(0x8fb0ab);
constexpr PlotColour inputRms = PlotColour::fromHex(0x2f6b68);
constexpr PlotColour outputReach = PlotColour::fromHex(0xe0a886);
constexpr PlotColour outputRms = PlotColour::fromHex(0xa8442a);

class RenderPlotPainter {
public:
    RenderPlotPainter(PlotCanvas& plotCanvas, const PlotContent& plotContent)
        : canvas(plotCanvas),
          content(plotContent),
          axis(leftMargin, pictureWidth - rightMargin,
               std::max(plotContent.input.seconds(), plotContent.output.seconds()), plotContent.tempoBpm)
    {}

    void draw()
    {
        canvas.clear(plotTheme::paper);
        const double top = PlotHeader(content, axis.left(), axis.right()).draw(canvas);
        const PlotRect input = panelAt(top, inputHeight);
        const PlotRect output = panelAt(input.bottom() + panelGap, outputHeight);
        const PlotRect spectrogram = panelAt(output.bottom() + panelGap, spectrogramHeight);

        const double fullScale = WavePanel::fullScaleFor(content.input, content.output);
        WavePanel(axis, input, {inputReach, inputRms, fullScale}).draw(canvas, content.input);
        WavePanel(axis, output, {outputReach, outputRms, fullScale}).draw(canvas, content.output);
        SpectrogramPanel(axis, spectrogram).draw(canvas, content.output);
        axis.drawSeconds(canvas, spectrogram);
        axis.drawBars(canvas, spectrogram);

        caption(input, "Input", content.inputLevels);
        caption(output, "Output", content.outputLevels);
        caption(spectrogram, "Spectrogram of the output", "");
        for (const PlotRect& panel : {input, output, spectrogram})
            markInputEnd(panel);
        nameInputEnd(input);
    }

private:
    PlotRect panelAt(double top, double height) const
    {
        return {axis.left(), top, axis.right() - axis.left(), height};
    }

    void caption(const PlotRect& panel, const char* name, const std::string& levels)
    {
        using Style = PlotTextStyle;
        canvas.text({panel.x, panel.y - 9.0}, name,
                    {plotTheme::captionSize, plotTheme::ink, Style::Align::Left, Style::Weight::Bold});
        canvas.text({panel.right(), panel.y - 9.0}, levels,
                    {plotTheme::captionSize, plotTheme::softInk, Style::Align::Right});
    }

    bool hasTail() const { return axis.at(content.input.seconds()) < axis.right() - 2.0; }

    /// What sounds behind this line is the delay alone.
    void markInputEnd(const PlotRect& panel)
    {
        const double x = axis.at(content.input.seconds());
        if (hasTail())
            canvas.dashedLine({x, panel.y}, {x, panel.bottom()}, plotTheme::tailEdge, 1.2);
    }

    void nameInputEnd(const PlotRect& panel)
    {
        const PlotTextStyle style{plotTheme::labelSize, plotTheme::tailEdge};
        const PlotPoint at{axis.at(content.input.seconds()) + 6.0, panel.y + 14.0};
        const char* name = "end of the input";
        if (hasTail() && at.x + canvas.textWidth(name, style) < panel.right())
            canvas.text(at, name, style);
    }

    PlotCanvas& canvas;
    const PlotContent& content;
    TimeAxis axis;
};

}  // namespace

bool writeRenderPlot(const PlotContent& content, const std::filesystem::path& file)
{
    PlotCanvas ruler(1.0, 1.0, pixelsPerUnit);
    const double header = PlotHeader(content, leftMargin, pictureWidth - rightMargin).height(ruler);
    const double height =
        header + inputHeight + outputHeight + spectrogramHeight + 2.0 * panelGap + bottomMargin;
    PlotCanvas canvas(pictureWidth, height, pixelsPerUnit);
    RenderPlotPainter(canvas, content).draw();
    return canvas.writePng(file);
}
