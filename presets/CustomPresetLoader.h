#pragma once

#include "presets/PresetLoader.h"
#include "presets/PresetParameterCollection.h"

#include <memory>

/// Reads whole presets of a plug-in through a list of places, one for each stored value: a parameter, a float
/// of the loader, or nothing at all. Files of older versions are read by a map that the program carries, if
/// it does. Thread: main.
class CustomPresetLoader : public PresetLoader {
public:
    /// @param storedParameters  all that a present preset holds, in its order
    CustomPresetLoader(const PresetParameterCollection& storedParameters, IPresetPlugin& presetPlugin);

    /// A further signature by which files are known, and the version in which they have it.
    struct Alias {
        std::string signature;
        int version;
    };
    std::vector<Alias> aliases;
    int currentVersion = -1;  // the one that this program writes; -1 accepts all

    /// Keeps to the present list of parameters: no older version is accepted.
    void keepValueMap();

protected:
    /// Where a stored value goes.
    struct StoredValue {
        AbstractPluginParameter* parameter;  // or null
        float* target;                       // or null
        float value;                         // the one read last, and before that the default of `target`
    };

    bool acceptsSignature(std::string_view fileSignature, int presetVersion) const override;
    bool acceptsVersion(int presetVersion) override;
    void beginLoad(int presetVersion) override;
    int valueCount(int presetVersion) const override;
    void setValue(int index, float value) override;
    void setDefault(int index) override;
    int setByKey(std::string_view key, float value) override;

    /// Empties the list, to be filled for this version.
    void beginValueMap(int presetVersion);
    void mapParameter(AbstractPluginParameter& parameter);
    void mapFloat(float& target, float initial = 0.0f);
    void mapNothing();
    /// Maps all parameters in their order, but for one.
    void mapAllParameters(const AbstractPluginParameter* without = nullptr);

    /// The map from the values of an older version, null if there is none.
    virtual std::unique_ptr<std::istream> openMap(const std::string& name) const;

    const PresetParameterCollection& stored;

private:
    bool mapCurrentVersion();
    bool mapOlderVersion(int presetVersion);
    bool readMap(std::istream& stream);

    std::vector<StoredValue> valueMap;
    std::map<std::string, int, std::less<>> keyIndex;
    std::vector<int> missing;  // parameters that the mapped version lacks
    int mappedVersion = -1;    // the one that `valueMap` is for
    bool isMapKept = false;
};
