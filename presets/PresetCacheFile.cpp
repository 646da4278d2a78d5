#include "presets/PresetCacheFile.h"

#include "foundation/AtomicFile.h"
#include "foundation/BinaryDataWriter.h"
#include "foundation/BinaryFileReader.h"

namespace {

constexpr std::string_view magic = "mvPC";
constexpr std::int32_t firstVersionWithRoots = 3;
constexpr std::int32_t firstVersionWithFavorites = 2;
constexpr std::int32_t lastVersionWithFavorites = 3;

/// Calls `readOne` as often as a count says, as long as there is something to read.
template <class F>
void readList(BinaryDataReader& reader, F readOne)
{
    const std::int32_t count = reader.readInt();
    for (std::int32_t i = 0; i < count && reader.good(); ++i)
        readOne();
}

std::string readText(BinaryDataReader& reader)
{
    std::string text;
    reader.readString(text);
    return text;
}

PresetInfo readPreset(BinaryDataReader& reader)
{
    PresetInfo preset;
    preset.path = readText(reader);
    preset.modificationTime = reader.readUInt64();
    preset.name = readText(reader);
    preset.bank = reader.readInt();
    preset.program = reader.readInt();
    preset.author = readText(reader);
    preset.description = readText(reader);
    readList(reader, [&] { preset.tags.push_back(readText(reader)); });
    return preset;
}

void writePreset(BinaryDataWriter& writer, const PresetInfo& preset)
{
    writer.writeString(preset.path);
    writer.writeUInt64(preset.modificationTime);
    writer.writeString(preset.name);
    writer.writeInt(preset.bank);
    writer.writeInt(preset.program);
    writer.writeString(preset.author);
    writer.writeString(preset.description);
    writer.writeInt(static_cast<std::int32_t>(preset.tags.size()));
    for (const std::string& tag : preset.tags)
        writer.writeString(tag);
}

}  // namespace

bool PresetCacheFile::read(const std::string& path)
{
    *this = {};
    BinaryFileReader reader(path);
    if (!reader.readMagic(magic) || reader.version() < 1 || reader.version() > currentVersion)
        return false;
    version = reader.version();
    if (version >= firstVersionWithRoots)
        readList(reader, [&] { roots.insert(readText(reader)); });
    readList(reader, [&] { presets.push_back(readPreset(reader)); });
    if (version >= firstVersionWithFavorites && version <= lastVersionWithFavorites)
        readList(reader, [&] { favorites.push_back(readText(reader)); });
    if (reader.good())
        return true;
    *this = {};
    return false;
}

ErrorResult PresetCacheFile::write(const std::string& path) const
{
    AtomicFile file(path);
    BinaryDataWriter writer(file.stream());
    writer.writeMagic(magic, currentVersion);
    writer.writeInt(static_cast<std::int32_t>(roots.size()));
    for (const std::string& root : roots)
        writer.writeString(root);
    writer.writeInt(static_cast<std::int32_t>(presets.size()));
    for (const PresetInfo& preset : presets)
        writePreset(writer, preset);
    ErrorResult result;
    file.commit(result);
    return result;
}
