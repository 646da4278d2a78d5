#include "dsp/GainAdjuster.h"

#include "foundation/Tolerance.h"

#include <algorithm>

GainAdjuster::GainAdjuster(wave::Environment& owner) : Filter(owner), gain(owner, 1.0f)
{
    gain.setRange(-1.0f, 1.0f, 2.0f);
}

void GainAdjuster::filter(wave::Block* in, wave::Block* out, int count, int) noexcept
{
    const wave::Block& gains = gain.render(count);
    if (delayLevel && filterLevel) {
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

void GainAdjuster::holdLevel(const wave::Block& in, const wave::Block& gains, wave::Block& out,
                             int count) noexcept
{
    const wave::Block& before = delayLevel->pull(count);
    const wave::Block& behind = filterLevel->pull(count);
    for (int i = 0; i < count; ++i) {
        const float ratio = behind[i] <= 0.0f ? 1.0f : std::clamp(before[i] / behind[i], 0.1f, 1.0f);
        out[i] = ratio * in[i] * gains[i];
    }
    out.setConstant(false);
}
