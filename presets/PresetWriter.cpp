#include "presets/PresetWriter.h"

#include "foundation/BinaryDataReader.h"
#include "foundation/BinaryDataWriter.h"
#include "parameters/AbstractPluginParameter.h"
#include "presets/PresetLoader.h"
#include "presets/SectionTextWriter.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr int valuesOffset = 12;  // bytes of signature, version and count
constexpr int valueSize = 4;

/// With 15 significant digits, which bring every float back.
std::string numberText(float value)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof(digits), static_cast<double>(value),
                                   std::chars_format::general, 15)
                         .ptr;
    return {digits, end};
}

/// Custom values that stand in the header of a text file.
bool isHeaderValue(std::string_view key)
{
    const auto& names = PresetLoader::headerNames;
    return std::any_of(names.begin() + PresetLoader::Author, names.end(),
                       [key](const auto& name) { return key == name.amongCustomValues; });
}

/// Whether the stream holds a preset with at least this many values.
bool holdsPreset(std::istream& stream, std::string_view signature, int version, int values)
{
    BinaryDataReader reader(stream);
    if (!reader.readMagic(signature) || reader.version() != version || reader.readInt() < values)
        return false;
    stream.seekg(0, std::ios_base::end);
    return stream.good() &&
           stream.tellg() >= std::streamoff{valuesOffset} + std::streamoff{valueSize} * values;
}

}  // namespace

bool PresetWriter::writePreset(std::ostream& stream, int version) const
{
    BinaryDataWriter writer(stream);
    writer.writeMagic(collection.signature, version);
    writer.writeInt(collection.count());
    for (int i = 0; i < collection.count(); ++i)
        writer.writeFloat(collection.at(i).currentValue());
    if (plugin && plugin->presetsHoldCustomValues())
        writeCustomValues(writer, plugin->customValues());
    return writer.good();
}

bool PresetWriter::writePreset(std::iostream& stream, int version, int firstIndex, int count) const
{
    if (!holdsPreset(stream, collection.signature, version, collection.count()))
        return false;
    BinaryDataWriter writer(stream);
    for (int i = 0; i < collection.count(); ++i) {
        const AbstractPluginParameter& parameter = collection.at(i);
        if (parameter.index() < firstIndex || parameter.index() - firstIndex >= count)
            continue;
        stream.seekp(std::streamoff{valuesOffset} + std::streamoff{valueSize} * i);
        writer.writeFloat(parameter.currentValue());
    }
    return writer.good();
}

bool PresetWriter::writeText(std::ostream& stream, int version, TextOptions options) const
{
    SectionTextWriter writer(stream);
    writeTextHeader(writer, version, options);
    writer.writeSection(PresetLoader::parameterSection);
    const std::string prefix = plugin ? std::string() : collection.commonPrefix();
    for (int i = 0; i < collection.count(); ++i)
        writer.writeKey(collection.keyOf(collection.at(i), prefix),
                        numberText(collection.at(i).currentValue()));
    if (plugin)
        writeTextSettings(writer);
    return writer.good();
}

void PresetWriter::writeTextHeader(SectionTextWriter& writer, int version, TextOptions options) const
{
    const std::string& section = collection.section.value();
    writer.writeSection(section.empty() ? PresetLoader::presetSection : std::string_view(section));
    writer.writeKey("Signature", collection.signature);
    writer.writeKey("Version", version);
    if (!plugin)
        return;
    if (options == TextOptions::WithName) {
        writer.writeKey(PresetLoader::headerNames[PresetLoader::Name].inText, plugin->presetName());
        writer.writeKey("Modified", plugin->isPresetModified() ? 1 : 0);
    }
    for (std::size_t field = PresetLoader::Author; field < PresetLoader::HeaderFieldCount; ++field) {
        const PresetLoader::HeaderNames& names = PresetLoader::headerNames[field];
        const auto found = plugin->customValues().find(names.amongCustomValues);
        if (found != plugin->customValues().end() && !found->second.empty())
            writer.writeKey(names.inText, found->second);
    }
}

void PresetWriter::writeTextSettings(SectionTextWriter& writer) const
{
    bool hasSection = false;
    for (const auto& [key, value] : plugin->customValues()) {
        if (isHeaderValue(key))
            continue;
        if (!hasSection)
            writer.writeSection(PresetLoader::settingsSection);
        hasSection = true;
        writer.writeKey(key, value);
    }
}
