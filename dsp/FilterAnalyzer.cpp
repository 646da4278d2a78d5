#include "dsp/FilterAnalyzer.h"

FilterAnalyzer::FilterAnalyzer(wave::Environment& owner, float timeMs, float levelThreshold)
    : Filter(owner), time(timeMs), threshold(levelThreshold)
{
    registerForReset();
}

void FilterAnalyzer::filter(wave::Block* in, wave::Block* out, int count, int) noexcept
{
    const float coefficient = 1000.0f / (environment().sampleRate() * time);
    const float inverse = 1.0f / threshold;
    for (int i = 0; i < count; ++i) {
        state += ((*in)[i] - state) * coefficient;
        (*out)[i] = state >= threshold ? 1.0f : state * inverse;
    }
}
