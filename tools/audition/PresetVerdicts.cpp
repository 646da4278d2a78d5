#include "audition/PresetVerdicts.h"

#include "render/LevelMeter.h"

#include <algorithm>
#include <cmath>

namespace {

// What a listener would just notice, by measure.
constexpr double noticeableEchoDb = 3.0;
constexpr double noticeableOctaveDb = 1.5;
constexpr double noticeableLevelDb = 1.5;  // at some moment
constexpr double noticeableWidthDb = 2.0;
constexpr double noticeableMovementDb = 0.7;
constexpr double noticeableWetDb = 2.0;

double squared(double x) { return x * x; }

double meanSquare(const std::vector<double>& a, const std::vector<double>& b)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        sum += squared(a[i] - b[i]);
    return a.empty() ? 0.0 : sum / static_cast<double>(a.size());
}

double materialDistance(const MaterialResult& a, const MaterialResult& b)
{
    return meanSquare(a.octavesDb, b.octavesDb) / squared(noticeableOctaveDb) +
           meanSquare(a.levelsDb, b.levelsDb) / squared(noticeableLevelDb) +
           squared((a.widthDb - b.widthDb) / noticeableWidthDb) +
           squared((a.movementDb - b.movementDb) / noticeableMovementDb) +
           squared((a.wetDb - b.wetDb) / noticeableWetDb);
}

void addFaults(std::vector<std::string>& faults, const AuditionResult& result, const VerdictLimits& limits)
{
    const double loudest = std::ranges::max(result.materials, {}, &MaterialResult::wetDb).wetDb;
    if (!std::ranges::all_of(result.materials, &MaterialResult::finite))
        faults.emplace_back("broken: samples that are no numbers");
    if (loudest < limits.silentDb)
        faults.emplace_back("silent");
    if (result.peak() > limits.loudestPeak)
        faults.push_back("clips: " + decibelText(result.peak()));
    if (std::ranges::any_of(result.materials, &MaterialResult::grows))
        faults.emplace_back("runs away");
}

}  // namespace

double distanceBetween(const AuditionResult& a, const AuditionResult& b)
{
    double sum = meanSquare(a.echoes, b.echoes) / squared(noticeableEchoDb);
    for (std::size_t i = 0; i < a.materials.size(); ++i)
        sum += materialDistance(a.materials[i], b.materials[i]) / static_cast<double>(a.materials.size());
    return std::sqrt(sum);
}

std::vector<PresetVerdict> judge(const std::vector<AuditionResult>& results, const VerdictLimits& limits)
{
    std::vector<PresetVerdict> verdicts(results.size());
    for (std::size_t i = 0; i < results.size(); ++i) {
        PresetVerdict& verdict = verdicts[i];
        addFaults(verdict.faults, results[i], limits);
        verdict.nearest = i;
        for (std::size_t k = 0; k < results.size(); ++k) {
            if (k == i)
                continue;
            const double distance = distanceBetween(results[i], results[k]);
            if (verdict.nearest == i || distance < verdict.distance) {
                verdict.nearest = k;
                verdict.distance = distance;
            }
        }
        if (verdict.nearest != i && verdict.distance < limits.sameDistance)
            verdict.faults.emplace_back("next to the same as another");
    }
    return verdicts;
}
