#pragma once

#include "clap_host/StereoSignal.h"
#include "plot/TimeAxis.h"

/// Both channels of a signal over time: where it reaches in a light tone, its RMS in a dark one.
class WavePanel {
public:
    struct Style {
        PlotColour reach;
        PlotColour rms;
        double fullScaleDb = 0.0;  // the level at the edge of each lane, a multiple of 3
    };

    /// The smallest multiple of 3 dB, from -48 up, that holds both signals.
    static double fullScaleFor(const StereoSignal& a, const StereoSignal& b);

    WavePanel(const TimeAxis& axis, const PlotRect& area, const Style& style);

    void draw(PlotCanvas& canvas, const StereoSignal& signal) const;

private:
    void drawLane(PlotCanvas& canvas, const PlotRect& lane, const std::vector<float>& samples,
                  double sampleRate, const char* name) const;
    void drawLevels(PlotCanvas& canvas, const PlotRect& lane) const;
    double heightOf(const PlotRect& lane, double level) const noexcept;

    const TimeAxis& axis;
    PlotRect area;
    Style style;
};
