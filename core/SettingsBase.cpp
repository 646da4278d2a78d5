#include "core/SettingsBase.h"

#include "core/SettingsWriter.h"

void SettingsBase::exchange(SettingSerializer& serializer)
{
    exchanging = true;
    {
        const ScopedUpdate bracket(*this);
        serialize(serializer);
    }
    exchanging = false;
}

void SettingsBase::propertyChanged(AbstractProperty& property)
{
    if (&property == &loaded)
        settingsChanged.fire();
    else if (loaded.value())
        changed();
}

void SettingsBase::update()
{
    if (!exchanging) {
        SettingsWriter writer(storeKey);
        serialize(writer);
    }
    settingsChanged.fire();
}
