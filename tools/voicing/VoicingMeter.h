#pragma once

#include "voicing/FilterProbe.h"

/// Measures a characteristic on the running filter. Levels are in dB, where a sine that reaches 1 has 0 dB.
class VoicingMeter {
public:
    /// What the filter does after a click.
    struct Ringing {
        static constexpr double longest = 4.0;  // seconds, of which it is watched

        bool sings = false;         // oscillates by itself
        double levelDb = 0.0;       // of the song
        double hertz = 0.0;         // its pitch
        double decaySeconds = 0.0;  // else: until it has fallen by 60 dB, at most `longest`
    };

    explicit VoicingMeter(const DesignFilterStyle& measuredStyle) : style(measuredStyle) {}

    /// The gain at `hertz` for a sine too small to bend anything, beside whatever the filter sings by itself.
    double smallSignalDb(const FilterProbe::Setting& setting, double hertz) const;

    /// What a sine of `hertz` at `inputDb` comes out as, with all that was added to it.
    double outputDb(const FilterProbe::Setting& setting, double hertz, double inputDb) const;

    Ringing ringing(const FilterProbe::Setting& setting) const;

private:
    const DesignFilterStyle& style;
    StateVariableTables tables;
};
