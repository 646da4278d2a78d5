#include "presets/CustomValues.h"

#include "foundation/BinaryDataReader.h"

#include <string_view>

namespace {

constexpr std::string_view blockMagic = "CuSV";
constexpr std::int32_t blockVersion = 1;

/// Reads the magic; if it isn't there, the stream goes back to where it was, and it is none the worse for it.
bool readBlockMagic(std::istream& stream, BinaryDataReader& reader)
{
    const auto begin = stream.tellg();
    std::string magic(blockMagic.size(), '\0');
    reader.read(magic.data(), magic.size());
    if (reader.good() && magic == blockMagic)
        return true;
    stream.clear();
    stream.seekg(begin);
    return false;
}

}  // namespace

void writeCustomValues(BinaryDataWriter& writer, const CustomValues& values,
                       const std::pair<std::string, std::string>& last)
{
    const bool hasLast = !last.first.empty();
    writer.writeMagic(blockMagic, blockVersion);
    writer.writeInt(static_cast<std::int32_t>(values.size() + (hasLast ? 1 : 0)));
    for (const auto& [key, value] : values) {
        writer.writeString(key);
        writer.writeString(value);
    }
    if (!hasLast)
        return;
    writer.writeString(last.first);
    writer.writeString(last.second);
}

bool readCustomValues(std::istream& stream, CustomValues& values, std::int32_t* version)
{
    values.clear();
    if (!stream.good())
        return false;
    BinaryDataReader reader(stream);
    if (!readBlockMagic(stream, reader))
        return true;
    const std::int32_t found = reader.readInt();
    if (version)
        *version = found;
    const std::int32_t count = reader.readInt();
    std::string key;
    std::string value;
    for (std::int32_t i = 0; i < count; ++i) {
        reader.readString(key);
        reader.readString(value);
        // A damaged count may claim billions.
        if (!reader.good())
            return false;
        values[key] = value;
    }
    return count >= 0 && reader.good();
}
