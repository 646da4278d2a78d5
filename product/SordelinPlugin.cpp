#include "product/SordelinPlugin.h"

#include "foundation/BinaryDataReader.h"
#include "product/SordelinInfo.h"

SordelinPlugin::SordelinPlugin() : SordelinParameters(static_cast<GenericPluginBase&>(*this), *this)
{
    static_cast<GenericPluginInfo&>(*this) = sordelinInfo();
    initialise();
    midiStateParameter = &receiveMidi;
    joinProcess();
}

void SordelinPlugin::readDisplayData(BinaryDataReader& reader)
{
    GenericPlugin::readDisplayData(reader);
    for (float& value : displayValues)
        value = reader.readFloat();
}
