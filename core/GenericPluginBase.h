#pragma once

#include "core/ChannelLayout.h"
#include "core/GenericPluginInfo.h"
#include "parameters/AbstractPluginParameter.h"
#include "parameters/GenericParameterOwner.h"
#include "parameters/IndexedPluginParameter.h"
#include "parameters/ParameterCollection.h"

#include <string>
#include <string_view>
#include <vector>

/// What the two halves of a plug-in have in common: who they are, their channel layout, and a parameter tree
/// of the same shape, with the same indices.
class GenericPluginBase : public GenericParameterOwner, public GenericPluginInfo {
public:
    enum class InputSignal { NormalInput, SideChain };
    enum class MidiState { Disabled, Enabled };

    GenericPluginBase();

    /// Brackets a change of many parameters: the other side sees all of them at one block boundary.
    virtual void beginParameterBatch() = 0;
    virtual void endParameterBatch() = 0;
    /// Runs on whichever thread set the value. @param changeFlags  ParameterChangeFlags
    virtual void parameterValueChanged(int index, float value, int changeFlags) noexcept = 0;
    /// Asks for a reset that lets parameters jump and leaves all signal memory.
    virtual void requestSoftReset() = 0;
    /// Asks for a reset of everything.
    virtual void requestHardReset() = 0;

    AbstractPluginParameter& parameter(int index) const noexcept REALTIME { return parameters.at(index); }
    /// What hosts show as the module of a parameter, by group index. Index 0 is the empty name.
    const std::vector<std::string>& groupNames() const { return groups; }

    const ChannelLayout& layout() const noexcept REALTIME { return ChannelLayout::at(layoutNumber); }
    int layoutIndex() const noexcept REALTIME { return layoutNumber; }
    /// Thread: main, engine at rest.
    void setLayoutIndex(int index) { layoutNumber = index; }
    int channelCount() const noexcept REALTIME { return layout().channels; }
    bool hasSideChain() const noexcept REALTIME { return hasFlag(HasSideChain); }

    // GenericParameterOwner

    void beginChange() override { beginParameterBatch(); }
    void endChange() override { endParameterBatch(); }
    int addParameter(AbstractPluginParameter& added) override { return parameters.add(added); }
    void addAlias(AbstractPluginParameter& aliased, std::string_view alias) override;
    int addResponder(ParameterResponder& responder) override;
    int registerGroup(std::string_view groupName) override;
    int parameterCount() const override { return parameters.count(); }
    AbstractPluginParameter& parameterAt(int index) const override { return parameters.at(index); }
    int groupIndex() const override { return 0; }
    const std::string& name() const override { return groups.front(); }
    void parameterChanged(int index, float value, int changeFlags) noexcept override
    {
        parameterValueChanged(index, value, changeFlags);
    }

protected:
    ParameterCollection parameters;
    std::vector<ParameterResponder*> virtualMidiParameters;  // targets for MIDI alone; not owned
    // Null where the product has no such control.
    IndexedPluginParameter<MidiState>* midiStateParameter = nullptr;  // position 0 lets MIDI through
    AbstractPluginParameter* bypassParameter = nullptr;

private:
    int layoutNumber = ChannelLayout::stereo;
    std::vector<std::string> groups;
};
