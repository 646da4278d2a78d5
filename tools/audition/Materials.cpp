#include "audition/Materials.h"

#include "render/AudioFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace {

constexpr float materialPeak = 0.5f;  // -6 dBFS
constexpr double edgeSeconds = 0.02;  // of the fade at the end
constexpr std::size_t materialFrames = static_cast<std::size_t>(materialRate * materialSeconds);

StereoSignal silence()
{
    return {materialRate, std::vector<float>(materialFrames), std::vector<float>(materialFrames)};
}

double secondsAt(std::size_t frame) { return static_cast<double>(frame) / materialRate; }

/// A sound that begins at `start` and is the same in both channels.
template <typename Voice>
void addVoice(StereoSignal& signal, double start, Voice voice)
{
    for (auto i = static_cast<std::size_t>(start * materialRate); i < signal.frames(); ++i) {
        const auto sample = static_cast<float>(voice(secondsAt(i) - start));
        signal.left[i] += sample;
        signal.right[i] += sample;
    }
}

double phaseOf(double hertz, double seconds) { return 2.0 * std::numbers::pi * hertz * seconds; }

/// White, -1..1, the same at each call.
class Noise {
public:
    double next()
    {
        state = state * 1664525u + 1013904223u;
        return static_cast<double>(static_cast<std::int32_t>(state)) / 2147483648.0;
    }

private:
    std::uint32_t state = 1;
};

/// A bar and a bit of bass drum, snare and hi-hat at 120 BPM.
StereoSignal madeDrums()
{
    StereoSignal signal = silence();
    Noise noise;
    for (double beat = 0.0; beat < materialSeconds; beat += 0.25) {
        const int place = static_cast<int>(std::lround(beat * 4.0)) % 8;
        addVoice(signal, beat, [&](double t) { return 0.15 * noise.next() * std::exp(-t / 0.015); });
        if (place == 0 || place == 3)
            addVoice(signal, beat, [](double t) {
                return std::sin(phaseOf(50.0, t) + 6.0 * (1.0 - std::exp(-t / 0.03))) * std::exp(-t / 0.12);
            });
        if (place == 4)
            addVoice(signal, beat, [&](double t) {
                return (0.5 * noise.next() + 0.5 * std::sin(phaseOf(190.0, t))) * std::exp(-t / 0.07);
            });
    }
    return signal;
}

/// Four sung syllables: harmonics through the formants of an open vowel, with vibrato.
StereoSignal madeVoice()
{
    struct Formant {
        double hertz;
        double width;
    };
    static constexpr std::array formants{Formant{700.0, 110.0}, Formant{1200.0, 130.0},
                                         Formant{2600.0, 200.0}};
    static constexpr std::array<double, 4> pitches{220.0, 247.0, 262.0, 196.0};
    StereoSignal signal = silence();
    for (std::size_t note = 0; note < pitches.size(); ++note) {
        for (int harmonic = 1; harmonic <= 16; ++harmonic) {
            const double hertz = pitches[note] * harmonic;
            double level = 0.02;
            for (const Formant& formant : formants)
                level += 1.0 / (1.0 + std::pow((hertz - formant.hertz) / formant.width, 2.0));
            addVoice(signal, 1.1 * static_cast<double>(note), [=](double t) {
                const double syllable = t < 0.8 ? std::sin(std::numbers::pi * t / 0.8) : 0.0;
                const double vibrato = 0.12 * harmonic * std::sin(phaseOf(5.5, t));
                return level / harmonic * syllable * std::sin(phaseOf(hertz, t) + vibrato);
            });
        }
    }
    return signal;
}

/// An arpeggio on strings that are plucked near their end.
StereoSignal madeStrings()
{
    static constexpr std::array<double, 6> pitches{82.4, 123.5, 196.0, 246.9, 293.7, 370.0};
    StereoSignal signal = silence();
    for (std::size_t note = 0; note < pitches.size(); ++note) {
        for (int harmonic = 1; harmonic <= 20; ++harmonic) {
            const double hertz = pitches[note] * harmonic;
            const double level = std::sin(std::numbers::pi * harmonic / 7.0) / harmonic;
            addVoice(signal, 0.4 * static_cast<double>(note), [=](double t) {
                return level * std::sin(phaseOf(hertz, t)) * std::exp(-t * (0.8 + 0.4 * harmonic));
            });
        }
    }
    return signal;
}

/// A chord of many voices, each a little out of tune.
StereoSignal madePad()
{
    static constexpr std::array<double, 4> pitches{110.0, 164.8, 220.0, 277.2};
    StereoSignal signal = silence();
    for (const double pitch : pitches) {
        for (int harmonic = 1; harmonic <= 8; ++harmonic) {
            for (const double tuning : {0.997, 1.0, 1.004}) {
                addVoice(signal, 0.0, [=](double t) {
                    return std::min(t / 0.5, 1.0) / (harmonic * harmonic) *
                           std::sin(phaseOf(pitch * harmonic * tuning, t) + 40.0 * tuning * harmonic);
                });
            }
        }
    }
    return signal;
}

/// A recording, over again if it is shorter, or nothing if it can't be had.
StereoSignal recording(const std::filesystem::path& file)
{
    std::error_code missing;
    if (!std::filesystem::exists(file, missing))
        return {};
    StereoSignal found = readAudioFile(file);
    if (found.sampleRate != materialRate)
        return {};
    const std::size_t length = found.frames();
    found.resize(materialFrames);
    for (std::size_t i = length; i < materialFrames; ++i) {
        found.left[i] = found.left[i - length];
        found.right[i] = found.right[i - length];
    }
    return found;
}

void fadeOut(StereoSignal& signal)
{
    const auto count = static_cast<std::size_t>(edgeSeconds * materialRate);
    for (std::size_t i = 0; i < count; ++i) {
        const float gain = static_cast<float>(i) / static_cast<float>(count);
        signal.left[signal.frames() - 1 - i] *= gain;
        signal.right[signal.frames() - 1 - i] *= gain;
    }
}

}  // namespace

void normalise(StereoSignal& signal, float peak)
{
    float highest = 0.0f;
    for (const auto* channel : {&signal.left, &signal.right}) {
        for (const float sample : *channel)
            highest = std::max(highest, std::abs(sample));
    }
    if (highest <= 0.0f)
        return;
    for (auto* channel : {&signal.left, &signal.right}) {
        for (float& sample : *channel)
            sample *= peak / highest;
    }
}

std::vector<Material> auditionMaterials(const std::filesystem::path& folder)
{
    struct Choice {
        const char* name;
        const char* file;
        StereoSignal (*make)();
    };
    static constexpr std::array choices{
        Choice{"drums", "loop_breakbeat.flac", madeDrums}, Choice{"voice", "ambi_choir.flac", madeVoice},
        Choice{"strings", "guit_em9.flac", madeStrings}, Choice{"pad", "ambi_glass_hum.flac", madePad}};
    std::vector<Material> materials;
    for (const Choice& choice : choices) {
        Material material{choice.name, recording(folder / choice.file)};
        if (material.sound.frames() == 0)
            material.sound = choice.make();
        fadeOut(material.sound);
        normalise(material.sound, materialPeak);
        materials.push_back(std::move(material));
    }
    return materials;
}
