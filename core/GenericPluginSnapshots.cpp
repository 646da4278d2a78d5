// What undo and compare read of a plug-in, and set.
#include "core/GenericPlugin.h"

#include <utility>

std::vector<float> GenericPlugin::storedValues() const
{
    std::vector<float> values;
    storedParameters.readValues(values);
    return values;
}

void GenericPlugin::restoreStoredValues(const std::vector<float>& values)
{
    beginParameterBatch();
    storedParameters.writeValues(values);
    requestSoftReset();
    endParameterBatch();
}

PresetIdentity GenericPlugin::presetIdentity() const
{
    return {presetState.name.value(), presetState.path.value(), presetState.modified.value()};
}

void GenericPlugin::restorePresetIdentity(const PresetIdentity& identity, bool pathChanged)
{
    presetState.name.assign(identity.name);
    presetState.path.assign(identity.path);
    presetState.modified.assign(identity.modified);
    if (!pathChanged)
        return;
    tellHost(StateChange::Preset);
    tellListener(Listener::PresetChanged, 0);
}

void GenericPlugin::restoreInterfaceState(const InterfaceState& state)
{
    viewState = state;
    tellListener(Listener::InterfaceStateRestored, 0);
}

void GenericPlugin::restoreCustomValues(const CustomValues& values)
{
    setCustomValues(values);
    customValuesChanged();
}
