#include "audition/SpectralMovement.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double hopSeconds = 0.05;
constexpr double shownRangeDb = 40.0;  // below the loudest band nothing counts

}  // namespace

SpectralMovement::Bands SpectralMovement::bandsAt(const StereoSignal& signal, double centre)
{
    power.assign(spectrum.bins(), 0.0);
    spectrum.addPower(signal, centre, power);
    const double binHz = signal.sampleRate / static_cast<double>(spectrum.size());
    Bands bands{};
    for (std::size_t bin = 1; bin < power.size(); ++bin) {
        const double octave = std::log2(static_cast<double>(bin) * binHz / lowestHz);
        const auto band = static_cast<std::ptrdiff_t>(std::floor(octave * bandsPerOctave));
        if (band >= 0 && band < static_cast<std::ptrdiff_t>(bandCount))
            bands[static_cast<std::size_t>(band)] += power[bin];
    }
    return bands;
}

SpectralMovement::Reading SpectralMovement::read(const StereoSignal& signal, std::size_t first,
                                                 std::size_t last)
{
    std::vector<Bands> pieces;
    const double hop = hopSeconds * signal.sampleRate;
    for (double centre = static_cast<double>(first) + pieceSize / 2.0;
         centre + pieceSize / 2.0 <= static_cast<double>(last); centre += hop)
        pieces.push_back(bandsAt(signal, centre));

    Reading reading;
    Bands mean{};
    double total = 0.0;
    double weighted = 0.0;
    for (std::size_t band = 0; band < bandCount && !pieces.empty(); ++band) {
        for (const Bands& piece : pieces)
            mean[band] += piece[band] / static_cast<double>(pieces.size());
        const double octave = (static_cast<double>(band) + 0.5) / bandsPerOctave;
        total += mean[band];
        weighted += mean[band] * lowestHz * std::exp2(octave);
        reading.octavePower[band / bandsPerOctave] += mean[band];
    }
    if (total < 1e-18)
        return reading;
    reading.centroidHz = weighted / total;

    const double floor = *std::ranges::max_element(mean) * std::pow(10.0, -0.1 * shownRangeDb);
    for (std::size_t band = 0; band < bandCount; ++band) {
        double sum = 0.0;
        double squares = 0.0;
        for (const Bands& piece : pieces) {
            const double level = 10.0 * std::log10(std::max(piece[band], floor));
            sum += level / static_cast<double>(pieces.size());
            squares += level * level / static_cast<double>(pieces.size());
        }
        reading.variance += mean[band] / total * std::max(squares - sum * sum, 0.0);
    }
    return reading;
}

double movementDb(const SpectralMovement::Reading& wet, const SpectralMovement::Reading& dry) noexcept
{
    return std::sqrt(std::max(wet.variance - dry.variance, 0.0));
}
