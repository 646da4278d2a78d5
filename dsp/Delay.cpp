#include "dsp/Delay.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace wave {

int Delay::lengthFor(const Environment& environment, int longestDelay)
{
    return static_cast<int>(
        std::bit_ceil(static_cast<unsigned>(std::max(environment.maxBlockSize() + longestDelay, 1))));
}

Delay::Delay(Environment& owner, int longestDelay)
    : environment(owner),
      longest(longestDelay),
      ring(lengthFor(owner, longestDelay)),
      mask(ring.size() - 1),
      readBase(ring.size())
{
    environment.memoryTrail().addStream(*this);
}

Delay::~Delay() { environment.memoryTrail().removeStream(*this); }

void Delay::fetchAhead() const noexcept
{
    fetch(writeIndex);
    fetch(readPlace);
}

/// A sub-block from `place` on.
void Delay::fetch(int place) const noexcept
{
    constexpr int line = AlignedBuffer::alignment / sizeof(float);
    const int last = std::min(place + environment.maxBlockSize(), ring.size() - 1);
    for (; place <= last; place += line)
        __builtin_prefetch(ring.data() + place, 1);
}

void Delay::setMaxDelay(int samples)
{
    if (samples == longest)
        return;
    const int unwritten = readBase - ring.size();
    longest = samples;
    ring.resize(lengthFor(environment, samples));
    mask = ring.size() - 1;
    setUnwritten(unwritten);
    clear();
}

void Delay::clear() noexcept
{
    writeIndex = 0;
    filled = 0;
    ring[0] = 0.0f;
}

void Delay::storeFinite(const float* samples, int place, int count) noexcept
{
    float* out = ring.data() + place;
    // Nearly always all of them pass, and looking is quicker than bending each.
    int beyond = 0;
    for (int i = 0; i < count; ++i)
        beyond |= std::fabs(samples[i]) <= ceiling ? 0 : 1;
    if (beyond == 0) {
        std::copy_n(samples, count, out);
        return;
    }
    for (int i = 0; i < count; ++i) {
        const float number = samples[i] == samples[i] ? samples[i] : 0.0f;
        const float capped = number < ceiling ? number : ceiling;
        out[i] = capped > -ceiling ? capped : -ceiling;
    }
}

void Delay::write(const float* samples, int count) noexcept
{
    const int first = std::min(count, ring.size() - writeIndex);
    storeFinite(samples, writeIndex, first);
    storeFinite(samples + first, 0, count - first);
    writeIndex = (writeIndex + count) & mask;
    if (filled >= ring.size())
        return;
    filled += count;
    if (filled < ring.size())
        ring[writeIndex] = 0.0f;
}

void Delay::read(int delay, float* out, int count) noexcept
{
    const int start = (writeIndex + readBase - delay - count) & mask;
    readPlace = (start + count) & mask;
    const int first = std::min(count, ring.size() - start);
    if (start < filled)
        std::memcpy(out, ring.data() + start, static_cast<std::size_t>(first) * sizeof(float));
    else
        std::fill(out, out + count, 0.0f);
    // A read that begins before the first sample ever written wraps round to it.
    if (first < count)
        std::memcpy(out + first, ring.data(), static_cast<std::size_t>(count - first) * sizeof(float));
}

void Delay::readLinear(const float* delays, float* out, int count) noexcept
{
    const float* samples = ring.data();
    const int base = writeIndex + readBase - count;
    for (int i = 0; i < count; ++i) {
        // Double: beyond 131072 samples a float can't tell sixty-fourths of a sample apart.
        const double place = static_cast<double>(base + i) - static_cast<double>(delays[i]);
        const int whole = static_cast<int>(place);
        const auto part = static_cast<float>(place - whole);
        const int a = whole & mask;
        const int b = (whole + 1) & mask;
        if (a < filled)
            out[i] = (samples[b] - samples[a]) * part + samples[a];
        else
            out[i] = b < filled ? part * samples[b] : 0.0f;
    }
    readPlace = (base + count - static_cast<int>(delays[count - 1])) & mask;
}

void Delay::readAllpass(const float* delays, float* out, float* state, int count) noexcept
{
    const float* samples = ring.data();
    const int base = writeIndex + readBase - count;
    // Places at `filled` and above read as the 0 that is kept there.
    const int lastWritten = std::min(filled, mask);
    float y = *state;
    for (int i = 0; i < count; ++i) {
        // A fraction of 0.618 to 1.618 keeps the pole well inside the unit circle.
        const float delay = delays[i] > 0.618f ? delays[i] : 0.0f;
        int whole = static_cast<int>(delay);
        float part = delay - static_cast<float>(whole);
        if (part < 0.618f) {
            part += 1.0f;
            whole -= 1;
        }
        const int newer = (base + i - whole) & mask;
        const int older = (newer - 1) & mask;
        const float coefficient = (1.0f - part) / (1.0f + part);
        y = (samples[std::min(newer, lastWritten)] - y) * coefficient + samples[std::min(older, lastWritten)];
        out[i] = y;
    }
    *state = y;
}

}  // namespace wave
