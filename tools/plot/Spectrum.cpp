#include "plot/Spectrum.h"

#include <fftw3.h>

#include <cmath>
#include <numbers>

struct Spectrum::Plan {
    explicit Plan(std::size_t size)
        : samples(fftwf_alloc_complex(size)),
          transform(fftwf_plan_dft_1d(static_cast<int>(size), samples, samples, FFTW_FORWARD, FFTW_ESTIMATE))
    {}
    ~Plan()
    {
        fftwf_destroy_plan(transform);
        fftwf_free(samples);
    }
    Plan(const Plan&) = delete;
    Plan& operator=(const Plan&) = delete;

    double powerAt(std::size_t bin) const
    {
        return static_cast<double>(samples[bin][0]) * samples[bin][0] +
               static_cast<double>(samples[bin][1]) * samples[bin][1];
    }

    fftwf_complex* samples;  // in place
    fftwf_plan transform;
};

Spectrum::Spectrum(std::size_t size) : window(size), plan(std::make_unique<Plan>(size))
{
    double sum = 0.0;
    for (std::size_t i = 0; i < size; ++i) {
        const double phase = 2.0 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(size);
        window[i] = static_cast<float>(0.5 - 0.5 * std::cos(phase));
        sum += window[i];
    }
    // A sine of amplitude 1 has the magnitude sum / 2 in its bin.
    normalisation = 4.0 / (sum * sum);
}

Spectrum::~Spectrum() = default;

void Spectrum::addPower(const StereoSignal& signal, double centre, std::vector<double>& power)
{
    const auto finite = [](float sample) { return std::isfinite(sample) ? sample : 0.0f; };
    const auto frames = static_cast<std::ptrdiff_t>(signal.frames());
    const auto first =
        static_cast<std::ptrdiff_t>(std::llround(centre)) - static_cast<std::ptrdiff_t>(size() / 2);
    for (std::size_t i = 0; i < size(); ++i) {
        const std::ptrdiff_t frame = first + static_cast<std::ptrdiff_t>(i);
        const bool inside = frame >= 0 && frame < frames;
        const auto index = static_cast<std::size_t>(inside ? frame : 0);
        plan->samples[i][0] = inside ? window[i] * finite(signal.left[index]) : 0.0f;
        plan->samples[i][1] = inside ? window[i] * finite(signal.right[index]) : 0.0f;
    }
    fftwf_execute(plan->transform);

    // With Z the transform of left + i right, |Z[k]|^2 + |Z[-k]|^2 = 2 (|L[k]|^2 + |R[k]|^2): one transform
    // serves both channels.
    for (std::size_t bin = 0; bin < bins(); ++bin) {
        const std::size_t mirror = (size() - bin) % size();
        power[bin] += 0.25 * normalisation * (plan->powerAt(bin) + plan->powerAt(mirror));
    }
}
