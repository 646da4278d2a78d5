#include "product/SordelinPlugin.h"

#include "foundation/BinaryDataReader.h"
#include "presets/PresetFile.h"
#include "product/SordelinInfo.h"
#include "product/SordelinPresetLoader.h"

namespace {

/// A group of section presets with one section for each set of the list. The number of active sets isn't part
/// of it.
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

SordelinPlugin::SordelinPlugin() : SordelinParameters(static_cast<GenericPluginBase&>(*this), *this)
{
    static_cast<GenericPluginInfo&>(*this) = sordelinInfo();
    initialise();
    midiStateParameter = &receiveMidi;
    joinProcess();
    makeComponentPresets();
}

/// The order of groups and parameters never changes: files go by it. "Delay Freeze" is none of the delays'
/// settings, as no preset stops a frozen delay.
void SordelinPlugin::makeComponentPresets()
{
    PresetParameterCollection& delaySection =
        componentPresets.addSection(componentPresets.addGroup(".delays", "Delays"), code);
    delays.addAllParameters(delaySection);
    delaySection.add(feedbackLink);
    delaySection.add(delayLink);
    delaySection.add(delayReadStyle);
    PresetParameterCollection& filterSection =
        componentPresets.addSection(componentPresets.addGroup(".filters", "Filters"), code);
    filters.addAllParameters(filterSection);
    filterSection.add(filterRouting);
    addGroup(componentPresets, code, ".xlfo", "XLFO", xlfos);
    addGroup(componentPresets, code, ".eg", "EG", envelopeGenerators);
    addGroup(componentPresets, code, ".ef", "EF", envelopeFollowers);
    addGroup(componentPresets, code, ".midi", "MIDI", midiSources);
}

std::unique_ptr<CustomPresetLoader> SordelinPlugin::createPresetLoader()
{
    return std::make_unique<SordelinPresetLoader>(*this);
}

void SordelinPlugin::loadPresetFile(ErrorResult& result, const PresetInfo& preset)
{
    const float frozen = delayFreeze.currentValue();
    const float dry = dryEnabled.currentValue();
    const PresetFile file(preset.path);
    CustomPresetLoader present(storedParameters, *this);
    present.currentVersion = presetFormatVersion();
    ErrorResult ofPresent;
    ErrorResult ofOlder;
    // What neither takes is explained in terms of today's presets.
    if (!file.read(present, ofPresent) && !file.read(*createPresetLoader(), ofOlder))
        result.reportError(ofPresent.code(), ofPresent.message());
    if (!isLoadingDefault())
        dryEnabled.setValue(dry, announceChange);
    delayFreeze.setValue(frozen, announceChange);
}

void SordelinPlugin::readDisplayData(BinaryDataReader& reader)
{
    GenericPlugin::readDisplayData(reader);
    for (float& value : displayValues)
        value = reader.readFloat();
}
