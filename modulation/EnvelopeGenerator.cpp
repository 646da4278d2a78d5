#include "modulation/EnvelopeGenerator.h"

#include "foundation/Tolerance.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float top = 0.9999999f;

/// Rounds down to groups of four samples.
constexpr int groups(int samples) noexcept { return samples & ~3; }

/// A falling stage that rises, after the sustain level was raised, starts slower than it falls.
float riseCurvature(float fall) noexcept
{
    if (fall >= 0.0f && fall <= 0.6f)
        return fall * 0.33333334f;
    if (fall > 0.6f && fall <= 1.0f)
        return (fall - 0.6f) * 2.0000002f + 0.2f;
    return fall;
}

/// Takes on what an input has become, within its limits. What is no number changes nothing.
bool take(float& inForce, FloatParameterBus& bus, const wave::Block& signal, int position) noexcept
{
    const FloatParameter& limits = bus.parameter();
    const float now = std::clamp(signal[position], limits.lower(), limits.upper());
    if (!(std::fabs(now - inForce) > signalEpsilon))
        return false;
    inForce = now;
    return true;
}

/// Bends a stage on its way; it goes on from the level at which it is.
void reshape(EnvelopeShape& shape, EnvelopePlace& place, float curvature) noexcept
{
    const EnvelopeShape next = EnvelopeShape::of(curvature);
    place.position = next.positionFrom(shape, place.position);
    shape = next;
}

}  // namespace

EnvelopeGenerator::EnvelopeGenerator(wave::Environment& owner)
    : Source(owner),
      attack(owner, shortestSeconds),
      attackCurve(owner, 0.2f),
      decay(owner, shortestSeconds),
      decayCurve(owner, 0.6f),
      delay(owner, 0.0f),
      hold(owner, 0.0f),
      level(owner, 1.0f),
      sustain(owner, 1.0f),
      release(owner, shortestSeconds),
      releaseCurve(owner, 0.6f),
      attackShape(EnvelopeShape::of(0.2f)),
      decayRiseShape(EnvelopeShape::of(riseCurvature(0.6f))),
      decayFallShape(EnvelopeShape::of(0.6f)),
      releaseShape(EnvelopeShape::of(0.6f)),
      attackCurveValue(0.2f),
      decayCurveValue(0.6f),
      releaseCurveValue(0.6f),
      rateSeen(owner.sampleRate()),
      updateInterval(intervalForMode())
{
    for (FloatParameterBus* stage : {&attack, &decay, &release})
        stage->parameter().setRange(shortestSeconds, longestSeconds);
    for (FloatParameterBus* wait : {&delay, &hold})
        wait->parameter().setRange(0.0f, longestSeconds);
    for (FloatParameterBus* curve : {&attackCurve, &decayCurve, &releaseCurve})
        curve->parameter().setRange(-1.0f, 1.0f);
    level.parameter().setRange(-2.0f, 2.0f);
    updateAttack();
    decayPlace.step = stepFor(decayTime);
    releasePlace.step = stepFor(releaseTime);
    runAlways(1);
    registerForReset();
    EnvelopeGenerator::reset();
}

// The gate.

void EnvelopeGenerator::closeGate() noexcept
{
    triggerPending = false;
    gate = false;
    paramCountdown = 0;
}

void EnvelopeGenerator::restart() noexcept
{
    elapsed = 0;
    attackStart = retriggerMode.value() == RetriggerMode::FromPresentLevel ? currentLevel : restLevel();
    segmentEnd = currentLevel;  // for a gate that closes before the first sample
    span = std::max(top - sustainLevel, 0.0f);
    delayLeft = delaySamples = wholeGroups(delayTime);
    attackLeft = wholeGroups(attackTime);
    attackPlace = {0.0, attackLeft < 1 ? 1.0f : 1.0f / static_cast<float>(attackLeft)};
    decayPlace.position = releasePlace.position = 0.0;
    decayStarted = false;
    decayCourse = DecayCourse::Undecided;
    state = State::Running;
    gate = true;
}

