#pragma once

#include "core/MidiVirtualPluginParameter.h"

#include <cstddef>
#include <vector>

class AbstractPluginParameter;

/// Moves several parameters by one controller, which keeps their distances: their mean follows the
/// controller. A parameter held up by the end of its range finds its old distance again on the way back,
/// until somebody else moves one of them.
class MidiMultiVirtualPluginParameter final : public MidiVirtualPluginParameter {
public:
    using MidiVirtualPluginParameter::MidiVirtualPluginParameter;

    /// Not owned. Thread: main, before MIDI comes.
    void addParameter(AbstractPluginParameter& parameter);

    /// Thread: audio.
    void setNormalised(float value) noexcept REALTIME override;

private:
    float normalAt(std::size_t i) const noexcept REALTIME;
    float mean() const noexcept REALTIME;
    void noticeMoves() noexcept REALTIME;

    // Normalised, one each; distances are those from the mean.
    std::vector<AbstractPluginParameter*> parameters;
    std::vector<float> lastOffsets;  // when this object last wrote
    std::vector<float> offsets;      // what this object holds to
};
