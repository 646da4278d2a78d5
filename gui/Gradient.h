#pragma once

#include "gui/ICanvas.h"
#include "gui/SegmentInterpolator.h"

namespace gui {

/// A run of colours between stops, each channel linear in the position.
class Gradient : public SegmentInterpolator<gui::Color, FloatColor>, public IGradient {
public:
    Gradient() = default;
    /// From `start` at position 0 to `end` at 1.
    Gradient(Color start, Color end);

    int FindSegment(float position) const override { return Find(position); }
    /// Transparent without stops.
    Color GetColorAt(float position) const override;
    int GetStopCount() const override { return static_cast<int>(stops.size()); }
    Color GetStopColor(int index) const override { return stops[static_cast<std::size_t>(index)].first; }
    float GetStopPosition(int index) const override { return stops[static_cast<std::size_t>(index)].second; }
    bool IsOpaque() const override;

    friend bool operator==(const Gradient& a, const Gradient& b) { return a.stops == b.stops; }
};

/// A copy with every stop's alpha multiplied by `alpha`, 0..255.
Gradient FadedGradient(const IGradient& gradient, int alpha);

}  // namespace gui
