#include "host/UnifiedPluginAdapter.h"

#include "foundation/BinaryDataReader.h"
#include "foundation/BinaryDataWriter.h"

UnifiedPluginAdapter::UnifiedPluginAdapter() : lock(CriticalSection::create()) {}

UnifiedPluginAdapter::~UnifiedPluginAdapter()
{
    if (processor)
        processor->engine().markDestroying();
    plugin.reset();
    processor.reset();
}

void UnifiedPluginAdapter::createHalves()
{
    plugin = createPlugin();
    plugin->setAdapter(this);
    processor = createProcessor();
    joinProcessor();
}

void UnifiedPluginAdapter::joinProcessor()
{
    processor->setAdapter(this);
    processor->engine().setSampleRate(plugin->sampleRate());
    copyControllerMap();
    synchroniseParameters(GenericPlugin::WithoutReset);
}

void UnifiedPluginAdapter::copyControllerMap()
{
    emptyStream();
    BinaryDataWriter writer(displayStream);
    plugin->controllerMapping().write(writer);
    BinaryDataReader reader(displayStream);
    processor->controllerMapping().read(reader);
}

void UnifiedPluginAdapter::emptyStream()
{
    displayStream.str({});
    displayStream.clear();
}

void UnifiedPluginAdapter::pullDisplayData(bool withModulation)
{
    const ScopedLock scopedLock(*lock);
    if (!processor)
        return;
    if (withModulation)
        processor->requestModulationDisplay();
    emptyStream();
    BinaryDataWriter writer(displayStream);
    processor->writeDisplayData(writer);
    BinaryDataReader reader(displayStream);
    plugin->readDisplayData(reader);
}

void UnifiedPluginAdapter::controllerMapChanged()
{
    const ScopedLock scopedLock(*lock);
    if (processor)
        copyControllerMap();
}

void UnifiedPluginAdapter::automate(int index, float value) noexcept
{
    plugin->parameter(index).setValue(value, noEcho);
    bringToProcessor(index);
}

void UnifiedPluginAdapter::bringToProcessor(int index) noexcept
{
    const AbstractPluginParameter& source = plugin->parameter(index);
    float brought;
    // Whoever comes last to the processor looks once more at the plug-in, which nobody sets after that
    // without coming here too.
    do {
        brought = source.currentValue();
        processor->parameter(index).setValue(brought, noEcho);
    } while (source.currentValue() != brought);
}

void UnifiedPluginAdapter::synchroniseParameters(GenericPlugin::AllParameters mode)
{
    processor->beginParameterBatch();
    for (int i = 0; i < plugin->parameterCount(); ++i)
        bringToProcessor(i);
    if (mode == GenericPlugin::WithSoftReset)
        processor->requestSoftReset();
    else if (mode == GenericPlugin::WithHardReset)
        processor->requestHardReset();
    processor->endParameterBatch();
}

void UnifiedPluginAdapter::selectChannelLayout(int layout)
{
    if (layout == plugin->layoutIndex())
        return;
    const ScopedLock scopedLock(*lock);
    plugin->setLayoutIndex(layout);
    plugin->tellListener(GenericPlugin::Listener::LayoutChanged, 0);
    processor->engine().markDestroying();
    processor = createProcessor();
    joinProcessor();
}

void UnifiedPluginAdapter::parameterChanged(int index)
{
    const ScopedLock scopedLock(*lock);
    if (index < 0)
        synchroniseParameters(static_cast<GenericPlugin::AllParameters>(index));
    else
        setParameter(index, plugin->parameter(index).currentValue());
}

void UnifiedPluginAdapter::controllerActivity(int controller) noexcept
{
    plugin->tellListener(GenericPlugin::Listener::ControllerMoved, controller);
}

void UnifiedPluginAdapter::parameterChangedByProcessor(int index) noexcept
{
    setParameter(index, processor->parameter(index).currentValue());
}
