#pragma once

#include "foundation/Property.h"
#include "wave/Filter.h"

/// Follows a signal through a critically damped two-pole low-pass. Once it has settled on a constant signal
/// it shows that signal's own block. Thread: audio.
class SignalSmoother : public wave::Filter, public PropertyOwner {
public:
    enum class SmoothMethod { Copy, Rectify };  // Rectify follows the level: the absolute value

    explicit SignalSmoother(wave::Environment& owner);

    void reset() noexcept REALTIME override;
    void propertyChanged(AbstractProperty& property) override;

    Property<float> frequency;  // Hz, 5 at first
    Property<SmoothMethod> method;
    Property<bool> startFromInput;  // after a reset: begin at the input instead of at 0

protected:
    void filter(wave::Block* in, wave::Block* out, int count, int flags) noexcept REALTIME override;

private:
    void smooth(float* samples, int count) noexcept REALTIME;

    double velocity = 0.0;
    float coefficient = 0.0f;
    double position = 0.0;
    bool fresh = true;
};
