#pragma once

#include "foundation/Realtime.h"

/// How one stage of an envelope goes from 0 to 1: the polynomial c5 x^5 + c4 x^4 + c3 x^3 + c2 x^2 + c1 x on
/// 0..1, which is 1 at 1.
struct EnvelopeShape {
    /// The shape for a curvature of -1, slow at first, over 0, a straight line, to 1, fast at first. Between
    /// the curvatures of the table the coefficients are interpolated; beyond its ends they stay.
    static EnvelopeShape of(float curvature) noexcept REALTIME;

    // Double: a decay that is bent shortly before its end multiplies what is missing there by thousands.
    double operator()(double x) const noexcept REALTIME
    {
        return ((((c5 * x + c4) * x + c3) * x + c2) * x + c1) * x;
    }

    /// Where on this shape an envelope goes on that stood at `position` on another one, at the same level.
    /// The ends of a stage stay its ends.
    double positionFrom(const EnvelopeShape& other, double position) const noexcept REALTIME;

    float c5, c4, c3, c2, c1;
};

/// How far a stage has come.
struct EnvelopePlace {
    /// From here on a stage is over: it stands at its end.
    static constexpr double end = 0.9999999;
    bool isOver() const noexcept REALTIME { return position >= end; }

    // Double: a stage of several seconds has steps below 2^-20, which a float near 1 would round by up to
    // some percent, and by other amounts for each length of the blocks.
    double position = 0.0;  // 0..1 on the shape
    float step = 1.0f;      // per sample
};

/// Writes an envelope into a block, run by run. Runs may have any length.
class EnvelopeWriter {
public:
    explicit EnvelopeWriter(float* block) : out(block) {}

    /// Writes `value` for `count` samples.
    void hold(float value, int count) noexcept REALTIME;
    /// Writes end - (1 - shape) * height, while `place` moves on, and `end` once the stage is over.
    void curve(const EnvelopeShape& shape, EnvelopePlace& place, float height, float end,
               int count) noexcept REALTIME;

    int position() const noexcept REALTIME { return written; }
    /// The sample written last; there has to be one.
    float last() const noexcept REALTIME { return out[written - 1]; }
    /// All samples so far are equal.
    bool isSteady() const noexcept REALTIME { return steady; }

private:
    float* out;
    int written = 0;  // samples
    bool steady = true;
};
