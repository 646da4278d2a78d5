#include "core/ProcessorChannel.h"

#include "core/GenericPluginProcessor.h"

ProcessorChannel::ConnectedSideChainInput::ConnectedSideChainInput(wave::Environment& environment,
                                                                   const GenericPluginProcessor& processor)
    : Input(environment), owner(processor)
{}

void ProcessorChannel::ConnectedSideChainInput::generate(wave::Block* block, int count, int flags) noexcept
{
    Input::generate(block, count, flags);
    if (!owner.hasSideChain() || !owner.inputsConnected)
        show(environment().silentBlock());
}

ProcessorChannel::ProcessorChannel(wave::Environment& environment, const GenericPluginProcessor& processor)
    : mainInput(environment), sideChainInput(environment, processor)
{}

void ProcessorChannel::parameterApplied(int) noexcept {}
