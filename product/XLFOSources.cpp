#include "product/XLFOSources.h"

#include "product/SordelinModulationIds.h"

XLFOSources::Entry::Entry(wave::Environment& environment, ModulationMatrix& matrix, int number)
    : xlfo(environment),
      rate(environment, xlfo, *matrix.producerForTarget(SordelinTargets::xlfoFrequency(number)))
{
    xlfo.glide.connect(matrix.producerForTarget(SordelinTargets::xlfoGlide(number)));
    xlfo.phaseOffset.connect(matrix.producerForTarget(SordelinTargets::xlfoPhaseOffset(number)));
}

XLFOSources::XLFOSources(wave::Environment& environment, ModulationMatrix& modulationMatrix,
                         XLFOParameterSetList& parameterSets)
    : matrix(modulationMatrix), sets(parameterSets)
{
    std::vector<wave::Producer*> xlfos;
    for (int i = 0; i < sets.count(); ++i) {
        entries.push_back(std::make_unique<Entry>(environment, matrix, i));
        bind(sets[i], *entries.back());
        matrix.setSource(SordelinSources::xlfo(i), &entries.back()->xlfo);
        xlfos.push_back(&entries.back()->xlfo);
    }
    sets.numActive.addEntryObjects(std::move(xlfos));
}

void XLFOSources::bind(XLFOParameterSet& parameters, Entry& entry)
{
    parameters.frequencyOffset.bind(entry.rate.offset);
    parameters.syncMode.bind(entry.rate.syncMode);
    parameters.balance.bind(entry.xlfo.balance);
    parameters.steps.numActive.bind(entry.xlfo.numSteps);
    for (int i = 0; i < parameters.steps.count(); ++i) {
        XLFOParameterSet::StepParameterSet& from = parameters.steps[i];
        XLFO::Step& step = entry.xlfo.step(i);
        from.value.bind(step.value);
        from.glide.bind(step.glide);
        from.glideCurve.bind(step.glideCurve);
        from.random.bind(step.random);
        parameters.snap.bind(step.snap);
    }
}

void XLFOSources::noteOn() noexcept
{
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (sets[static_cast<int>(i)].midiTrigger.value())
            entries[i]->xlfo.retrigger();
        else
            entries[i]->xlfo.countFromSongStart();
    }
}

void XLFOSources::transportChanged(float tempo, double beats) noexcept
{
    for (const auto& entry : entries)
        entry->rate.transportChanged(tempo, beats);
}

void XLFOSources::parameterApplied(int index) noexcept
{
    for (int i = 0; i < sets.count(); ++i) {
        const auto& snap = sets[i].snap;
        if (index == snap.index() || index == -1)
            matrix.setSourceKind(SordelinSources::xlfo(i),
                                 snap.value() ? ModulationSource::SnappedXLFO : ModulationSource::XLFO);
    }
}

float XLFOSources::displayValue(int source) noexcept
{
    return entries[static_cast<std::size_t>(source - SordelinSources::firstXlfo)]->xlfo.displayValue();
}
