#include "speed/SpeedInput.h"

#include "speed/SpeedSubject.h"

#include <cmath>
#include <cstdint>

namespace {

std::vector<float> makeStrokes()
{
    constexpr std::int64_t strokeFrames = SpeedSubject::stretchFrames / 2;
    constexpr double decayFrames = 0.08 * SpeedSubject::sampleRate;
    std::vector<float> strokes;
    std::uint32_t random = 1;
    for (std::int64_t i = 0; i < SpeedSubject::stretchFrames; ++i) {
        random = random * 1664525u + 1013904223u;
        const double noise = static_cast<double>(random >> 8) / (1 << 23) - 1.0;
        strokes.push_back(
            static_cast<float>(0.5 * noise * std::exp(-static_cast<double>(i % strokeFrames) / decayFrames)));
    }
    return strokes;
}

}  // namespace

const std::vector<float>& speedInput()
{
    static const std::vector<float> strokes = makeStrokes();
    return strokes;
}
