#pragma once

#include "presets/CustomValues.h"

#include <string>
#include <string_view>

/// What preset files hold of a plug-in besides parameters. Thread: main.
class IPresetPlugin {
public:
    virtual ~IPresetPlugin() = default;

    /// The four characters by which the plug-in's files are known.
    virtual const std::string& presetSignature() const = 0;
    /// Whether binary preset files carry the custom values.
    virtual bool presetsHoldCustomValues() const = 0;

    virtual const CustomValues& customValues() const = 0;
    /// Tells nobody; `customValuesChanged` does.
    virtual void setCustomValues(CustomValues values) = 0;
    virtual void customValuesChanged() = 0;
    /// The plug-in's state isn't what the host has saved any more, other than by parameters.
    virtual void hostStateChanged() = 0;

    virtual const std::string& presetName() const = 0;
    virtual bool isPresetModified() const = 0;
    /// The plug-in is at a preset of this name. The host hears of it.
    virtual void takePresetName(std::string_view name, bool modified) = 0;
};
