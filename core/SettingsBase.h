#pragma once

#include "foundation/NotifyEvent.h"
#include "foundation/Property.h"

#include <string>

class SettingSerializer;

/// A group of settings, each of them a property. Once they are `loaded`, a change of one stores the whole
/// group; a bracket of `beginUpdate` and `endUpdate` stores once for all changes within. Thread: main.
class SettingsBase : public PropertyOwner {
public:
    /// @param storeKey  under which the group is stored
    explicit SettingsBase(std::string settingsKey) : storeKey(std::move(settingsKey)) {}

    /// Takes the settings one by one out of a reader, or into a writer.
    virtual void serialize(SettingSerializer& serializer) = 0;
    /// The same, telling the observers of all changes at once, and storing nothing: what a reader brings is
    /// stored already.
    void exchange(SettingSerializer& serializer);

    void propertyChanged(AbstractProperty& property) override;

    /// Raised once the settings have been read. Until then no change is reported or stored.
    Property<bool> loaded{false, this};
    /// Fired when `loaded` is raised, and after every change from then on.
    NotifyEvent settingsChanged;

protected:
    void update() override;

private:
    std::string storeKey;
    bool exchanging = false;
};
