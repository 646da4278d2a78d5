#include "presets/CustomPresetLoader.h"

#include "foundation/BinaryDataReader.h"
#include "foundation/Resources.h"
#include "parameters/AbstractPluginParameter.h"

#include <algorithm>

namespace {

constexpr std::string_view mapMagic = "PMap";
constexpr std::size_t mapMagicLength = 4;

}  // namespace

CustomPresetLoader::CustomPresetLoader(const PresetParameterCollection& storedParameters,
                                       IPresetPlugin& presetPlugin)
    : PresetLoader(storedParameters.owner(), &presetPlugin), stored(storedParameters)
{
    section.assign(storedParameters.section.value());
}

void CustomPresetLoader::keepValueMap()
{
    mapCurrentVersion();
    isMapKept = true;
}

bool CustomPresetLoader::acceptsSignature(std::string_view fileSignature, int presetVersion) const
{
    return fileSignature == signature(presetVersion) ||
           std::any_of(aliases.begin(), aliases.end(), [&](const Alias& alias) {
               return alias.signature == fileSignature && alias.version == presetVersion;
           });
}

bool CustomPresetLoader::acceptsVersion(int presetVersion)
{
    const bool isAlias = std::any_of(aliases.begin(), aliases.end(), [this](const Alias& alias) {
        return alias.signature == signatureRead();
    });
    if (isAlias || currentVersion == -1)
        return isMapKept || mapCurrentVersion();
    if (isMapKept)
        return presetVersion == currentVersion;
    if (presetVersion < 1 || presetVersion > currentVersion)
        return false;
    if (presetVersion == mappedVersion)
        return true;
    return presetVersion == currentVersion ? mapCurrentVersion() : mapOlderVersion(presetVersion);
}

/// Always true.
bool CustomPresetLoader::mapCurrentVersion()
{
    if (mappedVersion == currentVersion && !valueMap.empty())
        return true;
    beginValueMap(currentVersion);
    mapAllParameters();
    return true;
}

bool CustomPresetLoader::mapOlderVersion(int presetVersion)
{
    const std::string name = std::string("PresetMap_")
                                 .append(signatureRead())
                                 .append("_")
                                 .append(std::to_string(presetVersion))
                                 .append(".mvpresetmap");
    const std::unique_ptr<std::istream> stream = openMap(name);
    beginValueMap(-1);  // until the map has proved good
    if (!stream || !readMap(*stream))
        return false;
    mappedVersion = presetVersion;
    return true;
}

std::unique_ptr<std::istream> CustomPresetLoader::openMap(const std::string& name) const
{
    return resourceExists(name) ? openResource(name) : nullptr;
}

/// A map is
///
///   4 bytes  "PMap"
///   int32    number of parameters today
///   int32    number of values in a file of the older version
///   int32    the index today of each of these, or -1
///   int32    the index of each parameter that the older version lacked, to the end
///
/// It must name every parameter once.
bool CustomPresetLoader::readMap(std::istream& stream)
{
    BinaryDataReader reader(stream);
    char magic[mapMagicLength];
    reader.read(magic, mapMagicLength);
    const int current = reader.readInt();
    const int values = reader.readInt();
    if (!reader.good() || std::string_view(magic, mapMagicLength) != mapMagic || current != stored.count() ||
        values <= 0)
        return false;
    std::vector<char> isNamed(static_cast<std::size_t>(current), 0);
    int named = 0;
    for (int place = 0;; ++place) {
        const int index = reader.readInt();
        if (!reader.good())
            return place >= values && named == current;
        if (index == -1 && place < values) {
            mapNothing();
            continue;
        }
        if (index < 0 || index >= current || isNamed[static_cast<std::size_t>(index)]++)
            return false;
        ++named;
        if (place < values)
            mapParameter(stored.at(index));
        else
            missing.push_back(index);
    }
}

void CustomPresetLoader::beginLoad(int presetVersion)
{
    // Where one version is required, nobody has asked for its map yet.
    if (presetVersion != mappedVersion && !acceptsVersion(presetVersion))
        mapCurrentVersion();
    for (const int index : missing)
        stored.at(index).setValue(stored.at(index).defaultValue(), announceChange);
}

int CustomPresetLoader::valueCount(int) const { return static_cast<int>(valueMap.size()); }

void CustomPresetLoader::setValue(int index, float value)
{
    StoredValue& place = valueMap[static_cast<std::size_t>(index)];
    if (place.parameter)
        place.parameter->setValue(value, announceChange);
    if (place.target)
        *place.target = value;
    place.value = value;
}

void CustomPresetLoader::setDefault(int index)
{
    const StoredValue& place = valueMap[static_cast<std::size_t>(index)];
    if (place.parameter)
        place.parameter->setValue(place.parameter->defaultValue(), announceChange);
    if (place.target)
        *place.target = place.value;
}

int CustomPresetLoader::setByKey(std::string_view key, float value)
{
    const auto found = keyIndex.find(key);
    if (found == keyIndex.end())
        return -1;
    setValue(found->second, value);
    return found->second;
}

// The list of places.

void CustomPresetLoader::beginValueMap(int presetVersion)
{
    valueMap.clear();
    keyIndex.clear();
    missing.clear();
    mappedVersion = presetVersion;
}

void CustomPresetLoader::mapParameter(AbstractPluginParameter& parameter)
{
    const int place = static_cast<int>(valueMap.size());
    valueMap.push_back({&parameter, nullptr, 0.0f});
    keyIndex.emplace(parameter.displayName(), place);
    for (const std::string& alias : parameter.aliases)
        keyIndex.emplace(alias, place);
}

void CustomPresetLoader::mapFloat(float& target, float initial)
{
    target = initial;
    valueMap.push_back({nullptr, &target, initial});
}

void CustomPresetLoader::mapNothing() { valueMap.push_back({nullptr, nullptr, 0.0f}); }

void CustomPresetLoader::mapAllParameters(const AbstractPluginParameter* without)
{
    for (int i = 0; i < stored.count(); ++i)
        if (&stored.at(i) != without)
            mapParameter(stored.at(i));
}
