#include "product/SordelinPlugin.h"

#include "product/SordelinInfo.h"

SordelinPlugin::SordelinPlugin() : SordelinParameters(static_cast<GenericPluginBase&>(*this), *this)
{
    static_cast<GenericPluginInfo&>(*this) = sordelinInfo();
    initialise();
    midiStateParameter = &receiveMidi;
    joinProcess();
}

SordelinPlugin::~SordelinPlugin() { leaveProcess(); }

VersionInfo SordelinPlugin::version() const { return sordelinVersion(); }

std::unique_ptr<PluginSettings> SordelinPlugin::createSettings()
{
    return std::make_unique<SordelinSettings>(storeKey(), interfaceLimits());
}

int SordelinPlugin::defaultInterfaceHeight()
{
    return sordelinSettings().showModulation.value() ? modulationHeight : plainHeight;
}

int SordelinPlugin::defaultInterfaceWidth()
{
    return sordelinSettings().interfaceLayout.value() == InterfaceLayout::Wide ? wideWidth : normalWidth;
}
