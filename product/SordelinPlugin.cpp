#include "product/SordelinPlugin.h"

#include "product/SordelinInfo.h"

SordelinPlugin::SordelinPlugin() : SordelinParameters(static_cast<GenericPluginBase&>(*this), *this)
{
    static_cast<GenericPluginInfo&>(*this) = sordelinInfo();
    initialise();
    midiStateParameter = &receiveMidi;
    joinProcess();
}
