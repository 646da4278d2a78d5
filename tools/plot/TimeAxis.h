#pragma once

#include "plot/PlotCanvas.h"

#include <optional>

/// The time that all panels share, from left to right.
class TimeAxis {
public:
    /// @param left, right  ends on the canvas
    /// @param seconds      at the right end
    /// @param tempoBpm     nothing: no beats
    TimeAxis(double left, double right, double seconds, std::optional<double> tempoBpm);

    double left() const noexcept { return leftEnd; }
    double right() const noexcept { return rightEnd; }
    double seconds() const noexcept { return length; }
    double at(double time) const noexcept { return leftEnd + (rightEnd - leftEnd) * time / length; }

    /// Lines at beats and, stronger, at bars of four, or at seconds if there is no tempo.
    void drawGrid(PlotCanvas& canvas, const PlotRect& panel, PlotColour colour) const;
    /// Seconds under a panel, with their ticks.
    void drawSeconds(PlotCanvas& canvas, const PlotRect& panel) const;
    /// The numbers of the bars below those seconds; nothing without a tempo.
    void drawBars(PlotCanvas& canvas, const PlotRect& panel) const;

private:
    double secondsPerTick() const noexcept;
    /// Beats between two lines, and between two strong lines.
    double beatsPerLine() const noexcept;
    double beatsPerStrongLine() const noexcept;

    double leftEnd;
    double rightEnd;
    double length;  // seconds
    std::optional<double> tempo;
};
