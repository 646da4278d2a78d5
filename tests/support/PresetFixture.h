#pragma once

#include "parameters/FloatPluginParameter.h"
#include "presets/IPresetPlugin.h"
#include "presets/PresetParameterCollection.h"
#include "support/RecordingOwner.h"

#include <bit>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// 32 bits, low byte first.
inline std::string word(std::uint32_t value)
{
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}
inline std::string word(float value) { return word(std::bit_cast<std::uint32_t>(value)); }
inline std::string counted(const std::string& text)
{
    return word(static_cast<std::uint32_t>(text.size())) + text;
}

/// The bytes of a preset, put together by hand.
inline std::string presetBytes(const std::string& signature, int version, const std::vector<float>& values)
{
    std::string bytes = signature + word(static_cast<std::uint32_t>(version)) +
                        word(static_cast<std::uint32_t>(values.size()));
    for (const float value : values)
        bytes += word(value);
    return bytes;
}

/// What presets hold of a plug-in besides parameters, with a log of what is called.
struct RecordingPresetPlugin : IPresetPlugin {
    const std::string& presetSignature() const override { return signature; }
    bool presetsHoldCustomValues() const override { return holdsCustomValues; }
    const CustomValues& customValues() const override { return values; }
    void setCustomValues(CustomValues newValues) override { values = std::move(newValues); }
    void customValuesChanged() override { ++customChanges; }
    void hostStateChanged() override { ++stateChanges; }
    const std::string& presetName() const override { return name; }
    bool isPresetModified() const override { return isModified; }
    void takePresetName(std::string_view newName, bool modified) override
    {
        name = newName;
        isModified = modified;
        ++names;
    }

    std::string signature = "Test";
    bool holdsCustomValues = false;
    CustomValues values;
    std::string name;
    bool isModified = false;
    int customChanges = 0;
    int stateChanges = 0;
    int names = 0;
};

/// A plug-in of three parameters on -10..10, "Alpha", "Beta" and "Gamma", with defaults of 1, 2 and 3.
struct PresetFixture {
    PresetFixture()
    {
        collection.signature = "Test";
        float initial = 1.0f;
        for (const char* key : {"Alpha", "Beta", "Gamma"}) {
            parameters.push_back(std::make_unique<FloatPluginParameter>(&owner, key));
            parameters.back()->setRange(-10.0f, 10.0f, initial++);
            collection.add(*parameters.back());
        }
    }
    void set(const std::vector<float>& values) { collection.writeValues(values); }
    std::vector<float> values() const
    {
        std::vector<float> all;
        collection.readValues(all);
        return all;
    }

    RecordingOwner owner;
    RecordingPresetPlugin plugin;
    PresetParameterCollection collection{owner};
    std::vector<std::unique_ptr<FloatPluginParameter>> parameters;
};
