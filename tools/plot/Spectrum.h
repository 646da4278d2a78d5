#pragma once

#include "clap_host/StereoSignal.h"

#include <complex>
#include <cstddef>
#include <memory>
#include <vector>

/// The power spectrum of short pieces of a stereo signal, through a Hann window.
class Spectrum {
public:
    /// @param size  samples per piece, even
    explicit Spectrum(std::size_t size);
    ~Spectrum();
    Spectrum(const Spectrum&) = delete;
    Spectrum& operator=(const Spectrum&) = delete;

    std::size_t size() const noexcept { return window.size(); }
    std::size_t bins() const noexcept { return window.size() / 2 + 1; }

    /// Adds the power of the piece around frame `centre` to `bins()` values, the mean of both channels. A
    /// sine of full scale in both channels adds 1 to its bin. Outside of the signal is silence.
    void addPower(const StereoSignal& signal, double centre, std::vector<double>& power);

private:
    struct Plan;  // of the transform library

    std::vector<float> window;
    double normalisation;
    std::unique_ptr<Plan> plan;
};
