#pragma once

#include "core/ControllerMapping.h"
#include "parameters/GenericParameterOwner.h"

#include <string>
#include <utility>

/// A target for MIDI controllers alone: hosts, presets and the list of parameters don't know it. It is built
/// after the parameters, in a fixed order, like them.
class MidiVirtualPluginParameter : public ParameterResponder {
public:
    MidiVirtualPluginParameter(GenericParameterOwner& owner, std::string targetName)
        : targetIndex(ControllerMapping::firstVirtualTarget + owner.addResponder(*this)),
          identifier(std::move(targetName))
    {}
    MidiVirtualPluginParameter(const MidiVirtualPluginParameter&) = delete;
    MidiVirtualPluginParameter& operator=(const MidiVirtualPluginParameter&) = delete;

    /// As a target of the controller map.
    std::int32_t index() const noexcept { return targetIndex; }
    const std::string& name() const noexcept { return identifier; }

protected:
    ~MidiVirtualPluginParameter() = default;

private:
    const std::int32_t targetIndex;
    const std::string identifier;
};
