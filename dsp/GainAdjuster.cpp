#include "dsp/GainAdjuster.h"

#include "foundation/Tolerance.h"

#include <algorithm>
#include <cmath>

GainAdjuster::GainAdjuster(wave::Environment& owner) : Filter(owner, OwnBlock::Passing), gain(owner, 1.0f)
{
    gain.setRange(-1.0f, 1.0f, 2.0f);
    registerForReset();
}

void GainAdjuster::reset() noexcept
{
    peakBefore = peakBehind = 0.0f;
    holding = false;
}

void GainAdjuster::filter(wave::Block* in, wave::Block* out, int count, int) noexcept
{
    const wave::Block& gains = gain.render(count);
    if (delayLevel && filterLevel && !isBypassed(*in, count)) {
        holdLevel(*in, gains, *out, count);
        return;
    }
    if (gains.isConstant() && isNear(gains[0], 1.0f)) {
        show(*in);
        return;
    }
    for (int i = 0; i < count; ++i)
        (*out)[i] = gains[i] * (*in)[i];
    out->setConstant(in->isConstant() && gains.isConstant());
}

bool GainAdjuster::isBypassed(const wave::Block& in, int count) noexcept
{
    const bool same = unfiltered && &in == &unfiltered->pull(count);
    if (!same)
        holding = true;
    return same && !holding;
}

void GainAdjuster::holdLevel(const wave::Block& in, const wave::Block& gains, wave::Block& out,
                             int count) noexcept
{
    const wave::Block& before = delayLevel->pull(count);
    const wave::Block& behind = filterLevel->pull(count);
    for (int i = 0; i < count; ++i) {
        const float ratio = behind[i] <= 0.0f ? 1.0f : std::clamp(before[i] / behind[i], 0.1f, 1.0f);
        out[i] = ratio * in[i];
    }
    if (guard != Guard::FilterClips && unfiltered)
        guardPeaks(out, count);
    for (int i = 0; i < count; ++i)
        out[i] *= gains[i];
    out.setConstant(false);
    // To stop holding while the levels still differ would be a step.
    const float apart = std::fabs(before[count - 1] - behind[count - 1]);
    holding = apart > 1e-4f * behind[count - 1];
}

// The smoothed levels lag behind and hold a loop at unity on the average only: over minutes a resonance would
// grow all the same, and one of more than 20 dB at once.
void GainAdjuster::guardPeaks(wave::Block& out, int count) noexcept
{
    const float* before = unfiltered->pull(count).data();
    const float decay = 1.0f - 0.5f / environment().sampleRate();
    const float always = guard == Guard::LetSing ? 1.0f : 0.0f;
    for (int i = 0; i < count; ++i) {
        peakBefore = std::max(peakBefore * decay, std::fabs(before[i]));
        peakBehind = std::max(peakBehind * decay, std::fabs(out[i]));
        const float limit = std::max(peakBefore, always);
        if (peakBehind > limit)
            out[i] *= limit / peakBehind;
    }
}
