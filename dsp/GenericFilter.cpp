#include "dsp/GenericFilter.h"

#include "dsp/ParallelFilterUnit.h"
#include "foundation/Tolerance.h"

#include <algorithm>

GenericFilter::GenericFilter(wave::Environment& owner)
    : Filter(owner, OwnBlock::Passing),
      autoMute(false, this),
      frequency(owner, 20.0f),
      gain(owner, 1.0f),
      mix(owner, 1.0f),
      peak(owner, 0.0f),
      response(Response::LowPass, this),
      slope(Slope::Db12, this)
{
    gain.parameter().setRange(0.0f, 63.095734f);
    registerForReset();
}

GenericFilter::~GenericFilter()
{
    if (parallel)
        parallel->detach(*this);
}

void GenericFilter::reset() noexcept
{
    if (parallel)
        parallel->clear();
    else if (single)
        single->clear();
    active = false;
    switched = false;
    fadeLeft = 0;
}

void GenericFilter::propertyChanged(AbstractProperty& property)
{
    if (&property == &response || &property == &slope)
        noteSwitch();
}

void GenericFilter::attachParallel(ParallelFilterUnit& unit) noexcept
{
    if (parallel == &unit)
        return;
    if (parallel)
        parallel->detach(*this);
    parallel = &unit;
    unit.attach(*this);
}

void GenericFilter::detachParallel(SingleFilterUnit& unit) noexcept
{
    if (parallel)
        parallel->detach(*this);
    parallel = nullptr;
    single = &unit;
}

wave::Block& GenericFilter::pullInput(int count) noexcept
{
    return input ? input->pull(count) : environment().silentBlock();
}

// With many instances the memory touched counts: a mix at rest, as most are, needs no block.
void GenericFilter::gatherMix(int count) noexcept
{
    mixBlock = nullptr;
    if (mix.rests(count, restingMix))
        return;
    wave::Block& pulled = mix.pull(count);
    if (pulled.isConstant())
        restingMix = pulled[0];
    else
        mixBlock = &pulled;
}

bool GenericFilter::mixRestsAt(float value) const noexcept { return !mixBlock && isNear(restingMix, value); }

bool GenericFilter::gather(int count, FilterSignals& signals) noexcept
{
    gatherMix(count);
    active = !mixRestsAt(0.0f);
    if (!active)
        return false;
    const wave::Block& frequencies = frequency.pull(count);
    const wave::Block& peaks = peak.pull(count);
    float restingGain = 0.0f;
    const bool plain = gain.rests(count, restingGain) && restingGain == 1.0f;
    const wave::Block& gains = plain ? environment().unityBlock() : gain.pull(count);
    const bool gated = autoMute.value() && gate;
    signals.frequency = frequencies.data();
    signals.peak = peaks.data();
    signals.gain = gains.data();
    signals.gate = gated ? gate->pull(count).data() : nullptr;
    signals.allConstant = frequencies.isConstant() && peaks.isConstant() && gains.isConstant();
    return true;
}

void GenericFilter::finish(wave::Block& in, wave::Block& out, int count) noexcept
{
    if (!active) {
        switched = false;
        fadeLeft = 0;
        show(in);
        return;
    }
    smoothSwitch(out, count);
    if (!mixRestsAt(1.0f)) {
        const float* blend = mixBlock ? mixBlock->data() : mix.pull(count).data();
        for (int i = 0; i < count; ++i)
            out[i] = (out[i] - in[i]) * blend[i] + in[i];
    }
    out.setConstant(false);
    show(out);
}

bool GenericFilter::passesWhole() const noexcept
{
    return active && !switched && fadeLeft == 0 && mixRestsAt(1.0f);
}

void GenericFilter::smoothSwitch(wave::Block& out, int count) noexcept
{
    if (switched) {
        switched = false;
        jump = lastOutput - out[0];
        fadeLength = fadeLeft = static_cast<int>(environment().sampleRate() * 0.02f);
    }
    const int fading = std::min(fadeLeft, count);
    for (int i = 0; i < fading; ++i)
        out[i] += jump * static_cast<float>(fadeLeft - i) / static_cast<float>(fadeLength);
    fadeLeft -= fading;
    lastOutput = out[count - 1];
}

void GenericFilter::generate(wave::Block* block, int count, int flags) noexcept
{
    if (!parallel) {
        Filter::generate(block, count, flags);
        return;
    }
    parallel->run(*this, count);
}

void GenericFilter::filter(wave::Block* in, wave::Block* out, int count, int) noexcept
{
    FilterSignals signals;
    if (gather(count, signals) && single) {
        single->response = response.value();
        single->slope = slope.value();
        single->run(signals, *in, *out, count);
    }
    finish(*in, *out, count);
}
