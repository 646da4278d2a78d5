#include "product/MidiSources.h"

#include "product/SordelinModulationIds.h"

MidiSources::MidiSources(wave::Environment& environment, ModulationMatrix& matrix,
                         MidiSourceParameterSetList& sets)
{
    std::vector<wave::Producer*> entries;
    for (int i = 0; i < sets.count(); ++i) {
        auto made = std::make_unique<MidiModSource>(environment, cache);
        sets[i].input.bind(made->input);
        sets[i].controllerNumber.bind(made->controller);
        sets[i].responseCurve.bind(made->responseCurve);
        matrix.setSource(SordelinSources::midi(i), made.get());
        entries.push_back(made.get());
        sources.push_back(std::move(made));
    }
    sets.numActive.addEntryObjects(std::move(entries));
    // Until the first note a key in the middle counts as played, at half velocity.
    cache.noteOn(48, 0.5f);
}

float MidiSources::displayValue(int source) noexcept
{
    return sources[static_cast<std::size_t>(source - SordelinSources::firstMidi)]->displayValue();
}