void EnvelopeGenerator::reset() noexcept
{
    state = State::Idle;
    currentLevel = output = 0.0f;
    gate = triggerPending = false;
    releasePlace.position = 1.0;
    paramCountdown = 0;
    updateInterval = intervalForMode();
}

void EnvelopeGenerator::propertyChanged(AbstractProperty& property)
{
    if (&property == &updateMode) {
        updateInterval = intervalForMode();
    } else if (&property == &range) {
        updateBase();
        if (isMuted())
            currentLevel = output = restLevel();
    }
}

int EnvelopeGenerator::intervalForMode() const noexcept
{
    if (updateMode.value() == UpdateMode::EverySixtyFour)
        return 64;
    return std::max(groups(static_cast<int>(environment().sampleRate() * 0.0014512471f)), 4);
}

void EnvelopeGenerator::updateBase() noexcept
{
    base = range.value() == Range::RestAtZero ? sustainLevel : 0.0f;
}

float EnvelopeGenerator::displayValue() noexcept
{
    return (output - restLevel()) * std::fabs(level.presentValue());
}

// A block.

void EnvelopeGenerator::generate(wave::Block* block, int count, int flags) noexcept
{
    if (state == State::Finished)
        state = State::Idle;
    const bool unread = (flags & wave::Environment::Unread) != 0;
    const bool triggered = trigger && trigger->enabled.value();
    if (unread && !triggered && isMuted()) {
        rest(*block, count);
        return;
    }
    Pass pass{pullInputs(count), EnvelopeWriter(block->data()), unread};
    if (triggerPending) {
        readInputs(pass.inputs, 0);
        restart();
        triggerPending = false;
    }
    if (triggered)
        followTrigger(pass, count);
    else
        renderTo(pass, count);
    output = pass.out.last();
    finish(*block, pass.out.isSteady(), count);
}

EnvelopeGenerator::Inputs EnvelopeGenerator::pullInputs(int count) noexcept
{
    return {delay.pull(count),   attack.pull(count),       attackCurve.pull(count),
            decay.pull(count),   decayCurve.pull(count),   sustain.pull(count),
            release.pull(count), releaseCurve.pull(count), hold.pull(count)};
}

/// Nobody has read the block, and there is no envelope. What runs later in the sub-block may still read it.
void EnvelopeGenerator::rest(wave::Block& block, int count) noexcept
{
    if (take(sustainLevel, sustain, sustain.pull(count), 0))
        updateBase();
    currentLevel = output = restLevel();
    if (output == 0.0f) {
        show(environment().silentBlock());
        return;
    }
    std::fill_n(block.data(), count, output);
    finish(block, true, count);
}

void EnvelopeGenerator::finish(wave::Block& block, bool steady, int count) noexcept
{
    const wave::Block& gain = level.pull(count);
    block.setConstant(steady && gain.isConstant());
    if (gain.isConstant() && isNear(gain[0], 1.0f))
        return;
    for (int i = 0; i < count; ++i)
        block[i] *= gain[i];
}

void EnvelopeGenerator::followTrigger(Pass& pass, int count) noexcept
{
    const bool before = gate;
    trigger->run(count);
    for (const Trigger::Event& event : trigger->events()) {
        const int position = groups(event.position);
        renderTo(pass, position);
        if (event.kind == Trigger::EventKind::End) {
            closeGate();
            continue;
        }
        if (paramCountdown <= 0)
            readInputs(pass.inputs, position);  // due here anyway, and the start takes what is new
        restart();
    }
    renderTo(pass, count);
    reportGate(before, count);
}

