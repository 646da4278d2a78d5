#include "audition/PresetAudition.h"

#include "audition/KWeighting.h"
#include "plot/ColourMap.h"
#include "plot/Spectrogram.h"
#include "render/LevelMeter.h"

#include <algorithm>
#include <cmath>
#include <mutex>

namespace {

constexpr std::size_t drums = 0;
constexpr std::size_t strings = 2;
constexpr double clickSeconds = 0.005;
constexpr double echoSeconds = 0.02;
constexpr double levelSeconds = 0.1;
constexpr double levelFloorDb = -30.0;  // below the loudest part
constexpr double echoFloorDb = -48.0;   // below the loudest echo
constexpr double pictureTopDb = -10.0;
constexpr double pictureRangeDb = 70.0;

/// A short, sharp burst that has all pitches, alike in both channels.
StereoSignal click()
{
    StereoSignal signal{materialRate, {}, {}};
    std::uint32_t state = 1;
    for (int i = 0; i < static_cast<int>(clickSeconds * materialRate); ++i) {
        state = state * 1664525u + 1013904223u;
        const float sample = 0.5f * static_cast<float>(static_cast<std::int32_t>(state)) / 2147483648.0f;
        signal.left.push_back(sample);
        signal.right.push_back(sample);
    }
    return signal;
}

std::vector<double> relativeToLoudest(std::vector<double> levels, double floorDb)
{
    const double loudest = *std::ranges::max_element(levels);
    for (double& level : levels)
        level = std::max(level - loudest, floorDb);
    return levels;
}

/// The levels of both channels, one behind the other.
std::vector<double> echoLevels(const StereoSignal& wet)
{
    StereoSignal left{wet.sampleRate, wet.left, wet.left};
    StereoSignal right{wet.sampleRate, wet.right, wet.right};
    std::vector<double> levels = levelSteps(left, echoSeconds, -200.0);
    const std::vector<double> others = levelSteps(right, echoSeconds, -200.0);
    levels.insert(levels.end(), others.begin(), others.end());
    return relativeToLoudest(std::move(levels), echoFloorDb);
}

std::vector<double> relativeOctaves(const SpectralMovement::Reading& reading)
{
    double sum = 1e-20;
    for (const double power : reading.octavePower)
        sum += power;
    std::vector<double> levels;
    for (const double power : reading.octavePower)
        levels.push_back(10.0 * std::log10(std::max(power / sum, 1e-4)));
    return levels;
}

std::vector<std::uint32_t> spectrogramPicture(const StereoSignal& signal)
{
    static std::mutex planner;  // the transform's planner serves one at a time
    const std::scoped_lock lock(planner);
    const Spectrogram spectrogram(
        signal, {PresetPicture::columns, PresetPicture::rows, signal.seconds(), 60.0, 16000.0});
    const ColourMap colours;
    std::vector<std::uint32_t> pixels;
    for (std::size_t row = 0; row < PresetPicture::rows; ++row) {
        for (std::size_t column = 0; column < PresetPicture::columns; ++column)
            pixels.push_back(colours.at(1.0 + (spectrogram.at(column, row) - pictureTopDb) / pictureRangeDb));
    }
    return pixels;
}

std::vector<EnvelopeColumn> envelopePicture(const StereoSignal& signal)
{
    std::vector<float> mean(signal.frames());
    for (std::size_t i = 0; i < mean.size(); ++i)
        mean[i] = 0.5f * (signal.left[i] + signal.right[i]);
    return waveEnvelope(mean, PresetPicture::columns,
                        static_cast<double>(mean.size()) / PresetPicture::columns);
}

double meanOf(const AuditionResult& result, double MaterialResult::*measure)
{
    double sum = 0.0;
    for (const MaterialResult& material : result.materials)
        sum += material.*measure;
    return sum / static_cast<double>(result.materials.size());
}

}  // namespace

double AuditionResult::levelDb() const { return meanOf(*this, &MaterialResult::levelDb); }
double AuditionResult::wetDb() const { return meanOf(*this, &MaterialResult::wetDb); }
double AuditionResult::centroidHz() const { return meanOf(*this, &MaterialResult::centroidHz); }
double AuditionResult::widthDb() const { return meanOf(*this, &MaterialResult::widthDb); }
double AuditionResult::movementDb() const { return meanOf(*this, &MaterialResult::movementDb); }

double AuditionResult::peak() const { return std::ranges::max(materials, {}, &MaterialResult::peak).peak; }

Tail AuditionResult::tail() const
{
    return std::ranges::max(materials, {}, [](const MaterialResult& one) { return one.tail.seconds; }).tail;
}

PresetAudition::PresetAudition(const AuditionRenderer& auditionRenderer,
                               const std::vector<Material>& heardMaterials)
    : renderer(auditionRenderer), materials(heardMaterials)
{
    for (const Material& material : materials) {
        const std::size_t frames = material.sound.frames();
        dryReadings.push_back(movement.read(material.sound, frames / 4, frames));
        dryLoudness.push_back(loudness(material.sound, 0, frames));
    }
}

AuditionResult PresetAudition::hear(const std::vector<ClapEvent>& values)
{
    AuditionResult result;
    for (std::size_t i = 0; i < materials.size(); ++i) {
        const StereoSignal output = renderer.render(values, materials[i].sound, AuditionRenderer::Dry::On);
        const StereoSignal wet = renderer.render(values, materials[i].sound, AuditionRenderer::Dry::Off);
        result.materials.push_back(measure(output, wet, i));
        if (i == strings)
            result.picture.spectrogram = spectrogramPicture(output);
        if (i == drums)
            result.picture.envelope = envelopePicture(output);
    }
    result.echoes = echoLevels(renderer.render(values, click(), AuditionRenderer::Dry::Off));
    return result;
}

MaterialResult PresetAudition::measure(const StereoSignal& output, const StereoSignal& wet,
                                       std::size_t material)
{
    const std::size_t frames = materials[material].sound.frames();
    const LevelMeter meter(output);
    // By then even a slow echo is on its way.
    const SpectralMovement::Reading reading = movement.read(wet, frames / 4, frames);
    MaterialResult result;
    result.levelDb = loudness(output, 0, frames) - dryLoudness[material];
    result.wetDb = loudness(wet, 0, frames) - dryLoudness[material];
    result.peak = meter.peak();
    result.finite = meter.nonFinite() == 0;
    result.centroidHz = reading.centroidHz;
    result.widthDb = widthDb(wet);
    result.movementDb = movementDb(reading, dryReadings[material]);
    result.tail = tailOf(wet, frames);
    result.grows = growsAtTheEnd(wet, frames);
    result.octavesDb = relativeOctaves(reading);
    result.levelsDb = relativeToLoudest(levelSteps(wet, levelSeconds, -200.0), levelFloorDb);
    return result;
}
