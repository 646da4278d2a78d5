#include "voicing/VoicingMeter.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <numbers>
#include <numeric>
#include <span>

namespace {

constexpr double smallDb = -60.0;
constexpr double settlingSeconds = 0.5;
constexpr double measuredSeconds = 0.25;
constexpr double clickLevel = 0.1;
constexpr double silenceDb = -80.0;  // a song is louder
constexpr double lowestDb = -180.0;

constexpr double twoPi = 2.0 * std::numbers::pi;

std::size_t samplesOf(double seconds) { return static_cast<std::size_t>(seconds * FilterProbe::sampleRate); }

double toDb(double level) { return level > 0.0 ? std::max(20.0 * std::log10(level), lowestDb) : lowestDb; }

double meanOf(std::span<const float> signal)
{
    return std::accumulate(signal.begin(), signal.end(), 0.0) / static_cast<double>(signal.size());
}

/// The reach of the sine that has the same power, without any constant part.
double sineLevel(std::span<const float> signal)
{
    const double mean = meanOf(signal);
    double power = 0.0;
    for (const float sample : signal)
        power += (sample - mean) * (sample - mean);
    return std::sqrt(2.0 * power / static_cast<double>(signal.size()));
}

/// The reach of the part of `signal` at `hertz`, seen through a Hann window.
double levelAt(std::span<const float> signal, double hertz)
{
    std::complex<double> sum;
    for (std::size_t i = 0; i < signal.size(); ++i) {
        const double place = (static_cast<double>(i) + 0.5) / static_cast<double>(signal.size());
        const double window = 1.0 - std::cos(twoPi * place);
        const double phase = twoPi * hertz * static_cast<double>(i) / FilterProbe::sampleRate;
        sum += window * signal[i] * std::polar(1.0, -phase);
    }
    return 2.0 * std::abs(sum) / static_cast<double>(signal.size());
}

void addSine(std::span<float> signal, double hertz, double db)
{
    const double level = std::pow(10.0, db / 20.0);
    for (std::size_t i = 0; i < signal.size(); ++i) {
        const double phase = twoPi * hertz * static_cast<double>(i) / FilterProbe::sampleRate;
        signal[i] += static_cast<float>(level * std::sin(phase));
    }
}

/// From the first to the last upward crossing of the mean; 0 if there aren't two.
double pitchOf(std::span<const float> signal)
{
    const double mean = meanOf(signal);
    double first = 0.0;
    double last = 0.0;
    int periods = -1;
    for (std::size_t i = 1; i < signal.size(); ++i) {
        const double before = signal[i - 1] - mean;
        const double after = signal[i] - mean;
        if (before >= 0.0 || after < 0.0)
            continue;
        last = static_cast<double>(i) - after / (after - before);
        if (++periods == 0)
            first = last;
    }
    return periods > 0 ? periods * FilterProbe::sampleRate / (last - first) : 0.0;
}

/// The end of the last hundredth of a second that is less than 60 dB below the loudest one.
double decayOf(std::span<const float> signal)
{
    const std::size_t piece = samplesOf(0.01);
    std::vector<double> levels;
    for (std::size_t at = 0; at + piece <= signal.size(); at += piece)
        levels.push_back(sineLevel(signal.subspan(at, piece)));
    const double threshold = 0.001 * *std::max_element(levels.begin(), levels.end());
    const auto quiet =
        std::find_if(levels.rbegin(), levels.rend(), [=](double level) { return level > threshold; });
    return 0.01 * static_cast<double>(levels.rend() - quiet);
}

}  // namespace

double VoicingMeter::smallSignalDb(const FilterProbe::Setting& setting, double hertz) const
{
    // A song that is there from the start is the same with and without the sine, and their difference lacks
    // it.
    std::vector<float> click(samplesOf(2.0 * settlingSeconds + measuredSeconds));
    click[0] = static_cast<float>(clickLevel);
    std::vector<float> both = click;
    addSine(std::span(both).subspan(samplesOf(settlingSeconds)), hertz, smallDb);
    std::vector<float> difference = FilterProbe(style, tables, setting).run(both);
    const std::vector<float> alone = FilterProbe(style, tables, setting).run(click);
    std::transform(difference.begin(), difference.end(), alone.begin(), difference.begin(), std::minus<>());
    return toDb(levelAt(std::span(difference).last(samplesOf(measuredSeconds)), hertz)) - smallDb;
}

double VoicingMeter::outputDb(const FilterProbe::Setting& setting, double hertz, double inputDb) const
{
    std::vector<float> sine(samplesOf(settlingSeconds + measuredSeconds));
    addSine(sine, hertz, inputDb);
    const std::vector<float> out = FilterProbe(style, tables, setting).run(sine);
    return toDb(sineLevel(std::span(out).last(samplesOf(measuredSeconds))));
}

auto VoicingMeter::ringing(const FilterProbe::Setting& setting) const -> Ringing
{
    std::vector<float> click(samplesOf(Ringing::longest));
    click[0] = static_cast<float>(clickLevel);
    const std::vector<float> out = FilterProbe(style, tables, setting).run(click);
    const auto lastOf = [&](double seconds) { return std::span(out).last(samplesOf(seconds)); };

    const double endDb = toDb(sineLevel(lastOf(0.5)));
    const double earlierDb = toDb(sineLevel(lastOf(2.0).first(samplesOf(0.5))));
    if (endDb > silenceDb && endDb > earlierDb - 1.0)
        return {true, endDb, pitchOf(lastOf(0.5)), 0.0};
    return {false, lowestDb, 0.0, decayOf(out)};
}
