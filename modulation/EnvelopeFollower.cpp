#include "modulation/EnvelopeFollower.h"

#include "foundation/Tolerance.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace {

constexpr float shortestSeconds = 0.0005f;
constexpr float longestSeconds = 10.0f;
constexpr float outputPerDb = 0.016666668f;
// A little below -60 dB, so that no logarithm is due for what gives 0 anyway.
constexpr float floorGain = 0.00099f;

/// dB above -60 dB, 0 below that and for what is no number. Always finite.
float levelAboveFloor(float sample) noexcept
{
    const float magnitude = std::fabs(sample);
    if (!(magnitude > floorGain))
        return 0.0f;
    return std::max(20.0f * std::log10(std::min(magnitude, FLT_MAX)) + 60.0f, 0.0f);
}

/// True if the level is the same throughout: above all in silence.
bool hasSteadyLevel(const wave::Block& in, int count) noexcept
{
    return in.isConstant() || std::none_of(in.data(), in.data() + count,
                                           [](float sample) { return std::fabs(sample) > floorGain; });
}

void multiply(wave::Block& block, const wave::Block& gain, int count) noexcept
{
    for (int i = 0; i < count; ++i)
        block[i] *= gain[i];
    block.setConstant(block.isConstant() && gain.isConstant());
}

}  // namespace

EnvelopeFollower::EnvelopeFollower(wave::Environment& owner)
    : Filter(owner), attack(owner, shortestSeconds), level(owner, 1.0f), release(owner, 0.1f)
{
    attack.parameter().setRange(shortestSeconds, longestSeconds);
    level.parameter().setRange(-2.0f, 2.0f);
    release.parameter().setRange(shortestSeconds, longestSeconds);
    runAlways(1);
}

float EnvelopeFollower::Coefficient::at(float seconds, float sampleRate) noexcept
{
    const float time = std::max(seconds, shortestSeconds) * sampleRate;
    if (std::fabs(time - samples) > signalEpsilon) {
        samples = time;
        value = static_cast<float>(1.0 - std::exp(-(2.302585092994046 / static_cast<double>(time))));
    }
    return value;
}

float EnvelopeFollower::next(float target, float attackSeconds, float releaseSeconds) noexcept
{
    const float rate = environment().sampleRate();
    const float distance = target - envelope;
    const float coefficient = distance > 0.0f ? attackCoefficient.at(attackSeconds, rate)
                                              : releaseCoefficient.at(releaseSeconds, rate);
    return envelope + coefficient * distance;
}

void EnvelopeFollower::filter(wave::Block* in, wave::Block* out, int count, int) noexcept
{
    follow(*in, *out, count);
    const wave::Block& gain = level.pull(count);
    if (!gain.isConstant() || !isNear(gain[0], 1.0f))
        multiply(*out, gain, count);
}

void EnvelopeFollower::follow(const wave::Block& in, wave::Block& out, int count) noexcept
{
    const wave::Block& attackTimes = attack.pull(count);
    const wave::Block& releaseTimes = release.pull(count);
    const bool steady = hasSteadyLevel(in, count);
    float target = levelAboveFloor(in[0]);
    // Where a step no longer moves the envelope, none of the following does.
    if (steady && attackTimes.isConstant() && releaseTimes.isConstant() &&
        next(target, attackTimes[0], releaseTimes[0]) == envelope) {
        out.fill(envelope * outputPerDb, count);
        return;
    }
    for (int i = 0; i < count; ++i) {
        if (!steady)
            target = levelAboveFloor(in[i]);
        envelope = next(target, attackTimes[i], releaseTimes[i]);
        out[i] = envelope * outputPerDb;
    }
    out.setConstant(false);
}
