#pragma once

#include "audition/AuditionRenderer.h"
#include "audition/Materials.h"
#include "audition/SoundMeasures.h"
#include "audition/SpectralMovement.h"
#include "plot/WaveEnvelope.h"

#include <cstdint>
#include <vector>

/// What one preset does to one material. "Wet" is the output without the dry signal.
struct MaterialResult {
    double levelDb = 0.0;     // of the output while the input plays, over the input, as loudness
    double wetDb = 0.0;       // the same of the wet signal
    double peak = 0.0;        // of the output; full scale is 1
    double centroidHz = 0.0;  // of the wet signal
    double widthDb = 0.0;     // of the wet signal
    double movementDb = 0.0;  // of the wet signal
    Tail tail;
    bool grows = false;             // in its tail
    bool finite = true;             // no sample is anything but a number
    std::vector<double> octavesDb;  // of the wet signal, relative to all of it
    std::vector<double> levelsDb;   // of the wet signal over time, 100 ms each, relative to its loudest
};

/// Small pictures for the contact sheet.
struct PresetPicture {
    static constexpr int columns = 236;
    static constexpr int rows = 56;

    std::vector<std::uint32_t> spectrogram;  // of the output on the strings: 0xRRGGBB, row by row
    std::vector<EnvelopeColumn> envelope;    // of the output on the drums, the mean of both channels
};

/// What one preset did in its audition.
struct AuditionResult {
    std::vector<MaterialResult> materials;  // in the order of the materials
    std::vector<double> echoes;             // dB, the echoes of a click, 20 ms each, left and then right
    PresetPicture picture;

    // Of all materials together: means, and the highest peak and the longest tail.
    double levelDb() const;
    double wetDb() const;
    double peak() const;
    double centroidHz() const;
    double widthDb() const;
    double movementDb() const;
    Tail tail() const;
};

/// Hears presets on all materials. Each thread has its own; make them one after the other.
class PresetAudition {
public:
    /// The others outlive this object.
    PresetAudition(const AuditionRenderer& auditionRenderer, const std::vector<Material>& heardMaterials);

    /// @param values  one event for each parameter
    AuditionResult hear(const std::vector<ClapEvent>& values);

private:
    MaterialResult measure(const StereoSignal& output, const StereoSignal& wet, std::size_t material);

    const AuditionRenderer& renderer;
    const std::vector<Material>& materials;
    SpectralMovement movement;
    std::vector<SpectralMovement::Reading> dryReadings;
    std::vector<double> dryLoudness;  // LUFS
};
