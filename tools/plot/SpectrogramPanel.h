#pragma once

#include "clap_host/StereoSignal.h"
#include "plot/TimeAxis.h"

/// The spectrogram of a signal with its axis of frequency and a legend of its colours.
class SpectrogramPanel {
public:
    /// @param area  of the spectrogram; labels lie left and right of it
    SpectrogramPanel(const TimeAxis& axis, const PlotRect& area);

    void draw(PlotCanvas& canvas, const StereoSignal& signal) const;

private:
    void drawFrequencies(PlotCanvas& canvas, double highestHz) const;
    void drawLegend(PlotCanvas& canvas, double topDb) const;

    const TimeAxis& axis;
    PlotRect area;
};
