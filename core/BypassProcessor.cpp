#include "core/BypassProcessor.h"

#include "core/GenericPluginProcessor.h"
#include "foundation/Tolerance.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr float bypassFadeMs = 50.0f;

bool rests(const wave::Block& fade, float value) noexcept
{
    return fade.isConstant() && isNear(fade[0], value);
}

}  // namespace

BypassProcessor::BypassProcessor(GenericPluginProcessor& processor)
    : owner(processor),
      fade(processor.engine(), 0.0f),
      silenceCountdown(processor.isEffect() ? Asleep : Running)
{
    fade.setFreeRunning();  // the engine is reset when it comes back, and that is when the fade is needed
    updateLatency();
}

void BypassProcessor::updateLatency()
{
    if (!owner.isEffect() || owner.latency() == latency)
        return;
    latency = owner.latency();
    dryDelays.clear();
    const int channels = latency > 0 ? owner.channelCount() : 0;
    for (int c = 0; c < channels; ++c)
        dryDelays.push_back(std::make_unique<wave::Delay>(owner.engine(), latency));
}

void BypassProcessor::requestReset() noexcept { resetPending = true; }

void BypassProcessor::setBypassed(bool on) noexcept
{
    const bool wasBypassed = bypassed;
    if (on != bypassed) {
        countdown = latency;
        bypassed = on;
        // Back from bypass the wet signal waits until the engine has filled up again.
        fadePending = !on && latency > 0;
        if (!fadePending)
            fade.setValue(on ? 1.0f : 0.0f, bypassFadeMs);
    }
    if (wasBypassed)
        owner.engine().reset(wave::Environment::Reset::Enabled);  // what was left in the lines is old
}

void BypassProcessor::run(const float* const* inputs, float* const* outputs, int outputCount, int offset,
                          int frames, unsigned& status) noexcept
{
    const Run present{inputs, outputs, outputCount, offset, frames};
    wave::Environment& engine = owner.engine();
    engine.nextGeneration();
    advanceFade(frames);
    const wave::Block& dryGain = fade.render(frames);
    feedDryDelays(present);

    const bool silent = (status & InputSilent) != 0;
    const bool dryOnly = rests(dryGain, 1.0f);
    bool rendered = false;
    if (!dryOnly || fadePending) {
        rendered = !isAsleep(present, silent);
        if (rendered)
            render(present, status);
    }
    engine.run(frames, !rendered);

    if (rests(dryGain, 0.0f)) {
        writeWet(present);
        return;
    }
    writeDry(present);
    if (!dryOnly)
        mixWet(present, dryGain);
    else if (latency > 0 && owner.channelCount() > 0 && !owner.isSilent(outputs, outputCount, offset, frames))
        status &= ~static_cast<unsigned>(OutputSilent);
}

void BypassProcessor::advanceFade(int frames) noexcept
{
    if (resetPending) {
        resetPending = false;
        silenceCountdown = owner.isEffect() ? Asleep : Running;
        if (fadePending)
            fade.setValue(0.0f, 0.0f);
        fadePending = false;
        fade.finishRamp();
        return;
    }
    if (!fadePending)
        return;
    if (countdown > 0) {
        countdown -= frames;
        return;
    }
    fade.setValue(0.0f, bypassFadeMs);
    fadePending = false;
}

int BypassProcessor::sleepDelay() const noexcept
{
    const int tail = owner.tailLength();
    if (tail >= 0)
        return tail + latency;
    return latency > 0 ? latency : Running;
}

bool BypassProcessor::isAsleep(const Run& run, bool silent) noexcept
{
    if (!silent) {
        silenceCountdown = Running;
        return false;
    }
    if (silenceCountdown == Running)
        silenceCountdown = sleepDelay();
    if (silenceCountdown != Asleep)
        return false;
    std::fill_n(wetChannels.begin(), run.outputCount,
                nullptr);  // what comes in is silent, and so is what goes out
    return true;
}

void BypassProcessor::render(const Run& run, unsigned& status) noexcept
{
    owner.renderOutputs(wetChannels.data(), run.outputCount, run.frames);
    updateSleepAfterRender(run, (status & InputSilent) != 0, status);
}

void BypassProcessor::updateSleepAfterRender(const Run& run, bool silent, unsigned& status) noexcept
{
    if (silenceCountdown >= 0) {
        silenceCountdown = std::max(silenceCountdown - run.frames, 0);
        if (silenceCountdown == 0) {
            if (owner.tailLength() < 0)
                silenceCountdown = NeverAgain;
            else if (!owner.engine().isIdle())
                silenceCountdown = 1;
        }
    } else if (silent && owner.tailLength() == -1 && owner.engine().isIdle() &&
               owner.outputsSilent(wetChannels.data(), run.outputCount, run.frames)) {
        silenceCountdown = Asleep;
        return;
    }
    status &= ~static_cast<unsigned>(OutputSilent);
}

void BypassProcessor::feedDryDelays(const Run& run) noexcept
{
    for (std::size_t c = 0; c < dryDelays.size(); ++c) {
        dryDelays[c]->setUnwritten(0);
        if (run.inputs[c])
            dryDelays[c]->write(run.inputs[c] + run.offset, run.frames);
    }
}

void BypassProcessor::writeWet(const Run& run) noexcept
{
    for (int c = 0; c < run.outputCount; ++c) {
        float* out = run.outputs[c] + run.offset;
        const float* wet = wetChannels[static_cast<std::size_t>(c)];
        if (!wet)
            std::fill_n(out, run.frames, 0.0f);
        else if (wet != out)
            std::memmove(out, wet, static_cast<std::size_t>(run.frames) * sizeof(float));
    }
}

void BypassProcessor::writeDry(const Run& run) noexcept
{
    for (int c = 0; c < run.outputCount; ++c) {
        float* out = run.outputs[c] + run.offset;
        const auto channel = static_cast<std::size_t>(c);
        if (!owner.isEffect() || !run.inputs[c])
            std::fill_n(out, run.frames, 0.0f);
        else if (channel < dryDelays.size())
            dryDelays[channel]->read(latency, out, run.frames);
        else
            std::memmove(out, run.inputs[c] + run.offset,
                         static_cast<std::size_t>(run.frames) * sizeof(float));
    }
}

void BypassProcessor::mixWet(const Run& run, const wave::Block& dryGain) noexcept
{
    for (int c = 0; c < run.outputCount; ++c) {
        float* out = run.outputs[c] + run.offset;
        const float* wet = wetChannels[static_cast<std::size_t>(c)];
        if (!wet)
            wet = owner.engine().silentBlock().data();
        for (int i = 0; i < run.frames; ++i)
            out[i] = (out[i] - wet[i]) * dryGain[i] + wet[i];
    }
}
