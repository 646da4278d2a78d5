// What a host's project keeps of a plug-in:
//
//   "MVBS" | version 1 | count | the values of the parameters, floats
//   code | version 3 | preset name | group | auto name | instance name | modified | custom values
//
// Custom values are those of presets, with the place of the instance on its track as the last entry.
#include "core/GenericPlugin.h"
#include "foundation/BinaryDataReader.h"
#include "foundation/BinaryDataWriter.h"

#include <charconv>

namespace {

constexpr std::string_view stateMagic = "MVBS";
constexpr std::int32_t parametersVersion = 1;
constexpr std::int32_t extensionVersion = 3;
constexpr std::int32_t firstVersionWithModified = 2;
constexpr std::int32_t firstVersionWithCustomValues = 3;
constexpr std::string_view trackIndexKey = "_PerTrackIndex";

/// -1 for what is no number.
int trackIndexOf(std::string_view text)
{
    int number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : -1;
}

}  // namespace

void GenericPlugin::writeParameterState(BinaryDataWriter& writer) const
{
    writer.writeMagic(stateMagic, parametersVersion);
    writer.writeInt(parameterCount());
    for (int i = 0; i < parameterCount(); ++i)
        writer.writeFloat(parameter(i).currentValue());
}

bool GenericPlugin::saveState(std::ostream& stream) const
{
    BinaryDataWriter writer(stream);
    writeParameterState(writer);
    writer.writeMagic(code, extensionVersion);
    writer.writeString(presetState.name.value());
    writer.writeInt(instanceGroup());
    writer.writeInt(hasAutoName() ? 1 : 0);
    writer.writeString(instanceName());
    writer.writeInt(presetState.modified.value() ? 1 : 0);
    writeCustomValues(writer, customValues(), {std::string(trackIndexKey), std::to_string(perTrackIndex())});
    return writer.good();
}

bool GenericPlugin::loadState(std::istream& stream)
{
    BinaryDataReader reader(stream);
    return readParameterState(reader) && readStateExtension(stream, reader);
}

bool GenericPlugin::readParameterState(BinaryDataReader& reader)
{
    if (!reader.readMagic(stateMagic))
        return false;
    beginParameterBatch();
    const std::int32_t stored = reader.readInt();
    int index = 0;
    for (; index < parameterCount() && index < stored; ++index) {
        const float value = reader.readFloat();
        if (!reader.good())
            break;
        parameter(index).setValue(value, noEcho);
    }
    // A project of a version with fewer parameters; a damaged one keeps what it has.
    for (; index < parameterCount() && reader.good(); ++index)
        parameter(index).setValue(parameter(index).defaultValue(), noEcho);
    for (; index < stored && reader.good(); ++index)
        reader.readFloat();
    requestSoftReset();
    endParameterBatch();
    return reader.good();
}

bool GenericPlugin::readStateExtension(std::istream& stream, BinaryDataReader& reader)
{
    if (!reader.readMagic(code) || reader.version() < 1)
        return false;
    std::string presetName;
    std::string storedInstance;
    reader.readString(presetName);
    const std::int32_t storedGroup = reader.readInt();
    const bool storedAutoName = reader.readInt() != 0;
    reader.readString(storedInstance);
    const bool modified = reader.version() >= firstVersionWithModified && reader.readInt() != 0;
    if (!reader.good())
        return false;
    setPresetName(presetName);
    restoreGroup(storedGroup);
    restoreInstanceName(storedAutoName, storedInstance);
    if (reader.version() >= firstVersionWithModified)
        presetState.modified.assign(modified);

    CustomValues values;
    const bool complete = reader.version() < firstVersionWithCustomValues || readCustomValues(stream, values);
    if (const auto found = values.find(trackIndexKey); found != values.end()) {
        setPerTrackIndex(trackIndexOf(found->second));
        values.erase(found);
    }
    setCustomValues(std::move(values));
    customValuesChanged();
    return complete;
}
