#pragma once

#include "modulation/ModulationMatrix.h"
#include "wave/MultiProducer.h"

/// Joins a level and a pan of the matrix into one signal for each of two channels. While no slot reaches
/// either, each channel is a ramp of its own. Thread: audio, but for construction.
class LevelPanTarget : public wave::Component, public ModulationMatrix::SecondaryTarget {
public:
    enum class Mode {
        Multiply,  // L (1 - max(P, 0)) and L (1 + min(P, 0)): a balance
        Add,       // L + P and L - P: a spread
    };

    /// Takes the limits of the level's range. Becomes the change listener of both targets.
    LevelPanTarget(wave::Environment& environment, ModulationMatrix& matrix, int levelId, int panId,
                   Mode joinMode);

    /// The signal of a channel, 0 or 1.
    wave::Producer& output(int channel) noexcept { return controller.output(channel); }

    void baseValueChanged() noexcept REALTIME override;

private:
    class VoiceController : public wave::MultiProducer {
    public:
        VoiceController(wave::Environment& environment, LevelPanTarget& joined, wave::Producer& levelSignal,
                        wave::Producer& panSignal)
            : MultiProducer(environment, 2), owner(joined), level(levelSignal), pan(panSignal)
        {}

    protected:
        void generate(wave::Block** blocks, int count, int flags) noexcept REALTIME override;

    private:
        LevelPanTarget& owner;
        wave::Producer& level;
        wave::Producer& pan;
        wave::SteadyFill steady[2];
    };

    /// What the targets are, with or without what the slots add.
    struct Signals {
        wave::Block& level;
        wave::Block& pan;
        bool areConstant() const noexcept REALTIME { return level.isConstant() && pan.isConstant(); }
    };

    bool isUnmodulated() const noexcept REALTIME
    {
        return !levelTarget.isModulated() && !panTarget.isModulated();
    }
    float joined(float levelValue, float panValue, int channel) const noexcept REALTIME;
    void join(const Signals& in, int channel, float* out, int count) const noexcept REALTIME;
    void addRest(const wave::Block& ramp, const Signals& base, int channel, float* out,
                 int count) const noexcept REALTIME;

    ModulationMatrix::Target& levelTarget;
    ModulationMatrix::Target& panTarget;
    Mode mode;
    FloatParameterSource first;
    FloatParameterSource second;
    VoiceController controller;
};
