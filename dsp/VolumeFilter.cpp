#include "dsp/VolumeFilter.h"

#include "foundation/Tolerance.h"

void VolumeFilter::generate(wave::Block* block, int count, int flags) noexcept
{
    if (muteController && muteController->isMuted())
        show(environment().silentBlock());
    else
        Filter::generate(block, count, flags);
}

void VolumeFilter::filter(wave::Block* in, wave::Block* out, int count, int) noexcept
{
    const wave::Block& gains = level.pull(count);
    if (gains.isConstant() && isNear(gains[0], 0.0f)) {
        show(environment().silentBlock());
        return;
    }
    const wave::Block* further = multiplier ? &multiplier->pull(count) : nullptr;
    const bool unity = gains.isConstant() && isNear(gains[0], 1.0f);
    if (unity && !further) {
        show(*in);
        return;
    }
    for (int i = 0; i < count; ++i)
        (*out)[i] = unity ? (*in)[i] : (*in)[i] * gains[i];
    if (further) {
        for (int i = 0; i < count; ++i)
            (*out)[i] *= (*further)[i];
    }
}
