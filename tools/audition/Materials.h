#pragma once

#include "clap_host/StereoSignal.h"

#include <filesystem>
#include <string>
#include <vector>

/// A piece of music to judge presets by.
struct Material {
    std::string name;
    StereoSignal sound;  // its peak at -6 dBFS
};

/// The sounds of every audition: drums, a voice, plucked strings and a pad, `materialSeconds` each at
/// `materialRate`. Recordings from `folder`, where they exist; others are made here, the same each time.
std::vector<Material> auditionMaterials(const std::filesystem::path& folder);

inline constexpr double materialRate = 44100.0;  // Hz
inline constexpr double materialSeconds = 4.5;

/// Changes the level so that the highest sample of both channels is `peak`. Silence stays silence.
void normalise(StereoSignal& signal, float peak);
