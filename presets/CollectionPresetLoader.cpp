#include "presets/CollectionPresetLoader.h"

#include "parameters/AbstractPluginParameter.h"

CollectionPresetLoader::CollectionPresetLoader(const PresetParameterCollection& parameters)
    : PresetLoader(parameters.owner(), nullptr), collection(parameters)
{
    section.assign(parameters.section.value());
    fixedSignature = parameters.signature;
}

void CollectionPresetLoader::beginLoad(int) { prefix = collection.commonPrefix(); }

int CollectionPresetLoader::valueCount(int) const { return collection.count(); }

void CollectionPresetLoader::setValue(int index, float value)
{
    collection.at(index).setValue(value, announceChange);
}

void CollectionPresetLoader::setDefault(int index) { setValue(index, collection.at(index).defaultValue()); }

int CollectionPresetLoader::setByKey(std::string_view key, float value)
{
    const int index = collection.findKey(collection.fullKey(key, prefix));
    if (index >= 0)
        setValue(index, value);
    return index;
}