void EnvelopeGenerator::reportGate(bool before, int count) noexcept
{
    const int pause = static_cast<int>(environment().sampleRate() * 0.1f);
    samplesSinceEvent = std::min(samplesSinceEvent, pause) + count;  // a day of rest would overflow
    if (gate == before && !eventPending)
        return;
    eventPending = samplesSinceEvent < pause;
    if (eventPending)
        return;
    samplesSinceEvent = 0;
    gateChanged.fire(this);
}

void EnvelopeGenerator::renderTo(Pass& pass, int end) noexcept
{
    while (pass.out.position() < end) {
        if (paramCountdown <= 0)
            readInputs(pass.inputs, pass.out.position());
        const int run = std::min(paramCountdown, end - pass.out.position());
        render(pass, run);
        paramCountdown -= run;
    }
}

// The inputs.

int EnvelopeGenerator::wholeGroups(float seconds) const noexcept
{
    return groups(static_cast<int>(seconds * environment().sampleRate()) + 3);
}

float EnvelopeGenerator::stepFor(float seconds) const noexcept
{
    return seconds >= signalEpsilon ? 1.0f / (seconds * environment().sampleRate()) : 1.0f;
}

void EnvelopeGenerator::readInputs(const Inputs& inputs, int position) noexcept
{
    const bool rateChanged = std::fabs(environment().sampleRate() - rateSeen) > signalEpsilon;
    rateSeen = environment().sampleRate();

    if (take(delayTime, delay, inputs.delay, position) || rateChanged)
        updateDelay();
    const bool attackBent = take(attackCurveValue, attackCurve, inputs.attackCurve, position);
    if (attackBent)
        reshape(attackShape, attackPlace, attackCurveValue);
    if (take(attackTime, attack, inputs.attack, position) || attackBent || rateChanged)
        updateAttack();
    if (take(decayCurveValue, decayCurve, inputs.decayCurve, position))
        updateDecayCurve();
    if (take(decayTime, decay, inputs.decay, position) || rateChanged)
        decayPlace.step = stepFor(decayTime);
    if (take(sustainLevel, sustain, inputs.sustain, position))
        updateSustain();
    if (take(releaseCurveValue, releaseCurve, inputs.releaseCurve, position))
        reshape(releaseShape, releasePlace, releaseCurveValue);
    if (take(releaseTime, release, inputs.release, position) || rateChanged)
        releasePlace.step = stepFor(releaseTime);
    if (take(holdTime, hold, inputs.hold, position) || rateChanged)
        holdSamples = static_cast<int>(holdTime * environment().sampleRate());
    paramCountdown = updateInterval;
    decayCourse = DecayCourse::Undecided;
}

/// A delay that is counting keeps what has passed of it, and ends at once if that is more than the new one.
void EnvelopeGenerator::updateDelay() noexcept
{
    if (delayLeft == 0)
        return;
    const int passed = delaySamples - delayLeft;
    delaySamples = wholeGroups(delayTime);
    delayLeft = std::max(delaySamples - passed, 0);
}

/// An attack on its way keeps its place on the curve and goes on at the new speed.
void EnvelopeGenerator::updateAttack() noexcept
{
    const int samples = wholeGroups(attackTime);
    attackPlace.step = samples < 1 ? 1.0f : 1.0f / static_cast<float>(samples);
    if (attackLeft > 0)
        attackLeft = groups(3 - static_cast<int>((attackPlace.position - 1.0) * samples));
}

void EnvelopeGenerator::updateDecayCurve() noexcept
{
    EnvelopePlace fallPlace = decayPlace;
    reshape(decayRiseShape, decayPlace, riseCurvature(decayCurveValue));
    reshape(decayFallShape, fallPlace, decayCurveValue);
    if (currentLevel > base + signalEpsilon)
        decayPlace = fallPlace;
}

void EnvelopeGenerator::updateSustain() noexcept
{
    const float oldBase = base;
    updateBase();
    if (isMuted())
        currentLevel = output = restLevel();
    if (attackLeft == 0)
        fitDecay(oldBase);
    else
        span = std::max(top - sustainLevel, 0.0f);
}

