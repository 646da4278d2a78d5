#include "modulation/XLFO.h"

#include "dsp/FunctionTable.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <numbers>

namespace {

/// A song position that stands for the next one to come.
constexpr double nowhere = -std::numeric_limits<double>::infinity();

constexpr float leastRandomStep = 0.2f;
constexpr float mostStepsShown = 15.0f;   // half steps a second
constexpr float shortestBlink = 0.0625f;  // seconds
constexpr float floorPerHz = 0.0002f;

/// From the middle of one value to that of the next, like a swing.
struct GlideSineFunction {
    double operator()(double x) const { return (std::sin((x - 0.5) * std::numbers::pi) + 1.0) * 0.5; }
};

/// One for the whole process. First called by a constructor, on the main thread.
const FunctionTable& glideSine()
{
    static const FunctionTable table = [] {
        FunctionTable made;
        made.build(2048, GlideSineFunction(), 0.0, 1.0);
        return made;
    }();
    return table;
}

/// Another one for each oscillator, and the same ones in every process: a bounce can be repeated. The C
/// library's generator would be the host's.
std::uint32_t nextSeed() noexcept
{
    static std::atomic<std::uint32_t> made{0};
    return (made.fetch_add(1, std::memory_order_relaxed) + 1) * 0x9E3779B9u >> 9;
}

/// The part behind the point in 0 up to but not including 1; 0 for what is no number.
double fraction(double x) noexcept
{
    x -= std::trunc(x);
    if (x < 0.0)
        x += 1.0;  // which rounds to 1 from just below 0
    return x < 1.0 ? x : 0.0;
}

bool isAlmost(double a, double b) noexcept { return std::fabs(a - b) <= signalEpsilon; }

/// A modulation may be no number, if what it follows isn't one.
float numberOr(float x, float otherwise) noexcept { return std::isfinite(x) ? x : otherwise; }

}  // namespace

/// The signals of a block. Where all three stand still, sample 0 of each serves.
struct XLFO::Inputs {
    const wave::Block& frequency;
    const wave::Block& glide;
    const wave::Block& offset;
    double sampleRate;

    bool areSteady() const noexcept
    {
        return frequency.isConstant() && glide.isConstant() && offset.isConstant();
    }
    float hertz(int i) const noexcept { return numberOr(frequency[i], 0.0f); }
};

/// A step, or a half of the middle step, where the position in it is a linear function of the phase.
struct XLFO::Piece {
    bool holds(double at) const noexcept { return at >= low && at < high; }
    double position(double at) const noexcept { return (at - zero) * scale; }  // 0..1 in the step

    double low, high;
    double zero, scale;
    float value;
    float delta;  // to the value of the next step
    float glide;  // the step's own
    bool noGlide;
};

/// The end of a step, in which it moves towards the next one.
struct XLFO::Glide {
    /// @param added  to the step's own glide
    Glide(const Piece& piece, float hertz, float added) noexcept
    {
        if (piece.noGlide)
            return;
        const float sum = piece.glide + added;
        const float corner = hertz * floorPerHz;  // rounds the corners of fast cycles
        const float floor = corner * corner;
        length = sum > 1.0f ? 1.0f : sum >= floor ? sum : floor;
        if (length > 0.0)
            begin = 1.0 - length;
    }
    template <class Curve>
    float sample(const Piece& piece, double at, Curve curve) const noexcept
    {
        const double t = piece.position(at);
        if (!(t > begin))
            return piece.value;
        return curve(static_cast<float>((t - begin) / length)) * piece.delta + piece.value;
    }

    double length = 0.0;  // in steps
    double begin = 2.0;   // position in the step; never
};

XLFO::Step::Step()
    : glide(0.0f, 0.0f, 1.0f),  // read anew in each block: nobody has to hear of it
      glideCurve(GlideCurve::Linear),
      random(false, this),
      snap(false, this),
      value(0.0f, -1.0f, 1.0f, this)
{}

void XLFO::Step::propertyChanged(AbstractProperty&) { heldValid = false; }

XLFO::XLFO(wave::Environment& owner) : XLFO(owner, nextSeed()) {}

