#include "dsp/StateVariableFilter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr float cubicReferenceLog2 = 15.42849063873291f;  // log2 of 44100
constexpr float highestCoefficient = 0.95f;               // at about 0.47 of the sample rate

}  // namespace

StateVariableFilter::StateVariableFilter(wave::Environment& owner, const StateVariableTables& sharedTables)
    : ParallelFilterUnit(owner),
      tables(sharedTables),
      clipTable(&ownClipTable.table()),
      segments(static_cast<std::size_t>(owner.maxBlockSize()), Coefficients{}),
      interleaved(lanes * ((owner.maxBlockSize() + 7) / 8 * 8))
{
    forgetSettings();
    owner.shareMemory(interleaved);
}

StateVariableFilter::~StateVariableFilter() { environment().withdraw(interleaved); }

void StateVariableFilter::clearLane(int lane) noexcept
{
    for (int stage = 0; stage < StateVariableKernel::maxStages; ++stage) {
        states.band[stage][lane] = 0.0f;
        states.low[stage][lane] = 0.0f;
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
        forgetSettings();
    }
    const int stages = slope == FilterSlope::Db48 ? 4 : slope == FilterSlope::Db24 ? 2 : 1;
    if (stageCount != stages || settingResponse != response) {
        stageCount = stages;
        settingResponse = response;
        forgetSettings();
    }
    styleGain = styleGainValue();
}

void StateVariableFilter::forgetSettings() noexcept
{
    constexpr float unset = std::numeric_limits<float>::quiet_NaN();
    for (Setting& setting : settings)
        setting = {unset, unset, unset};
}

void StateVariableFilter::setCoefficients(int lane, int segment, float frequency, float peak,
                                          float gain) noexcept
{
    const auto at = static_cast<std::size_t>(lane);
    if (segment == 0) {
        const Setting setting{frequency, peak, gain};
        if (settings[at] == setting)
            return;
        settings[at] = setting;
    }
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
    target.clipInGain[at] = drive * clipTable->scale();
    target.clipOutGain[at] = 1.0f / (compensation * styleGain);
    setDampings(target, at, character.resonance, peak);
}

void StateVariableFilter::copyCoefficients(int fromLane, int toLane, int segment) noexcept
{
    const auto from = static_cast<std::size_t>(fromLane);
    const auto to = static_cast<std::size_t>(toLane);
    if (segment == 0) {
        if (settings[to] == settings[from])
            return;
        settings[to] = settings[from];
    }
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

void StateVariableFilter::processLanes(int count) noexcept { kernel->run(job(), count); }

void StateVariableFilter::processLanesInSeries(int count) noexcept
{
    kernel->runInSeries(first->job(), job(), count);
}

StateVariableKernel::Job StateVariableFilter::job() noexcept
{
    StateVariableKernel::Job job{};
    job.segments = segments.data();
    job.segmentLengths = segmentLengths.data();
    job.stages = stageCount;
    job.mix.low = response == FilterResponse::LowPass ? 1.0f : 0.0f;
    job.mix.band = response == FilterResponse::BandPass ? 1.0f : 0.0f;
    job.mix.high = response == FilterResponse::HighPass ? 1.0f : 0.0f;
    job.clipper = {clipTable->values(), clipTable->integerOffset(),
                   clipTable->integerOffset() + clipTable->size() - 1, -clipTable->fraction()};
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        job.inputs[lane] = laneInputs[lane]->data();
        job.outputs[lane] = laneOutputs[lane]->data();
    }
    job.scratch = interleaved.data();
    job.states = &states;
    return job;
}
