#pragma once

#include "foundation/NotifyEvent.h"
#include "foundation/Property.h"
#include "modulation/EnvelopeShape.h"
#include "modulation/Trigger.h"
#include "wave/FloatParameterSource.h"

/// An envelope of 0..1 with a delay, an attack, a decay to the sustain level, a hold and a release, which a
/// trigger or notes start:
///
///   1                    /\                  .
///                       /  \_                .
///   sustain            /     \___________    .
///                     /                  \   .
///   rest    _________/                    \__.
///              delay  attack decay   hold release
///           ^ gate opens           ^ gate closes
///
/// It restarts from the level at which it stands. Where the gate closes early the stages go on for the hold
/// time, and are left for the release then. Times and levels are read every `updateInterval` samples, in
/// whatever stage the envelope is, and none of their changes is a jump.
///
/// The stages are counted in single samples, although each begins as a multiple of four of them: automation
/// and notes cut blocks anywhere, and the envelope is the same for every way of cutting, but for the three
/// samples by which a trigger's events may come early.
///
/// It runs whether read or not. Thread: audio, but for construction.
class EnvelopeGenerator : public wave::Source, public PropertyOwner, public wave::MuteController {
public:
    /// Which level is 0: that of rest, or that of sustain.
    enum class Range { RestAtZero, SustainAtZero };
    enum class RetriggerMode { FromPresentLevel, FromRest };
    /// How often the inputs are read: every 64 samples, or in the time that these take at 44.1 kHz.
    enum class UpdateMode { EverySixtyFour, SameTime };

    static constexpr float shortestSeconds = 0.0014512470f;  // 64 samples at 44.1 kHz, for all but two stages
    static constexpr float longestSeconds = 100.0f;

    explicit EnvelopeGenerator(wave::Environment& owner);

    /// Starts the envelope at the next block.
    void openGate() noexcept REALTIME { triggerPending = true; }
    /// Lets the envelope go: after the hold time it releases.
    void closeGate() noexcept REALTIME;

    float currentValue() noexcept REALTIME override { return level.presentValue() * output; }
    /// The height above rest, for the display.
    float displayValue() noexcept REALTIME;
    /// True while there is no envelope, nor one about to start.
    bool isMuted() noexcept REALTIME override { return state == State::Idle && !triggerPending; }

    void reset() noexcept REALTIME override;
    void propertyChanged(AbstractProperty& property) override;

    FloatParameterBus attack;        // seconds
    FloatParameterBus attackCurve;   // -1..1, as EnvelopeShape takes it
    FloatParameterBus decay;         // seconds
    FloatParameterBus decayCurve;    // -1..1
    FloatParameterBus delay;         // seconds, from 0
    FloatParameterBus hold;          // seconds, from 0
    FloatParameterBus level;         // gain of the output, -2..2
    FloatParameterBus sustain;       // 0..1
    FloatParameterBus release;       // seconds
    FloatParameterBus releaseCurve;  // -1..1
    Property<Range> range{Range::RestAtZero, this};
    Property<RetriggerMode> retriggerMode{RetriggerMode::FromPresentLevel};
    Property<UpdateMode> updateMode{UpdateMode::EverySixtyFour, this};

    /// Null, or what opens and closes the gate by a level, while it is enabled. Not owned.
    Trigger* trigger = nullptr;
    /// The trigger opened or closed the gate; at most ten times a second.
    NotifyEvent gateChanged;

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

private:
    enum class State { Idle, Running, Finished };  // Finished: the release has just ended, for one block
    enum class DecayCourse { Undecided, Falling, Rising, Resting };
    struct Inputs {
        const wave::Block &delay, &attack, &attackCurve, &decay, &decayCurve, &sustain, &release,
            &releaseCurve, &hold;
    };
    /// What one block is made of.
    struct Pass {
        Inputs inputs;
        EnvelopeWriter out;
        bool unread;
    };
    /// How many samples of a run belong to which stage.
    struct Split {
        int delay, attack, sustain, release;
    };

    Inputs pullInputs(int count) noexcept REALTIME;
    void rest(wave::Block& block, int count) noexcept REALTIME;
    void restart() noexcept REALTIME;
    void finish(wave::Block& block, bool steady, int count) noexcept REALTIME;

    void readInputs(const Inputs& inputs, int position) noexcept REALTIME;
    void updateDelay() noexcept REALTIME;
    void updateAttack() noexcept REALTIME;
    void updateDecayCurve() noexcept REALTIME;
    void updateSustain() noexcept REALTIME;
    void fitDecay(float oldBase) noexcept REALTIME;
    int wholeGroups(float seconds) const noexcept REALTIME;
    float stepFor(float seconds) const noexcept REALTIME;

    void followTrigger(Pass& pass, int count) noexcept REALTIME;
    void renderTo(Pass& pass, int end) noexcept REALTIME;
    void render(Pass& pass, int count) noexcept REALTIME;
    Split splitRun(int count) noexcept REALTIME;
    void renderDelay(EnvelopeWriter& out, int count) noexcept REALTIME;
    void renderAttack(EnvelopeWriter& out, int count) noexcept REALTIME;
    void renderSustain(EnvelopeWriter& out, int count) noexcept REALTIME;
    void decideDecay() noexcept REALTIME;
    void renderRelease(EnvelopeWriter& out, int count) noexcept REALTIME;
    void reportGate(bool before, int count) noexcept REALTIME;

    void updateBase() noexcept REALTIME;
    float restLevel() const noexcept REALTIME { return base - sustainLevel; }
    int intervalForMode() const noexcept REALTIME;

    EnvelopeShape attackShape, decayRiseShape, decayFallShape, releaseShape;
    // What is in force, since the inputs were read last.
    float holdTime = 0.0f;   // seconds
    float delayTime = 0.0f;  // seconds
    float attackTime = shortestSeconds;
    float decayTime = shortestSeconds;
    float sustainLevel = 1.0f;
    float releaseTime = shortestSeconds;
    float attackCurveValue, decayCurveValue, releaseCurveValue;
    float rateSeen;  // Hz

    State state = State::Idle;
    int elapsed = 0;      // samples since the gate closed
    int holdSamples = 0;  // at least for so long the gate's stages go on
    float attackStart = 0.0f;
    float segmentEnd = 0.0f;  // where the running stage has come to; the release starts there
    float span = 0.0f;        // from where the decay starts to the sustain level
    int delaySamples = 0;     // of the whole delay
    int delayLeft = 0;        // samples
    int attackLeft = 0;       // samples
    bool decayStarted = false;
    // Decided where the inputs are read, and not for each run, which could be of any length.
    DecayCourse decayCourse = DecayCourse::Undecided;
    EnvelopePlace attackPlace, decayPlace;
    EnvelopePlace releasePlace;
    float currentLevel = 0.0f;  // before `level`
    float output = 0.0f;        // the last sample, before `level`
    bool gate = false;
    int samplesSinceEvent = 0;
    bool triggerPending = false;
    float base = 1.0f;       // where sustain rests
    int paramCountdown = 0;  // samples until the inputs are read again
    bool eventPending = false;
    int updateInterval;  // samples
};
