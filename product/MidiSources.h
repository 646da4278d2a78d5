#pragma once

#include "modulation/MidiModSource.h"
#include "modulation/ModulationMatrix.h"
#include "product/MidiSourceParameterSet.h"

#include <memory>
#include <vector>

/// The MIDI sources as modulation sources, and what they share. Thread: audio, but for construction.
class MidiSources {
public:
    /// Makes the matrix read the sources, and the sources follow the parameters.
    MidiSources(wave::Environment& environment, ModulationMatrix& matrix, MidiSourceParameterSetList& sets);

    /// Has to hear of all decoded MIDI.
    MidiListener& listener() noexcept REALTIME { return cache; }

    /// Where a source stands, as 0..1. @param source  its id as a source
    float displayValue(int source) noexcept REALTIME;

private:
    MidiModSource::Cache cache;
    std::vector<std::unique_ptr<MidiModSource>> sources;
};
