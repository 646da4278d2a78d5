#include "modulation/EnvelopeFollower.h"

#include "foundation/Tolerance.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>

namespace {

constexpr float shortestSeconds = 0.0005f;
constexpr float longestSeconds = 10.0f;
constexpr float outputPerDb = 0.016666668f;
// A little below -60 dB, which gives 0 anyway.
constexpr float floorGain = 0.00099f;

/// dB above -60 dB, 0 below that and for what is no number; infinity counts as the largest number. To 2e-5
/// dB, and without a branch, so that four samples are measured side by side.
float levelAboveFloor(float sample) noexcept
{
    constexpr auto floor = std::bit_cast<std::int32_t>(floorGain);
    constexpr auto largest = std::bit_cast<std::int32_t>(FLT_MAX);
    constexpr std::int32_t infinite = 0x7f800000;
    // The bits of positive numbers are in the order of the numbers.
    std::int32_t bits = std::bit_cast<std::int32_t>(sample) & 0x7fffffff;
    bits &= ~((infinite - bits) >> 31);  // 0 for what is no number
    bits = std::min(std::max(bits, floor), largest);
    // The magnitude is m 2^exponent with m from sqrt(1/2), whose bits are these, to sqrt(2).
    constexpr std::int32_t rootOfHalf = 0x3f3504f3;
    const std::int32_t exponent = (bits - rootOfHalf) >> 23;
    const auto m = std::bit_cast<float>(bits - exponent * (1 << 23));
    // ln m = 2 artanh y, the series of which is good to 3e-8 here.
    const float y = (m - 1.0f) / (m + 1.0f);
    const float square = y * y;
    const float series = ((square / 7.0f + 1.0f / 5.0f) * square + 1.0f / 3.0f) * square * y + y;
    constexpr float dbPerNeper = 8.685889638f;
    constexpr float dbPerOctave = 6.020599913f;
    const float db = static_cast<float>(exponent) * dbPerOctave + series * (2.0f * dbPerNeper);
    const float above = db + 60.0f;
    return above > 0.0f ? above : 0.0f;
}

void measure(const float* samples, float* levels, int count) noexcept
{
    for (int i = 0; i < count; ++i)
        levels[i] = levelAboveFloor(samples[i]);
}

bool areEqual(const float* values, int count) noexcept
{
    int different = 0;
    for (int i = 0; i < count; ++i)
        different |= values[i] != values[0] ? 1 : 0;
    return different == 0;
}

double approached(double present, float target, float rise, float fall) noexcept
{
    const double distance = target - present;
    return present + static_cast<double>(distance > 0.0 ? rise : fall) * distance;
}

/// `approached` for a row of levels, without its branch, which nobody could foresee: where the rise is the
/// quicker one, it is above the fall whichever way it goes. Returns where it ended. `out` may be `levels`.
template <bool riseIsQuicker>
double approachAll(double present, const float* levels, float* out, int count, double rise,
                   double fall) noexcept
{
    const double keptOfRise = 1.0 - rise;
    const double keptOfFall = 1.0 - fall;
    for (int i = 0; i < count; ++i) {
        const double risen = keptOfRise * present + rise * levels[i];
        const double fallen = keptOfFall * present + fall * levels[i];
        present = riseIsQuicker ? std::max(risen, fallen) : std::min(risen, fallen);
        out[i] = static_cast<float>(present) * outputPerDb;
    }
    return present;
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
    const float rate = environment().sampleRate();
    float* const levels = out.data();
    measure(in.data(), levels, count);
    double present = envelope;  // apart from the blocks' memory, so that it stays in a register
    if (!attackTimes.isConstant() || !releaseTimes.isConstant()) {
        for (int i = 0; i < count; ++i) {
            present = approached(present, levels[i], attackCoefficient.at(attackTimes[i], rate),
                                 releaseCoefficient.at(releaseTimes[i], rate));
            levels[i] = static_cast<float>(present) * outputPerDb;
        }
        envelope = present;
        return;
    }
    const float rise = attackCoefficient.at(attackTimes[0], rate);
    const float fall = releaseCoefficient.at(releaseTimes[0], rate);
    constexpr double arrived = 1e-6;  // dB
    if (std::fabs(present - levels[0]) < arrived && areEqual(levels, count)) {
        out.fill(static_cast<float>(present) * outputPerDb, count);
        return;
    }
    envelope = rise >= fall ? approachAll<true>(present, levels, levels, count, rise, fall)
                            : approachAll<false>(present, levels, levels, count, rise, fall);
}
