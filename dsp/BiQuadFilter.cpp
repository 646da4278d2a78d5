#include "dsp/BiQuadFilter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double lowestLog2Hz = 1.0;       // 2 Hz
constexpr double highestPart = 0.49;       // of the sample rate
constexpr double widestAngle = 3.1315928;  // short of pi, where the tangent would grow without end

}  // namespace

BiQuadFilter::BiQuadFilter(wave::Environment& owner)
    : SingleFilterUnit(owner), sections(static_cast<std::size_t>(owner.maxBlockSize()))
{}

int BiQuadFilter::stageCount() const noexcept
{
    return slope == FilterSlope::Db48 ? 4 : slope == FilterSlope::Db24 ? 2 : 1;
}

/// From 0.7071 at a peak of 0 to 50 at 1; the further stages of a steep slope stop at 3.35, which is that of
/// 0.8. A band-pass goes from 1 to 2 in every stage.
double BiQuadFilter::stageQ(int stage, double peak) const noexcept
{
    if (response == FilterResponse::BandPass)
        return 2.0 / (2.0 - peak);
    const double own = stage == 0 ? peak : std::min(peak, 0.8);
    return 1.0 / (1.4142135 - 1.3942136 * own);
}

/// The analog section (b2 s^2 + b1 s + b0) / (s^2 + s / q + 1) at a cut-off of 1.
BiQuadFilter::Section BiQuadFilter::section(double tangent, double q) const noexcept
{
    Section result{};
    result.g = static_cast<float>(tangent);
    result.k = static_cast<float>(1.0 / q + tangent);
    result.lowGain = response == FilterResponse::LowPass ? 1.0f : 0.0f;
    result.bandGain = response == FilterResponse::BandPass ? static_cast<float>(1.0 / q) : 0.0f;
    result.highGain = response == FilterResponse::HighPass ? 1.0f : 0.0f;
    return result;
}

void BiQuadFilter::setCoefficients(int segment, float frequency, float peak) noexcept
{
    const double rate = environment().sampleRate();
    const double log2Hz =
        frequency >= lowestLog2Hz ? std::min<double>(frequency, std::log2(rate * highestPart)) : lowestLog2Hz;
    const double angle = 2.0 * std::numbers::pi * std::exp2(log2Hz) / rate;
    const double tangent = std::tan(std::min(angle, widestAngle) * 0.5);
    for (int stage = 0; stage < stageCount(); ++stage) {
        sections[static_cast<std::size_t>(segment)][static_cast<std::size_t>(stage)] =
            section(tangent, stageQ(stage, std::max(peak, 0.0f)));
    }
}

void BiQuadFilter::run(const FilterSignals& signals, const wave::Block& in, wave::Block& out,
                       int count) noexcept
{
    beginBlock(count);
    const bool still = signals.allConstant && !signals.gate;
    int segments = 0;
    for (int at = 0; at < count; ++segments) {
        const int end = still ? count : segmentEnd(signals, at, std::min(at + longestSegment, count));
        setCoefficients(segments, signals.frequency[at], signals.peakAt(at));
        segmentLengths[static_cast<std::size_t>(segments)] = end - at;
        at = end;
    }
    for (int stage = 0; stage < stageCount(); ++stage)
        runStage(stage, segments, stage == 0 ? in.data() : out.data(), out.data());
}

void BiQuadFilter::runStage(int stage, int segments, const float* in, float* out) noexcept
{
    State& state = states[static_cast<std::size_t>(stage)];
    float s1 = state.first;
    float s2 = state.second;
    for (int segment = 0; segment < segments; ++segment) {
        const Section& c = sections[static_cast<std::size_t>(segment)][static_cast<std::size_t>(stage)];
        const float d = 1.0f / (c.k * c.g + 1.0f);
        const int length = segmentLengths[static_cast<std::size_t>(segment)];
        for (int i = 0; i < length; ++i) {
            const float high = (in[i] - c.k * s1 - s2) * d;
            const float step = high * c.g;
            const float band = step + s1;
            s1 = band + step;
            const float low = s2 + band * c.g;
            s2 = low + band * c.g;
            out[i] = high * c.highGain + band * c.bandGain + low * c.lowGain;
        }
        in += length;
        out += length;
    }
    state = {s1, s2};
}