XLFO::XLFO(wave::Environment& owner, std::uint32_t seed)
    : Source(owner),
      numSteps(maxSteps, 1, maxSteps, this),
      balance(owner, 0.5f),
      frequency(owner, 0.1f),
      glide(owner, 0.0f),
      level(owner, 1.0f),
      phaseOffset(owner, 0.0f),
      sine(glideSine()),
      randomState((seed & 0x7FFFFFu) + 0x800000u)
{
    balance.parameter().setRange(0.0001f, 0.9999f);
    frequency.parameter().setRange(0.0f, 5000.0f);
    glide.parameter().setRange(-1.0f, 1.0f);
    level.parameter().setRange(-2.0f, 2.0f);
    phaseOffset.parameter().setRange(-100.0f, 100.0f);
    phaseOffset.parameter().setWrapPeriod(1.0f);
    registerForReset();
    runAlways(1);
    XLFO::reset();
}

void XLFO::reset() noexcept
{
    stepsSeen = samplesSinceHalf = 0;
    lastPhaseOffset = 0.0f;
    beatsPerSample = runningPosition = 0.0;
    halfFlag = blink = false;
    phase = accumulator = 0.0;
    lastBalance = 0.5f;
    lastPosition = nowhere;
    updateBoundaries(balance.parameter().target());
    retrigger();
    syncOrigin = 0.0;
}

void XLFO::propertyChanged(AbstractProperty& property)
{
    if (&property != &numSteps)
        return;
    updateBoundaries(lastBalance);
    if (currentStep >= numSteps.value())
        currentStep = 0;
}

// The song.

void XLFO::retrigger() noexcept
{
    phase = fraction(phase - accumulator);
    accumulator = 0.0;
    syncOrigin = nowhere;
    halfFlag = isInSecondHalf();
    for (int i = 0; i < numSteps.value(); ++i) {
        Step& restarted = step(i);
        restarted.heldValue = restarted.value.value();
        restarted.heldValid = false;
        restarted.randomNext = random(0.0f);
    }
}

void XLFO::lock(double anchor, double beatsPerCycle) noexcept
{
    if (isAlmost(anchor, lastPosition))
        return;
    const double offset = phase - accumulator;
    if (syncOrigin == nowhere)
        syncOrigin = anchor;
    accumulator = fraction((anchor - syncOrigin) / beatsPerCycle);
    phase = fraction(accumulator + offset);
    halfFlag = isInSecondHalf();
    lastPosition = anchor;
}

void XLFO::setSongPosition(double beats, double newBeatsPerSample) noexcept
{
    runningPosition = beats;
    beatsPerSample = newBeatsPerSample;
}

// The steps.

/// A register of 24 bits that runs through all its states but 0. Neighbouring values keep a distance, or
/// chance would now and then seem to do nothing.
float XLFO::random(float reference) noexcept
{
    randomState *= 2;
    if (randomState & 0x1000000u)
        randomState ^= 0x11D872Bu;
    const float unipolar =
        static_cast<float>(static_cast<std::int32_t>(randomState - 0x800000u)) * 5.9604645e-8f + 0.5f;
    const float drawn = randomRange.value() == RandomRange::Bipolar ? 2.0f * unipolar - 1.0f : unipolar;
    if (std::fabs(drawn - reference) >= leastRandomStep)
        return drawn;
    return reference >= 0.5f ? reference - leastRandomStep : reference + leastRandomStep;
}

float XLFO::valueOf(int index) noexcept
{
    Step& asked = step(index);
    if (!asked.heldValid) {
        asked.heldValue = newValueOf(index);
        asked.heldValid = true;
    }
    return asked.heldValue;
}

float XLFO::newValueOf(int index) noexcept
{
    Step& asked = step(index);
    const int count = numSteps.value();
    float value = asked.value.value();
    if (asked.random.value() && count != 1) {
        value = random(step((index - 1 + count) % count).heldValue);
    } else if (asked.random.value()) {
        value = asked.randomNext;
        asked.randomNext = random(value);
    }
    if (!asked.snap.value())
        return value;
    const int semitone = std::clamp(static_cast<int>(std::floor((value + 1.0f) * 12.0f + 0.5f)), 0, 24);
    return static_cast<float>(2 * semitone) * 0.041666668f - 1.0f;
}

