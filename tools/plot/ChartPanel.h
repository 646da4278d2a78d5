#pragma once

#include "plot/PlotCanvas.h"

#include <string>
#include <vector>

/// One axis of a chart.
struct ChartAxis {
    struct Tick {
        double at = 0.0;
        std::string label;  // may be empty
    };
    enum class Scale { Linear, Logarithmic };

    double lowest = 0.0;
    double highest = 1.0;
    Scale scale = Scale::Linear;
    std::vector<Tick> ticks;

    /// 0 at `lowest`, 1 at `highest`.
    double placeOf(double value) const;
};

/// A frame with a grid in which curves are drawn. What leaves the frame isn't shown.
class ChartPanel {
public:
    ChartPanel(const PlotRect& chartArea, ChartAxis horizontal, ChartAxis vertical);

    const PlotRect& area() const noexcept { return rect; }
    void drawGrid(PlotCanvas& canvas, const std::string& caption) const;
    /// @param points  in values of the axes
    void drawCurve(PlotCanvas& canvas, const std::vector<PlotPoint>& points, PlotColour colour,
                   double lineWidth) const;

private:
    PlotPoint placeOf(const PlotPoint& point) const;

    PlotRect rect;
    ChartAxis across;
    ChartAxis up;
};
