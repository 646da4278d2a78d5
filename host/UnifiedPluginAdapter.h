#pragma once

#include "core/GenericPlugin.h"
#include "core/GenericPluginProcessor.h"
#include "foundation/Lock.h"

#include <memory>
#include <sstream>

/// Joins the two halves of a plug-in and carries what passes between them. The plug-in format's own adapter
/// derives from it.
class UnifiedPluginAdapter : protected GenericPlugin::Adapter,
                             protected GenericPluginProcessor::ProcessorAdapter {
public:
    UnifiedPluginAdapter();
    UnifiedPluginAdapter(const UnifiedPluginAdapter&) = delete;
    UnifiedPluginAdapter& operator=(const UnifiedPluginAdapter&) = delete;
    /// The halves go in this order: the engine is told, then the plug-in, then the processor.
    ~UnifiedPluginAdapter() override;

protected:
    virtual std::unique_ptr<GenericPlugin> createPlugin() = 0;
    virtual std::unique_ptr<GenericPluginProcessor> createProcessor() = 0;
    /// The value goes to both halves without an echo, and to the host. Thread: main, or audio for what the
    /// audio half changed itself.
    virtual void setParameter(int index, float value) noexcept = 0;

    /// Sets a value in both halves without an echo: the host knows it. Thread: audio, or main while the
    /// engine rests.
    void automate(int index, float value) noexcept REALTIME;
    /// Brings a value from the plug-in to the processor. Where several threads set a parameter at once, both
    /// halves end with the same value. Thread: any.
    void bringToProcessor(int index) noexcept REALTIME;

    /// Makes both halves and joins them. Thread: main.
    void createHalves();
    /// Brings all values of the plug-in to the processor, at one block boundary, with the reset that `mode`
    /// asks for. Thread: main.
    void synchroniseParameters(GenericPlugin::AllParameters mode);
    /// Replaces the processor by one for another channel layout. Thread: main, deactivated.
    void selectChannelLayout(int layout);

    // GenericPlugin::Adapter
    void sendParameterValue(int index, float value) override { setParameter(index, value); }
    void parameterChanged(int index) override;
    void controllerMapChanged() override;
    void pullDisplayData(bool withModulation) override;

    // GenericPluginProcessor::ProcessorAdapter
    void controllerActivity(int controller) noexcept REALTIME override;
    void parameterChangedByProcessor(int index) noexcept override;
    void programChange(int bank, int program) noexcept REALTIME override
    {
        plugin->requestProgramChange(bank, program);
    }

    std::unique_ptr<GenericPlugin> plugin;
    std::unique_ptr<GenericPluginProcessor> processor;
    // Serialises main-thread work that touches both halves. `process` never takes it.
    std::unique_ptr<CriticalSection> lock;

private:
    void joinProcessor();
    void copyControllerMap();
    void emptyStream();

    std::stringstream displayStream;  // what crosses between the halves as bytes
};