/// Bends the running decay so that it leads from the present level to the new base.
void EnvelopeGenerator::fitDecay(float oldBase) noexcept
{
    const float start = currentLevel;
    const double nearer = std::fabs(oldBase - start) - std::fabs(base - start) + decayPlace.position;
    double& place = decayPlace.position;
    place = nearer < 0.0 ? 0.0 : std::min(std::max(place, 0.95), nearer);
    const bool rises = base >= start;
    const double missing = rises ? decayRiseShape(place) - 1.0 : 1.0 - decayFallShape(place);
    if (std::fabs(missing) > signalEpsilon) {
        span = static_cast<float>((start - base) / missing);
    } else {
        place = 1.0;
        span = 0.0f;
    }
    // An attack that has only just ended may lie below the new base: it rises, rather than falls from beyond.
    decayStarted = decayStarted || rises;
}

// The stages.

void EnvelopeGenerator::render(Pass& pass, int count) noexcept
{
    if (pass.unread && state != State::Running) {
        currentLevel = restLevel();
        pass.out.hold(currentLevel, count);
        return;
    }
    const Split split = splitRun(count);
    renderDelay(pass.out, split.delay);
    renderAttack(pass.out, split.attack);
    renderSustain(pass.out, split.sustain);
    renderRelease(pass.out, split.release);
}

EnvelopeGenerator::Split EnvelopeGenerator::splitRun(int count) noexcept
{
    if (!gate && releasePlace.position > 0.0)
        return {0, 0, 0, count};
    int left = count;  // for the stages before the release
    if (!gate) {
        left = std::clamp(groups(holdSamples) - elapsed, 0, count);
        elapsed += count;
    }
    Split split{};
    split.delay = std::min(delayLeft, left);
    split.attack = std::min(attackLeft, left - split.delay);
    split.sustain = left - split.delay - split.attack;
    split.release = count - left;
    return split;
}

void EnvelopeGenerator::renderDelay(EnvelopeWriter& out, int count) noexcept
{
    if (count == 0)
        return;
    out.hold(currentLevel, count);
    segmentEnd = currentLevel;
    delayLeft -= count;
}

void EnvelopeGenerator::renderAttack(EnvelopeWriter& out, int count) noexcept
{
    if (count == 0)
        return;
    const float height = 1.0f - (sustainLevel - base) - attackStart - signalEpsilon;
    out.curve(attackShape, attackPlace, height, attackStart + height, count);
    attackLeft -= count;
    segmentEnd = currentLevel = out.last();
}

void EnvelopeGenerator::renderSustain(EnvelopeWriter& out, int count) noexcept
{
    if (count == 0)
        return;
    if (decayCourse == DecayCourse::Undecided)
        decideDecay();
    if (decayCourse == DecayCourse::Falling)
        out.curve(decayFallShape, decayPlace, -span, base, count);
    else if (decayCourse == DecayCourse::Rising)
        out.curve(decayRiseShape, decayPlace, span, base, count);
    else
        out.hold(base, count);
    segmentEnd = currentLevel = out.last();
}

void EnvelopeGenerator::decideDecay() noexcept
{
    const float above = currentLevel - base;
    if (!decayStarted || above > signalEpsilon) {
        decayCourse = DecayCourse::Falling;
    } else if (-above > signalEpsilon) {
        decayCourse = DecayCourse::Rising;  // the sustain level was raised
    } else {
        decayCourse = DecayCourse::Resting;
        decayPlace.position = 0.0;
    }
    decayStarted = true;
}

void EnvelopeGenerator::renderRelease(EnvelopeWriter& out, int count) noexcept
{
    if (count == 0)
        return;
    out.curve(releaseShape, releasePlace, restLevel() - segmentEnd, restLevel(), count);
    if (releasePlace.isOver() && state == State::Running)
        state = State::Finished;
    currentLevel = out.last();
}
