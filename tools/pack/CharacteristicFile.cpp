#include "pack/CharacteristicFile.h"

#include <bit>
#include <cstdint>

namespace {

constexpr std::uint32_t fileVersion = 1;

void append(std::string& bytes, std::uint32_t number)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<char>((number >> shift) & 255));
}

void append(std::string& bytes, float number) { append(bytes, std::bit_cast<std::uint32_t>(number)); }

}  // namespace

std::string characteristicFile(const CharacteristicTables& tables)
{
    std::string bytes = "MVil";
    append(bytes, fileVersion);
    append(bytes, tables.asymmetry);
    append(bytes, tables.minimumFrequency);
    append(bytes, tables.maximumFrequency);
    for (const auto* table : {&tables.clipDrive, &tables.cubic, &tables.resonance}) {
        append(bytes, static_cast<std::uint32_t>(CharacteristicTables::size));
        for (const float value : *table)
            append(bytes, value);
    }
    return bytes;
}
