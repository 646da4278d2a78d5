#pragma once

#include "wave/Input.h"

class GenericPluginProcessor;

/// The inputs and the output of one channel of an engine's graph.
class ProcessorChannel {
public:
    /// A side-chain input that is silent unless the host has connected it.
    class ConnectedSideChainInput : public wave::Input {
    public:
        ConnectedSideChainInput(wave::Environment& owner, const GenericPluginProcessor& processor);

    protected:
        void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

    private:
        const GenericPluginProcessor& owner;
    };

    ProcessorChannel(wave::Environment& environment, const GenericPluginProcessor& processor);
    ProcessorChannel(const ProcessorChannel&) = delete;
    ProcessorChannel& operator=(const ProcessorChannel&) = delete;
    virtual ~ProcessorChannel() = default;

    /// A parameter's value has reached the engine. Thread: audio.
    virtual void parameterApplied(int index) noexcept REALTIME;
    /// The engine has a new rate. Thread: main.
    virtual void sampleRateChanged() {}

    wave::Input mainInput;
    ConnectedSideChainInput sideChainInput;
    wave::Producer* output = nullptr;  // null: silence
};
