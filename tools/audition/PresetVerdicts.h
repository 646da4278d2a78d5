#pragma once

#include "audition/PresetAudition.h"

#include <cstddef>
#include <string>
#include <vector>

/// How unlike two presets sound, in steps that a listener would just notice: 0 for the same.
double distanceBetween(const AuditionResult& a, const AuditionResult& b);

/// What is wrong with a preset, and which other comes next to it.
struct PresetVerdict {
    std::vector<std::string> faults;  // "silent", "clips at +1.2 dBFS", ...; empty for a good preset
    std::size_t nearest = 0;          // index of the most similar other preset; its own if there is none
    double distance = 0.0;            // to it
};

struct VerdictLimits {
    double silentDb = -36.0;  // wet level over the input, on the material where it is highest
    double loudestPeak = 1.0;
    double sameDistance = 1.0;
};

/// Judges all presets, each by itself and against the others.
std::vector<PresetVerdict> judge(const std::vector<AuditionResult>& results,
                                 const VerdictLimits& limits = {});
