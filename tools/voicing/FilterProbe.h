#pragma once

#include "dsp/DesignFilter.h"
#include "dsp/GenericFilter.h"

#include <memory>
#include <vector>

/// A low-pass of one characteristic, 12 dB per octave, that stands still at one setting to be measured.
class FilterProbe {
public:
    static constexpr double sampleRate = 44100.0;

    struct Setting {
        double cutoffHz = 0.0;
        double peak = 0.0;  // 0..1
    };

    /// The style and the tables outlive the probe.
    FilterProbe(const DesignFilterStyle& style, const StateVariableTables& tables, const Setting& setting);
    ~FilterProbe();

    /// Filters `in`, going on from where the last call ended.
    std::vector<float> run(const std::vector<float>& in);

private:
    class Player;

    wave::Environment environment;
    std::unique_ptr<Player> player;
    DesignFilter unit;
    GenericFilter filter;
};
