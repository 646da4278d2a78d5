#pragma once

#include "clap_host/ClapInstance.h"
#include "clap_host/StereoSignal.h"

#include <vector>

/// Plays a signal through a fresh instance of the plug-in, as a song at 120 BPM does, with silence behind it.
/// The side chain gets the same.
///
/// A keyboard plays along for the presets that listen to it: a note every half second, and the modulation
/// wheel goes up and down again in the second half of the input.
class AuditionRenderer {
public:
    static constexpr double tempoBpm = 120.0;
    enum class Dry { Off, On };

    /// @param tailSeconds  of silence behind each input
    AuditionRenderer(const ClapModule& pluginModule, double tailSeconds)
        : module(pluginModule), tail(tailSeconds)
    {}

    /// Throws ClapHostError if the plug-in fails.
    /// @param values  one event for each parameter
    StereoSignal render(const std::vector<ClapEvent>& values, const StereoSignal& input, Dry dry) const;

private:
    const ClapModule& module;
    double tail;
};
