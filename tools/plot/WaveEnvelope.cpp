#include "plot/WaveEnvelope.h"

#include <algorithm>
#include <cmath>

namespace {

EnvelopeColumn sumUp(std::span<const float> samples)
{
    EnvelopeColumn column{samples.front(), samples.front(), 0.0f};
    double squares = 0.0;
    for (const float raw : samples) {
        const float sample = std::isfinite(raw) ? raw : 0.0f;
        column.lowest = std::min(column.lowest, sample);
        column.highest = std::max(column.highest, sample);
        squares += static_cast<double>(sample) * sample;
    }
    column.rms = static_cast<float>(std::sqrt(squares / static_cast<double>(samples.size())));
    return column;
}

}  // namespace

std::vector<EnvelopeColumn> waveEnvelope(std::span<const float> samples, std::size_t columns,
                                         double samplesPerColumn)
{
    std::vector<EnvelopeColumn> result;
    result.reserve(columns);
    for (std::size_t column = 0; column < columns; ++column) {
        const auto first = static_cast<std::size_t>(static_cast<double>(column) * samplesPerColumn);
        if (first >= samples.size())
            break;
        // One sample more than its own: neighbouring columns meet.
        const auto end = static_cast<std::size_t>(static_cast<double>(column + 1) * samplesPerColumn) + 1;
        result.push_back(sumUp(samples.subspan(first, std::min(end, samples.size()) - first)));
    }
    return result;
}
