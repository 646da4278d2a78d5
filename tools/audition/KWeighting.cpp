#include "audition/KWeighting.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double silenceLufs = -200.0;

/// A filter of second order in transposed direct form II.
class Biquad {
public:
    struct Coefficients {
        double b0, b1, b2, a1, a2;
    };
    explicit Biquad(const Coefficients& coefficients) : c(coefficients) {}

    double next(double x)
    {
        const double y = c.b0 * x + first;
        first = c.b1 * x - c.a1 * y + second;
        second = c.b2 * x - c.a2 * y;
        return y;
    }

private:
    Coefficients c;
    double first = 0.0;
    double second = 0.0;
};

/// The shelf of +4 dB that stands for the head.
Biquad shelf(double sampleRate)
{
    constexpr double hertz = 1681.974450955533;
    constexpr double quality = 0.7071752369554196;
    const double high = std::pow(10.0, 3.999843853973347 / 20.0);
    const double middle = std::pow(high, 0.4996667741545416);
    const double k = std::tan(std::numbers::pi * hertz / sampleRate);
    const double a0 = 1.0 + k / quality + k * k;
    return Biquad({(high + middle * k / quality + k * k) / a0, 2.0 * (k * k - high) / a0,
                   (high - middle * k / quality + k * k) / a0, 2.0 * (k * k - 1.0) / a0,
                   (1.0 - k / quality + k * k) / a0});
}

/// The high-pass that takes off what is felt rather than heard.
Biquad highPass(double sampleRate)
{
    constexpr double hertz = 38.13547087602444;
    constexpr double quality = 0.5003270373238773;
    const double k = std::tan(std::numbers::pi * hertz / sampleRate);
    const double a0 = 1.0 + k / quality + k * k;
    return Biquad({1.0, -2.0, 1.0, 2.0 * (k * k - 1.0) / a0, (1.0 - k / quality + k * k) / a0});
}

double weightedPower(const std::vector<float>& samples, double sampleRate, std::size_t first,
                     std::size_t last)
{
    Biquad head = shelf(sampleRate);
    Biquad bottom = highPass(sampleRate);
    double sum = 0.0;
    for (std::size_t i = first; i < last; ++i) {
        const double weighted = bottom.next(head.next(samples[i]));
        sum += weighted * weighted;
    }
    return sum / static_cast<double>(last - first);
}

}  // namespace

double loudness(const StereoSignal& signal, std::size_t first, std::size_t last)
{
    if (first >= last)
        return silenceLufs;
    const double power = weightedPower(signal.left, signal.sampleRate, first, last) +
                         weightedPower(signal.right, signal.sampleRate, first, last);
    return power < 1e-19 ? silenceLufs : -0.691 + 10.0 * std::log10(power);
}
