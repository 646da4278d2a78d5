#pragma once

#include "modulation/ModulationMatrix.h"
#include "modulation/XLFO.h"
#include "modulation/XLFOFreqController.h"
#include "product/XLFOParameterSet.h"

#include <memory>
#include <vector>

/// The XLFOs as modulation sources, each with what gives it its rate. Those that aren't in use cost nothing.
/// Thread: audio, but for construction.
class XLFOSources {
public:
    /// Makes the matrix read the XLFOs, and the XLFOs follow the parameters and the matrix's targets.
    XLFOSources(wave::Environment& environment, ModulationMatrix& modulationMatrix,
                XLFOParameterSetList& parameterSets);

    /// A key went down: XLFOs that MIDI triggers start over, all others count from the song's start again.
    void noteOn() noexcept REALTIME;
    /// See XLFOFreqController.
    void transportChanged(float tempo, double beats) noexcept REALTIME;
    /// Gives an XLFO whose Snap was switched the depths that snapped ones have. -1 stands for all parameters.
    void parameterApplied(int index) noexcept REALTIME;

    /// Where an XLFO stands, as 0..1. @param source  its id as a source
    float displayValue(int source) noexcept REALTIME;

private:
    struct Entry {
        Entry(wave::Environment& environment, ModulationMatrix& matrix, int number);

        XLFO xlfo;
        XLFOFreqController rate;
    };
    static void bind(XLFOParameterSet& parameters, Entry& entry);

    ModulationMatrix& matrix;
    XLFOParameterSetList& sets;
    std::vector<std::unique_ptr<Entry>> entries;
};
