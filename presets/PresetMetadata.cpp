#include "presets/PresetMetadata.h"

#include "foundation/AtomicFile.h"
#include "foundation/BinaryDataReader.h"
#include "foundation/BinaryDataWriter.h"
#include "foundation/FileTime.h"
#include "foundation/OpenFile.h"
#include "presets/CustomValues.h"
#include "presets/PresetTextHeader.h"
#include "presets/SectionTextReader.h"

#include <array>
#include <fstream>
#include <iterator>
#include <sstream>

namespace {

constexpr std::size_t magicLength = 4;
constexpr std::int32_t highestBinaryVersion = 0xFFFF;  // a text has letters in its place
constexpr std::int32_t mostValues = 10000;
constexpr const char* unreadable = "Incorrect file permissions or corrupt preset file.";
constexpr const char* invalid = "Invalid file format.";

/// A preset in the binary form, with its values as they stand in the file.
struct BinaryPreset {
    std::array<char, magicLength> signature{};
    std::int32_t version = 0;
    std::vector<char> values;  // 4 bytes each
    CustomValues customValues;
};

/// Reads signature and version, after which a text would have to be read from its start again.
void readStart(BinaryDataReader& reader, BinaryPreset& preset)
{
    reader.read(preset.signature.data(), preset.signature.size());
    preset.version = reader.readInt();
}

void take(const CustomValues& values, PresetInfo& entry)
{
    const auto valueOf = [&](const char* key) {
        const auto found = values.find(key);
        return found == values.end() ? std::string() : found->second;
    };
    entry.author = valueOf("AUTHOR");
    entry.description = valueOf("DESCRIPTION");
    entry.tags = splitTags(valueOf("TAGS"));
}

bool readTextMetadata(std::istream& stream, PresetInfo& entry)
{
    SectionTextReader reader(stream);
    if (!reader.nextSection() || reader.section() != "Preset")
        return false;
    while (reader.nextKey()) {
        if (reader.key() == "Author")
            entry.author = reader.value();
        else if (reader.key() == "Description")
            entry.description = reader.value();
        else if (reader.key() == "Tags")
            entry.tags = splitTags(reader.value());
    }
    return true;
}

bool readBinaryMetadata(std::istream& stream, BinaryDataReader& reader, PresetInfo& entry)
{
    const std::int32_t count = reader.readInt();
    if (!reader.good() || count < 0)
        return false;
    stream.seekg(std::streamoff{4} * count, std::ios_base::cur);
    CustomValues values;
    readCustomValues(stream, values);  // of a damaged block, as far as it goes
    take(values, entry);
    return true;
}

/// Reads what stands behind signature and version. False for what couldn't be written again without a loss.
bool readRest(std::istream& stream, BinaryDataReader& reader, BinaryPreset& preset)
{
    const std::int32_t count = reader.readInt();
    if (!reader.good() || count < 0 || count > mostValues)
        return false;
    preset.values.resize(std::size_t{4} * static_cast<std::size_t>(count));
    reader.read(preset.values.data(), preset.values.size());
    if (!reader.good())
        return false;
    if (stream.peek() == std::istream::traits_type::eof())
        return true;
    std::int32_t version = 0;
    return readCustomValues(stream, preset.customValues, &version) && version == 1 &&
           stream.peek() == std::istream::traits_type::eof();
}

void write(std::ostream& stream, const BinaryPreset& preset)
{
    BinaryDataWriter writer(stream);
    writer.write(preset.signature.data(), preset.signature.size());
    writer.writeInt(preset.version);
    writer.writeInt(static_cast<std::int32_t>(preset.values.size() / 4));
    writer.write(preset.values.data(), preset.values.size());
    writeCustomValues(writer, preset.customValues);
}

/// Whether a text says what it should. One with a header that can't be read to its end doesn't.
bool holdsMetadata(const std::string& text, const PresetInfo& entry)
{
    std::istringstream stream(text);
    PresetInfo found;
    return readTextMetadata(stream, found) && found.author == entry.author &&
           found.description == entry.description && joinTags(found.tags) == joinTags(entry.tags);
}

}  // namespace

std::vector<std::string> splitTags(std::string_view text)
{
    std::vector<std::string> tags;
    while (!text.empty()) {
        const auto comma = text.find(',');
        tags.emplace_back(text.substr(0, comma));
        if (comma == std::string_view::npos)
            break;
        text.remove_prefix(comma + 1);
        if (text.empty())
            tags.emplace_back();
    }
    return tags;
}

std::string joinTags(const std::vector<std::string>& tags)
{
    std::string text;
    for (std::size_t i = 0; i < tags.size(); ++i)
        text.append(i == 0 ? "" : ",").append(tags[i]);
    return text;
}

bool readPresetMetadata(const std::string& path, PresetInfo& entry)
{
    take({}, entry);
    const auto stream = openFile(path, std::ios_base::in | std::ios_base::binary);
    BinaryDataReader reader(*stream);
    BinaryPreset start;
    readStart(reader, start);
    if (!reader.good())
        return false;
    if (start.version <= highestBinaryVersion)
        return readBinaryMetadata(*stream, reader, entry);
    stream->seekg(0);
    return readTextMetadata(*stream, entry);
}

ErrorResult writePresetMetadata(PresetInfo& entry)
{
    ErrorResult result;
    auto stream = openFile(entry.path, std::ios_base::in | std::ios_base::binary);
    BinaryDataReader reader(*stream);
    BinaryPreset preset;
    readStart(reader, preset);
    if (!reader.good()) {
        result.reportError(ErrorReporter::failure, unreadable);
        return result;
    }
    AtomicFile file(entry.path);
    bool understood = false;
    if (preset.version > highestBinaryVersion) {
        stream->seekg(0);
        const std::string text =
            rewritePresetTextHeader(std::string(std::istreambuf_iterator<char>(*stream), {}), entry);
        file.stream() << text;
        understood = holdsMetadata(text, entry);
    } else if (readRest(*stream, reader, preset)) {
        preset.customValues["AUTHOR"] = entry.author;
        preset.customValues["DESCRIPTION"] = entry.description;
        preset.customValues["TAGS"] = joinTags(entry.tags);
        write(file.stream(), preset);
        understood = true;
    }
    if (!understood)
        result.reportError(ErrorReporter::failure, invalid);
    else if (file.commit(result))
        entry.modificationTime = fileModificationTime(entry.path);
    return result;
}
