#include "dsp/StateVariableFilter.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float cubicReferenceLog2 = 15.42849063873291f;  // log2 of 44100
constexpr float highestCoefficient = 0.95f;               // at about 0.47 of the sample rate

}  // namespace

StateVariableFilter::StateVariableFilter(wave::Environment& owner, const StateVariableTables& sharedTables)
    : ParallelFilterUnit(owner),
      tables(sharedTables),
      clipTable(&ownClipTable.table()),
      segments(static_cast<std::size_t>(owner.maxBlockSize()), Coefficients{}),
      interleaved(lanes * owner.maxBlockSize())
{}

void StateVariableFilter::clear() noexcept
{
    std::fill_n(band, maxStages, Float4());
    std::fill_n(low, maxStages, Float4());
}

void StateVariableFilter::clearLane(int lane) noexcept
{
    for (Float4* states : {band, low}) {
        for (int stage = 0; stage < maxStages; ++stage) {
            alignas(16) float values[lanes];
            states[stage].store(values);
            values[lane] = 0.0f;
            states[stage] = Float4::load(values);
        }
    }
}

FilterCharacter StateVariableFilter::characterAt(float, float peak) const noexcept
{
    return {std::min(peak, 0.999f), 0.0f, 0.1f};
}

// Coefficients.

void StateVariableFilter::prepare() noexcept
{
    if (sampleRate != environment().sampleRate()) {
        sampleRate = environment().sampleRate();
        log2SampleRate = std::log2(sampleRate);
    }
    stageCount = slope == FilterSlope::Db48 ? 4 : slope == FilterSlope::Db24 ? 2 : 1;
    styleGain = styleGainValue();
}

void StateVariableFilter::setCoefficients(int lane, int segment, float frequency, float peak,
                                          float gain) noexcept
{
    const auto at = static_cast<std::size_t>(lane);
    Coefficients& target = segments[static_cast<std::size_t>(segment)];
    if (stageCount > 1 && response != FilterResponse::LowPass)
        peak = std::min(peak, tables.peakLimit.lookup(frequency - log2SampleRate));
    peak = std::max(peak, 0.0f);

    FilterCharacter character = characterAt(frequency, peak);
    const float coefficient = tables.frequency.lookup(frequency - log2SampleRate);
    // The cubic term acts three times a sample: at a higher rate each one does less.
    if (sampleRate > 44100.0f)
        character.cubic *= coefficient / tables.frequency.lookup(frequency - cubicReferenceLog2);
    target.frequency[at] = std::min(coefficient, highestCoefficient);
    target.cubic[at] = character.cubic;

    // A gain above 1 drives the clipper, and comes out less by its root.
    const bool boosts = gain > 1.0f;
    const float drive = boosts ? character.clipDrive : character.clipDrive * gain;
    const float compensation = boosts ? ((std::sqrt(gain) - 1.0f) * 2.15f + 1.0f) * drive : drive;
    target.inputGain[at] = boosts ? gain * styleGain : styleGain;
    target.clipInGain[at] = drive;
    target.clipOutGain[at] = 1.0f / (compensation * styleGain);
    setDampings(target, at, character.resonance, peak);
}

void StateVariableFilter::copyCoefficients(int fromLane, int toLane, int segment) noexcept
{
    const auto from = static_cast<std::size_t>(fromLane);
    const auto to = static_cast<std::size_t>(toLane);
    Coefficients& c = segments[static_cast<std::size_t>(segment)];
    c.frequency[to] = c.frequency[from];
    for (auto& stage : c.damping)
        stage[to] = stage[from];
    c.cubic[to] = c.cubic[from];
    c.inputGain[to] = c.inputGain[from];
    c.clipInGain[to] = c.clipInGain[from];
    c.clipOutGain[to] = c.clipOutGain[from];
}

void StateVariableFilter::setDampings(Coefficients& target, std::size_t lane, float resonance,
                                      float peak) const noexcept
{
    const float coefficient = target.frequency[lane];
    const float limit = tables.dampLimit.lookup(coefficient);
    target.damping[0][lane] = std::min(tables.damping.lookup(resonance), limit);
    // The further stages of a steep slope ring little.
    for (int stage = 1; stage < stageCount; ++stage) {
        const float stageLimit = stage == 1 ? tables.dampLimit2.lookup(coefficient) : limit;
        const float stageResonance = static_cast<float>(4 - stage) * 0.035f * peak;
        target.damping[stage][lane] = std::min(tables.damping.lookup(stageResonance), stageLimit);
    }
}

// Signal.

void StateVariableFilter::processLanes(int count) noexcept
{
    interleaveInputs(count);
    if (stageCount == 1)
        runSegments<1>(count);
    else if (stageCount == 2)
        runSegments<2>(count);
    else
        runSegments<4>(count);
    deinterleaveOutputs(count);
}

