#include "product/SordelinComponentPresets.h"

#include "core/ComponentPresets.h"
#include "product/SordelinParameters.h"

namespace {

/// A group with one section for each set of the list. The number of active sets isn't part of it.
void addGroup(ComponentPresets& presets, const std::string& signature, const char* extension,
              const char* folder, const AbstractParameterSetArray& sets)
{
    const int group = presets.addGroup(extension, folder);
    for (int i = 0; i < sets.count(); ++i) {
        PresetParameterCollection& section = presets.addSection(group, signature);
        for (int k = 0; k < sets.setAt(i).parameterCount(); ++k)
            section.add(sets.setAt(i).parameterAt(k));
    }
}

}  // namespace

void addSordelinComponentPresets(ComponentPresets& presets, SordelinParameters& parameters,
                                 const std::string& signature)
{
    PresetParameterCollection& delays = presets.addSection(presets.addGroup(".delays", "Delays"), signature);
    parameters.delays.addAllParameters(delays);
    delays.add(parameters.feedbackLink);
    delays.add(parameters.delayLink);
    delays.add(parameters.delayReadStyle);  // "Delay Freeze" is none of them: no preset stops a frozen delay
    PresetParameterCollection& filters =
        presets.addSection(presets.addGroup(".filters", "Filters"), signature);
    parameters.filters.addAllParameters(filters);
    filters.add(parameters.filterRouting);
    addGroup(presets, signature, ".xlfo", "XLFO", parameters.xlfos);
    addGroup(presets, signature, ".eg", "EG", parameters.envelopeGenerators);
    addGroup(presets, signature, ".ef", "EF", parameters.envelopeFollowers);
    addGroup(presets, signature, ".midi", "MIDI", parameters.midiSources);
}