void XLFO::updateBoundaries(float newBalance) noexcept
{
    if (newBalance == lastBalance && numSteps.value() == stepsSeen)
        return;
    stepsSeen = numSteps.value();
    keepPlaceInShape(newBalance);
    lastBalance = newBalance;

    const double firstWidth = 2.0 * newBalance / stepsSeen;
    const double secondWidth = 2.0 * (1.0 - newBalance) / stepsSeen;
    double start = 0.0;
    for (int j = 1; j <= stepsSeen; ++j) {
        Step& built = step(j - 1);
        built.start = start;
        built.isMiddle = 2 * j - 1 == stepsSeen;
        if (j == stepsSeen)
            built.end = 1.0;
        else if (2 * j < stepsSeen)
            built.end = firstWidth * j;
        else
            built.end = secondWidth * (j - stepsSeen * 0.5) + newBalance;
        built.inverseLength = 1.0 / (built.end - built.start);
        start = built.end;
    }
}

/// The phase goes along with a balance that moves: the output doesn't jump.
void XLFO::keepPlaceInShape(float newBalance) noexcept
{
    const double old = lastBalance;
    const double moved = newBalance;
    const double offset = phase - accumulator;
    if (phase < old) {
        if (old > signalEpsilon)
            phase = fraction(phase * moved / old);
    } else if (!isAlmost(old, 1.0)) {
        const auto inSecondHalf = static_cast<float>((phase - old) / (1.0 - old));
        phase = fraction(inSecondHalf * (1.0 - moved) + moved);
    }
    accumulator = fraction(phase - offset);
    halfFlag = isInSecondHalf();
}

/// The step that the phase is in.
int XLFO::findStep() noexcept
{
    for (int tested = 0; tested < stepsSeen; ++tested) {
        const Step& candidate = step(currentStep);
        if (candidate.start <= phase && candidate.end > phase)
            break;
        currentStep = currentStep + 1 < stepsSeen ? currentStep + 1 : 0;
    }
    return currentStep;
}

XLFO::Piece XLFO::pieceOf(int index) noexcept
{
    Step& rendered = step(index);
    const int count = numSteps.value();
    const float value = valueOf(index);
    const float next = count >= 2 ? valueOf((index + 1) % count) : rendered.randomNext;
    Piece piece{rendered.start, rendered.end, rendered.start,         rendered.inverseLength,
                value,          next - value, rendered.glide.value(), count == 1 && !rendered.random.value()};
    if (!rendered.isMiddle)
        return piece;
    const double centre = lastBalance;
    if (phase >= centre) {
        piece.low = centre;
        piece.zero = centre - (rendered.end - centre);
    } else {
        piece.high = centre;
    }
    piece.scale = 0.5 / (piece.high - piece.low);
    return piece;
}

// Rendering.

void XLFO::generate(wave::Block* block, int count, int flags) noexcept
{
    if (!isEnabled()) {  // a slot may still point here
        show(environment().silentBlock());
        return;
    }
    const wave::Block& hertz = frequency.pull(count);
    const wave::Block& balancePoint = balance.pull(count);
    const wave::Block& addedGlide = glide.pull(count);
    const Inputs inputs{hertz, addedGlide, phaseOffset.pull(count), environment().sampleRate()};
    updateBoundaries(balancePoint[0]);

    const bool unread = (flags & wave::Environment::Unread) != 0;
    const bool onlyFirst = unread && hertz.isConstant() && inputs.offset.isConstant();
    if (onlyFirst)
        renderUnread(inputs, block->data(), count);
    else
        renderAll(inputs, block->data(), count);
    applyLevel(block->data(), count, onlyFirst ? 1 : count);
    block->setConstant(false);

    // Held where a phase that stands still for hours would overflow it.
    samplesSinceHalf = std::max(samplesSinceHalf - count, -(1 << 30));
    tooFastToShow = static_cast<float>(numSteps.value()) * inputs.hertz(0) * 0.5f > mostStepsShown;
    if (syncOrigin == nowhere)
        syncOrigin = runningPosition;
    runningPosition += count * beatsPerSample;
}

void XLFO::renderAll(const Inputs& inputs, float* out, int count) noexcept
{
    // A jump of the offset may leave a step at once; the next search then finds the phase folded.
    int position = 0;
    for (int runs = 0; position < count && runs <= 2 * count; ++runs)
        position = renderStep(findStep(), inputs, out, position, count);
    std::fill(out + position, out + count, step(currentStep).heldValue);
}

/// One sample for who watches the source, and a step ahead for the rest.
void XLFO::renderUnread(const Inputs& inputs, float* out, int count) noexcept
{
    renderAll(inputs, out, 1);
    const float rest = static_cast<float>(count - 1) * inputs.hertz(0) / environment().sampleRate();
    phase += rest;
    accumulator += rest;
    endStep(step(currentStep));
    foldPhase();
    watchHalf(count);
}

