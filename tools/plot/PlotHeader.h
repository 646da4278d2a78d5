#pragma once

#include "plot/PlotCanvas.h"
#include "plot/RenderPlot.h"

/// The title of the picture, what was rendered from what, and the settings, in as many lines as they need.
class PlotHeader {
public:
    PlotHeader(const PlotContent& plotContent, double leftEnd, double rightEnd)
        : content(plotContent), left(leftEnd), right(rightEnd)
    {}

    /// Draws from the canvas's top, and gives the height that it took.
    double draw(PlotCanvas& canvas) const;
    /// The height, without drawing: `canvas` only measures text.
    double height(PlotCanvas& canvas) const;

private:
    std::vector<std::string> settingLines(PlotCanvas& canvas) const;

    const PlotContent& content;
    double left;
    double right;
};
