#pragma once

#include "foundation/Realtime.h"

#include <cstddef>
#include <vector>

/// A function sampled at even steps and read on straight lines between them.
class FunctionTable {
public:
    /// Samples `function` over the two bounds. The size becomes the power of two at or above `requestedSize`,
    /// at least
    /// 2. Thread: main.
    template <class F>
    void build(int requestedSize, F&& function, double bound, double otherBound)
    {
        prepare(requestedSize, bound, otherBound);
        for (int i = 0; i < count - 1; ++i)
            points[static_cast<std::size_t>(i)] = static_cast<float>(function(lowest + i * step));
        points[static_cast<std::size_t>(count) - 1] = static_cast<float>(function(highest));
        points[static_cast<std::size_t>(count)] = points[static_cast<std::size_t>(count) - 1];
    }

    /// @param x  held within the bounds
    float lookup(float x) const noexcept REALTIME;

    int size() const noexcept REALTIME { return count; }
    float scale() const noexcept REALTIME { return perStep; }
    /// The place of x = 0 from the first sample is -(fraction + integerOffset).
    float fraction() const noexcept REALTIME { return offsetFraction; }
    int integerOffset() const noexcept REALTIME { return offsetWhole; }
    /// `size() + 1` values; the last one stands twice.
    const float* values() const noexcept REALTIME { return points.data(); }

private:
    void prepare(int requestedSize, double bound, double otherBound);

    double lowest = 0.0;
    double highest = 1.0;
    double step = 1.0;
    double offset = 0.0;  // place of `lowest` on the grid through 0, in steps
    float perStep = 1.0f;
    float offsetFraction = 0.0f;
    int offsetWhole = 0;
    int count = 2;
    std::vector<float> points;
};