/// Renders from `position` on until the phase leaves the step or the block ends. Returns where it ended.
int XLFO::renderStep(int index, const Inputs& inputs, float* out, int position, int count) noexcept
{
    const Piece piece = pieceOf(index);
    switch (step(index).glideCurve.value()) {
    case GlideCurve::Linear:
        position = renderPiece(piece, inputs, out, position, count, [](float x) { return x; });
        break;
    case GlideCurve::Square:
        position = renderPiece(piece, inputs, out, position, count, [](float x) { return x * x; });
        break;
    case GlideCurve::SquareRoot:
        position = renderPiece(piece, inputs, out, position, count, [](float x) { return std::sqrt(x); });
        break;
    case GlideCurve::Sine:
        position =
            renderPiece(piece, inputs, out, position, count, [this](float x) { return sine.lookup(x); });
        break;
    }
    endStep(step(index));
    foldPhase();
    watchHalf(position);
    return position;
}

template <class Curve>
int XLFO::renderPiece(const Piece& piece, const Inputs& inputs, float* out, int position, int count,
                      Curve curve) noexcept
{
    if (inputs.areSteady())
        return renderSteady(piece, inputs, out, position, count, curve);
    for (; position < count; ++position) {
        const float offset = numberOr(inputs.offset[position], lastPhaseOffset);
        phase += static_cast<double>(offset) - lastPhaseOffset;
        lastPhaseOffset = offset;
        if (!piece.holds(phase))
            break;
        const float hertz = inputs.hertz(position);
        out[position] = Glide(piece, hertz, inputs.glide[position]).sample(piece, phase, curve);
        const double perSample = hertz / inputs.sampleRate;
        phase += perSample;
        accumulator += perSample;
    }
    return position;
}

template <class Curve>
int XLFO::renderSteady(const Piece& piece, const Inputs& inputs, float* out, int position, int count,
                       Curve curve) noexcept
{
    const float offset = numberOr(inputs.offset[0], lastPhaseOffset);
    const float hertz = inputs.hertz(0);
    const Glide glideHere(piece, hertz, inputs.glide[0]);
    const double perSample = hertz / inputs.sampleRate;
    double at = phase + (static_cast<double>(offset) - lastPhaseOffset);
    double withoutOffset = accumulator;
    for (; position < count && piece.holds(at); ++position) {
        out[position] = glideHere.sample(piece, at, curve);
        at += perSample;
        withoutOffset += perSample;
    }
    phase = at;
    accumulator = withoutOffset;
    lastPhaseOffset = offset;
    return position;
}

/// A random step that is over has another value next time. Also where it ends with the block, or how the
/// blocks are cut would decide on it.
void XLFO::endStep(Step& ended) noexcept
{
    if (ended.random.value() && phase >= ended.end)
        ended.heldValid = false;
}

void XLFO::foldPhase() noexcept
{
    accumulator = fraction(accumulator);
    phase = fraction(lastPhaseOffset + accumulator);
}

void XLFO::watchHalf(int position) noexcept
{
    const bool inSecondHalf = static_cast<float>(phase) >= balance.parameter().target();
    if (inSecondHalf == halfFlag)
        return;
    halfFlag = inSecondHalf;
    const bool shown = inSecondHalf && static_cast<float>(position - samplesSinceHalf) >
                                           environment().sampleRate() * shortestBlink;
    if (shown != blink) {
        blink = shown;
        cycleEvent.fire();
    }
    samplesSinceHalf = position;
}

void XLFO::applyLevel(float* out, int count, int rendered) noexcept
{
    const wave::Block& gain = level.pull(count);
    if (gain.isConstant() && isNear(gain[0], 1.0f))
        return;
    for (int i = 0; i < rendered; ++i)
        out[i] *= gain[i];
}

// Display.

float XLFO::displayValue() noexcept
{
    float low = 1.0f;
    float high = -1.0f;
    for (int i = 0; i < numSteps.value(); ++i) {
        low = std::min(low, step(i).value.value());
        high = std::max(high, step(i).value.value());
    }
    const float shown = tooFastToShow ? level.current->currentValue() * (low + high) * 0.5f : currentValue();
    if (low < -signalEpsilon && high > signalEpsilon)
        return std::max(-low, high) * (shown - low) / (high - low);
    return std::fabs(shown);
}
