#include "dsp/StretchReader.h"

#include <algorithm>
#include <cmath>

namespace {

/// Falls by 36 dB as `u` goes from 1 to 0, and bends into a straight line to 0 for the last tenth.
constexpr double fallRate = 36.0 * 0.1151292546497023;
constexpr double straightPart = 0.1;
constexpr double straightSlope = 0.23988324;

}  // namespace

StretchReader::StretchReader(wave::Environment& owner, wave::AbstractDelay& readLine)
    : environment(owner), line(readLine)
{
    reset();
}

void StretchReader::reset() noexcept
{
    head = -1;
    position = 0;
    headDelays[0] = headDelays[1] = -1;
    length = std::max(static_cast<int>(environment.sampleRate() * 0.085), 1);
    inverseLength = 1.0f / static_cast<float>(length);
}

bool StretchReader::isSettledAt(int delay) const noexcept
{
    return head < 0 || (headDelays[0] == delay && headDelays[1] == delay);
}

void StretchReader::read(const float* delays, float* out, int count) noexcept
{
    const int target = static_cast<int>(delays[0]);
    if (head < 0) {
        head = 0;
        position = 0;
        headDelays[0] = target;
    }
    readHead(0, count);
    if (headDelays[1] >= 0)
        readHead(1, count);

    for (int i = 0; i < count;) {
        if (position == 0)
            startFade(target, count);
        const int run = std::min(length - position, count - i);
        mix(out, i, run);
        i += run;
        if (position == length) {
            head = 1 - head;
            position = 0;
        }
    }
}

void StretchReader::readHead(int index, int count) noexcept
{
    float* own = environment.scratchBlock(index).data();
    if (index == 1 && headDelays[0] == headDelays[1])
        std::copy_n(environment.scratchBlock(0).data(), count, own);
    else
        line.read(headDelays[index], own, count);
}

void StretchReader::startFade(int target, int count) noexcept
{
    const int other = 1 - head;
    headDelays[other] = target;
    if (headDelays[head] == target)
        std::copy_n(environment.scratchBlock(head).data(), count, environment.scratchBlock(other).data());
    else
        line.read(target, environment.scratchBlock(other).data(), count);
}

void StretchReader::mix(float* out, int from, int count) noexcept
{
    const float* old = environment.scratchBlock(head).data();
    const float* fresh = environment.scratchBlock(1 - head).data();
    // The exponential is carried on from sample to sample by its constant ratio.
    double curve = std::exp(-static_cast<double>(position) * inverseLength * fallRate);
    const double ratio = std::exp(-static_cast<double>(inverseLength) * fallRate);
    for (int i = from; i < from + count; ++i) {
        const double u = 1.0 - static_cast<double>(position) * inverseLength;
        const auto gain = static_cast<float>(u > straightPart ? curve : u * straightSlope);
        out[i] = gain * old[i] + (1.0f - gain) * fresh[i];
        curve *= ratio;
        ++position;
    }
}
