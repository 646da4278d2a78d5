#pragma once

#include "presets/PresetLoader.h"
#include "presets/PresetParameterCollection.h"

/// Reads a preset of one section of a plug-in into the parameters of a collection. It leaves the name of the
/// preset, its state and the custom values alone. Thread: main.
class CollectionPresetLoader : public PresetLoader {
public:
    explicit CollectionPresetLoader(const PresetParameterCollection& parameters);

protected:
    void beginLoad(int presetVersion) override;
    int valueCount(int presetVersion) const override;
    void setValue(int index, float value) override;
    void setDefault(int index) override;
    /// Keys have no prefix: the same ones fit all sections of a kind.
    int setByKey(std::string_view key, float value) override;

private:
    const PresetParameterCollection& collection;
    std::string prefix;
};