void StateVariableFilter::interleaveInputs(int count) noexcept
{
    for (int i = 0; i < count; i += Float4::width) {
        Float4 a = Float4::load(laneInputs[0]->data() + i);
        Float4 b = Float4::load(laneInputs[1]->data() + i);
        Float4 c = Float4::load(laneInputs[2]->data() + i);
        Float4 d = Float4::load(laneInputs[3]->data() + i);
        transpose(a, b, c, d);
        float* out = interleaved.data() + lanes * i;
        a.store(out);
        b.store(out + 4);
        c.store(out + 8);
        d.store(out + 12);
    }
}

void StateVariableFilter::deinterleaveOutputs(int count) noexcept
{
    for (int i = 0; i < count; i += Float4::width) {
        const float* in = interleaved.data() + lanes * i;
        Float4 a = Float4::load(in);
        Float4 b = Float4::load(in + 4);
        Float4 c = Float4::load(in + 8);
        Float4 d = Float4::load(in + 12);
        transpose(a, b, c, d);
        a.store(laneOutputs[0]->data() + i);
        b.store(laneOutputs[1]->data() + i);
        c.store(laneOutputs[2]->data() + i);
        d.store(laneOutputs[3]->data() + i);
    }
}

template <int stages>
void StateVariableFilter::runSegments(int count) noexcept
{
    std::size_t segment = 0;
    for (int at = 0; at < count; ++segment) {
        const int length = segmentLengths[segment];
        runLoop<stages>(segments[segment], at, length);
        clip(segments[segment], at, length);
        at += length;
    }
}

template <int stages>
void StateVariableFilter::runLoop(const Coefficients& coefficients, int from, int count) noexcept
{
    const Float4 f = Float4::load(coefficients.frequency);
    const Float4 inputGain = Float4::load(coefficients.inputGain);
    const Float4 lowGain(response == FilterResponse::LowPass ? 1.0f : 0.0f);
    const Float4 bandGain(response == FilterResponse::BandPass ? 1.0f : 0.0f);
    const Float4 highGain(response == FilterResponse::HighPass ? 1.0f : 0.0f);
    Float4 q[stages];
    Float4 b[stages];
    Float4 l[stages];
    for (int stage = 0; stage < stages; ++stage) {
        q[stage] = Float4::load(coefficients.damping[stage]);
        b[stage] = band[stage];
        l[stage] = low[stage];
    }

    float* samples = interleaved.data() + lanes * from;
    for (int i = 0; i < count; ++i, samples += lanes) {
        Float4 x = Float4::load(samples) * inputGain;
        for (int stage = 0; stage < stages; ++stage) {
            const Float4 k = stage == 0 ? Float4::load(coefficients.cubic) : Float4();
            // Three rounds with the same input; the cubic term is off the path from one to the next.
            Float4 high;
            for (int round = 0; round < 3; ++round) {
                const Float4 bent = stage == 0 ? b[stage] - k * (b[stage] * b[stage] * b[stage]) : b[stage];
                l[stage] = l[stage] + f * b[stage];
                high = x - q[stage] * b[stage] - l[stage];
                b[stage] = bent + high * f;
            }
            b[stage] = clamp(b[stage], Float4(-1.0f), Float4(1.0f));
            l[stage] = clamp(l[stage], Float4(-10.0f), Float4(10.0f));
            x = bandGain * b[stage] + lowGain * l[stage] + highGain * high;
        }
        x.store(samples);
    }
    for (int stage = 0; stage < stages; ++stage) {
        band[stage] = b[stage];
        low[stage] = l[stage];
    }
}

void StateVariableFilter::clip(const Coefficients& coefficients, int from, int count) noexcept
{
    const float* values = clipTable->values();
    const int firstEntry = clipTable->integerOffset();
    const Float4 lowest(static_cast<float>(firstEntry));
    const Float4 highest(static_cast<float>(firstEntry + clipTable->size() - 1));
    const Float4 scale = Float4::load(coefficients.clipInGain) * Float4(clipTable->scale());
    const Float4 fraction(clipTable->fraction());
    const Float4 outGain = Float4::load(coefficients.clipOutGain);

    float* samples = interleaved.data() + lanes * from;
    for (int i = 0; i < count; ++i, samples += lanes) {
        alignas(16) int index[lanes];
        alignas(16) float left[lanes];
        alignas(16) float right[lanes];
        const Float4 place = clamp(Float4::load(samples) * scale - fraction, lowest, highest);
        const Float4 weight = place - floorTo(place, index);
        for (int lane = 0; lane < lanes; ++lane) {
            left[lane] = values[index[lane] - firstEntry];
            right[lane] = values[index[lane] - firstEntry + 1];
        }
        const Float4 a = Float4::load(left);
        ((a + (Float4::load(right) - a) * weight) * outGain).store(samples);
    }
}
